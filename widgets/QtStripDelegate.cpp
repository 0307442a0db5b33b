#include "widgets/QtStripDelegate.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

// Pixels.
constexpr int WidestStrip = QtStripDelegate::Seconds;
constexpr int NarrowestStrip = 40;
constexpr int SideMargin = 6;
constexpr int Inset = 3; ///< Above and below.

/// Of the strip's height.
double HeightOf(ProgramIcon lamp) {
    if (lamp == ProgramIcon::LampBad) return 1;
    return lamp == ProgramIcon::LampGood ? 0.5 : 0.2;
}

} // namespace

QtStripDelegate::QtStripDelegate(std::function<std::vector<StripTick>(int row)> ticks, QString widestText,
                                 QObject* parent)
    : QStyledItemDelegate(parent), ticks_(std::move(ticks)), widestText_(std::move(widestText)) {}

QRect QtStripDelegate::StripRect(const QStyleOptionViewItem& option) const {
    const int text = option.decorationSize.width() + option.fontMetrics.horizontalAdvance(widestText_) + 3 * SideMargin;
    const int room = option.rect.width() - text - SideMargin;
    if (room < NarrowestStrip) return {};
    const int width = std::min(room, WidestStrip);
    return {option.rect.right() - SideMargin - width + 1, option.rect.top() + Inset, width,
            option.rect.height() - 2 * Inset};
}

void QtStripDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    const QRectF strip = StripRect(option);
    if (strip.isEmpty()) return;
    painter->fillRect(QRectF(strip.left(), strip.bottom() - 1, strip.width(), 1), option.palette.mid());
    const std::vector<StripTick> ticks = ticks_(index.row());
    const double pixelsASecond = strip.width() / Seconds;
    const double width = std::max(1.0, pixelsASecond);
    const auto draw = [&](const StripTick& tick) {
        const double right = strip.right() - tick.secondsAgo * pixelsASecond;
        if (right - width < strip.left()) return;
        const double height = strip.height() * HeightOf(tick.lamp);
        painter->fillRect(QRectF(right - width, strip.bottom() - height, width, height), LampColor(tick.lamp));
    };
    for (const bool bad : {false, true}) {
        for (const StripTick& tick : ticks) {
            if ((tick.lamp == ProgramIcon::LampBad) == bad) draw(tick);
        }
    }
}

} // namespace vantrel
