// Draws a strip of the last minutes into the room that the texts of a column leave: one tick for each reading. Knows Qt
// and nothing of what is read.
#pragma once

#include "widgets/QtIcons.h"

#include <QStyledItemDelegate>

#include <functional>
#include <vector>

namespace vantrel {

struct StripTick {
    double secondsAgo;
    ProgramIcon lamp; ///< What it is like: the higher the tick, the worse.
};

/// Now is at the right end. A bad tick is never covered by another one.
class QtStripDelegate final : public QStyledItemDelegate {
public:
    static constexpr int Seconds = 180; ///< From one end to the other.

    /// `ticks`: those of a row of the model. `widestText` stays free of them. `parent` is the view.
    QtStripDelegate(std::function<std::vector<StripTick>(int row)> ticks, QString widestText, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Where the strip of a cell is; empty where there is no room.
    [[nodiscard]] QRect StripRect(const QStyleOptionViewItem& option) const;

private:
    std::function<std::vector<StripTick>(int row)> ticks_;
    QString widestText_;
};

} // namespace vantrel
