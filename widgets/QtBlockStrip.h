// A strip of memory: blocks of words on a few lanes, left to right by their addresses, those that overlap below each
// other. Long stretches without a block are folded together. Knows Qt and nothing of what its blocks mean.
#pragma once

#include <QRectF>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace vantrel {

struct StripBlock {
    std::size_t lane = 0;
    std::int64_t first = 0;
    std::int64_t last = 0; ///< The last word itself, not before `first`.
    QString label{}; ///< Inside the block, where it fits.
    QString hint{}; ///< While the pointer is over it, and for screen readers.
    bool wrong = false; ///< Drawn in the colour of a fault, and hatched.
};

/// As wide as its blocks need, a few pixels a word at most; put it into a scroll area. The keyboard reaches every
/// block: Left and Right choose one, Enter picks it as a click does.
class QtBlockStrip final : public QWidget {
public:
    explicit QtBlockStrip(QWidget* parent = nullptr);

    /// `lanes`: their names, from the top. `prefix` stands before addresses, "V".
    void Show(std::vector<StripBlock> blocks, const QStringList& lanes, QString prefix);
    /// As given to Show().
    [[nodiscard]] const std::vector<StripBlock>& Blocks() const { return blocks_; }
    /// Hears of a click on a block, or of Enter, with the block's number as given to Show().
    void SetOnPicked(std::function<void(std::size_t)> onPicked) { onPicked_ = std::move(onPicked); }

    /// Where a block is drawn; in the strip's coordinates.
    [[nodiscard]] QRectF BlockRect(std::size_t block) const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    /// Addresses without a long gap, drawn true to scale from `left` on.
    struct Stretch {
        std::int64_t first;
        std::int64_t last;
        double left;
    };
    struct Lane {
        QString name{};
        std::size_t rows = 1;
        double top = 0;
    };

    void FindStretches();
    /// A row of its lane for every block, so that none covers another one.
    void FindRows();
    [[nodiscard]] double Right(const Stretch& stretch) const;
    [[nodiscard]] QString AddressText(const Stretch& stretch) const;
    [[nodiscard]] double RowHeight() const;
    [[nodiscard]] double X(std::int64_t word) const;
    [[nodiscard]] double NamesWidth() const;
    [[nodiscard]] std::optional<std::size_t> BlockAt(QPointF place) const;
    void Choose(std::size_t block);
    void PaintLanes(QPainter& painter) const;
    void PaintNames(QPainter& painter) const;
    void PaintBlock(QPainter& painter, std::size_t block) const;
    void PaintAddresses(QPainter& painter) const;

    std::vector<StripBlock> blocks_;
    std::vector<Stretch> stretches_;
    std::vector<Lane> lanes_;
    std::vector<std::size_t> rows_; ///< Of each block, in its lane.
    double lanesEnd_ = 0; ///< Below the last lane.
    QString prefix_;
    std::optional<std::size_t> chosen_;
    std::function<void(std::size_t)> onPicked_;
};

} // namespace vantrel
