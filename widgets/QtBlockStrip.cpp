#include "widgets/QtBlockStrip.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <numeric>
#include <utility>

namespace vantrel {

namespace {

// Pixels.
constexpr double PixelsPerWord = 3;
constexpr std::int64_t LeastWords = 3; ///< A block of one word is as wide: still hit by a pointer.
constexpr double FoldWidth = 24; ///< What a folded gap leaves of itself.
constexpr double BlockPadding = 6; ///< Above and below a label, together.
constexpr double RowGap = 3;
constexpr double LaneGap = 6;
constexpr double Margin = 8;
constexpr double Tick = 5;
constexpr std::int64_t LongestGap = 24; ///< Words; what is longer is folded.

std::int64_t ShownEnd(const StripBlock& block) { return std::max(block.last, block.first + LeastWords - 1); }

const QColor WrongColor(0xC0, 0x30, 0x30);

} // namespace

QtBlockStrip::QtBlockStrip(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
}

void QtBlockStrip::Show(std::vector<StripBlock> blocks, const QStringList& lanes, QString prefix) {
    blocks_ = std::move(blocks);
    lanes_.clear();
    for (const QString& name : lanes)
        lanes_.push_back({.name = name});
    prefix_ = std::move(prefix);
    chosen_.reset();
    setAccessibleDescription({});
    FindRows();
    FindStretches();
    updateGeometry();
    update();
}

void QtBlockStrip::FindRows() {
    std::vector<std::size_t> order(blocks_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [this](std::size_t block) { return blocks_[block].first; });
    std::vector<std::vector<std::int64_t>> ends(lanes_.size()); // Of the last block in each row of each lane.
    rows_.assign(blocks_.size(), 0);
    for (const std::size_t block : order) {
        const StripBlock& one = blocks_[block];
        std::vector<std::int64_t>& rows = ends.at(one.lane);
        auto row = std::ranges::find_if(rows, [&](std::int64_t end) { return end < one.first; });
        if (row == rows.end()) row = rows.insert(rows.end(), 0);
        *row = ShownEnd(one);
        rows_[block] = static_cast<std::size_t>(row - rows.begin());
    }
    lanesEnd_ = Margin;
    for (std::size_t lane = 0; lane < lanes_.size(); ++lane) {
        lanes_[lane].rows = std::max<std::size_t>(ends[lane].size(), 1);
        lanes_[lane].top = lanesEnd_;
        lanesEnd_ += static_cast<double>(lanes_[lane].rows) * (RowHeight() + RowGap) + LaneGap;
    }
}

void QtBlockStrip::FindStretches() {
    std::vector<std::pair<std::int64_t, std::int64_t>> ranges;
    ranges.reserve(blocks_.size());
    for (const StripBlock& block : blocks_)
        ranges.emplace_back(block.first, block.last);
    std::ranges::sort(ranges);
    stretches_.clear();
    double left = NamesWidth() + 2 * Margin;
    for (const auto& [first, last] : ranges) {
        if (!stretches_.empty() && first - stretches_.back().last <= LongestGap) {
            stretches_.back().last = std::max(stretches_.back().last, last);
            continue;
        }
        if (!stretches_.empty()) left = Right(stretches_.back()) + FoldWidth;
        stretches_.push_back({first, last, left});
    }
}

QString QtBlockStrip::AddressText(const Stretch& stretch) const {
    const QString first = prefix_ + QString::number(stretch.first);
    return stretch.first == stretch.last ? first
                                         : first + QStringLiteral(" to ") + prefix_ + QString::number(stretch.last);
}

double QtBlockStrip::Right(const Stretch& stretch) const {
    const auto words = static_cast<double>(std::max(stretch.last - stretch.first + 1, LeastWords));
    return stretch.left +
           std::max(PixelsPerWord * words, QFontMetricsF(font()).horizontalAdvance(AddressText(stretch)));
}

double QtBlockStrip::X(std::int64_t word) const {
    const auto behind = std::ranges::find_if(stretches_, [word](const Stretch& one) { return one.first > word; });
    if (behind == stretches_.begin()) return NamesWidth() + 2 * Margin;
    const Stretch& stretch = *std::prev(behind);
    return stretch.left + PixelsPerWord * static_cast<double>(word - stretch.first);
}

double QtBlockStrip::NamesWidth() const {
    double width = 0;
    for (const Lane& lane : lanes_)
        width = std::max(width, QFontMetricsF(font()).horizontalAdvance(lane.name));
    return width;
}

double QtBlockStrip::RowHeight() const { return QFontMetricsF(font()).height() + BlockPadding; }

QRectF QtBlockStrip::BlockRect(std::size_t block) const {
    const StripBlock& one = blocks_.at(block);
    const auto words = static_cast<double>(ShownEnd(one) - one.first + 1);
    const double top = lanes_.at(one.lane).top + static_cast<double>(rows_.at(block)) * (RowHeight() + RowGap);
    return {X(one.first), top, PixelsPerWord * words, RowHeight()};
}

QSize QtBlockStrip::sizeHint() const {
    const double width = stretches_.empty() ? NamesWidth() + 2 * Margin : Right(stretches_.back());
    return QSizeF(width + Margin, lanesEnd_ + Tick + QFontMetricsF(font()).height() + Margin).toSize();
}

std::optional<std::size_t> QtBlockStrip::BlockAt(QPointF place) const {
    for (std::size_t block = 0; block < blocks_.size(); ++block) {
        if (BlockRect(block).contains(place)) return block;
    }
    return std::nullopt;
}

void QtBlockStrip::Choose(std::size_t block) {
    chosen_ = block;
    setAccessibleDescription(blocks_[block].hint);
    update();
}

void QtBlockStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintLanes(painter);
    for (std::size_t block = 0; block < blocks_.size(); ++block)
        PaintBlock(painter, block);
    PaintAddresses(painter);
    PaintNames(painter);
}

void QtBlockStrip::PaintLanes(QPainter& painter) const {
    // Memory that is folded away leaves a gap.
    painter.setPen(palette().placeholderText().color());
    for (const Lane& lane : lanes_) {
        const double middle = lane.top + RowHeight() / 2;
        for (const Stretch& stretch : stretches_)
            painter.drawLine(QPointF(stretch.left, middle), QPointF(X(stretch.last) + PixelsPerWord, middle));
    }
}

void QtBlockStrip::PaintNames(QPainter& painter) const {
    const double left = visibleRegion().boundingRect().left();
    painter.fillRect(QRectF(left, 0, NamesWidth() + 2 * Margin - 2, height()), palette().window());
    painter.setPen(palette().windowText().color());
    for (const Lane& lane : lanes_) {
        painter.drawText(QRectF(left + Margin, lane.top, NamesWidth(), RowHeight()), Qt::AlignVCenter | Qt::AlignLeft,
                         lane.name);
    }
}

void QtBlockStrip::PaintBlock(QPainter& painter, std::size_t block) const {
    const StripBlock& one = blocks_[block];
    const QRectF place = BlockRect(block);
    const QColor colour = one.wrong ? WrongColor : palette().highlight().color();
    const bool dark = palette().window().color().lightness() < palette().windowText().color().lightness();
    const QColor edge = dark ? colour.lighter(170) : colour.darker(150);
    // The lane's line is not to be seen through it.
    painter.fillRect(place, palette().window());
    QColor fill = colour;
    fill.setAlphaF(0.55F);
    painter.setPen(QPen(edge, one.wrong ? 2 : 1));
    painter.setBrush(fill);
    painter.drawRect(place);
    if (one.wrong) {
        painter.setBrush(QBrush(edge, Qt::BDiagPattern));
        painter.drawRect(place);
    }
    if (chosen_ == block && hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(palette().windowText().color(), 1, Qt::DotLine));
        painter.drawRect(place.adjusted(-2, -2, 2, 2));
    }
    painter.setPen(palette().windowText().color());
    if (QFontMetricsF(font()).horizontalAdvance(one.label) + 2 <= place.width())
        painter.drawText(place, Qt::AlignCenter, one.label);
}

void QtBlockStrip::PaintAddresses(QPainter& painter) const {
    const double top = lanesEnd_;
    const QFontMetricsF metrics(font());
    painter.setPen(palette().windowText().color());
    for (const Stretch& stretch : stretches_) {
        const double right = X(stretch.last) + PixelsPerWord;
        painter.drawLine(QPointF(stretch.left, top), QPointF(right, top));
        for (const double x : {stretch.left, right})
            painter.drawLine(QPointF(x, top), QPointF(x, top + Tick));
        // In sight as long as any of the stretch is.
        const QString text = AddressText(stretch);
        const double seen = visibleRegion().boundingRect().left() + NamesWidth() + 2 * Margin;
        const double latest = std::max(Right(stretch) - metrics.horizontalAdvance(text), stretch.left);
        painter.drawText(QPointF(std::clamp(seen, stretch.left, latest), top + Tick + metrics.ascent()), text);
    }
}

// The names stay in sight when the strip is scrolled.
void QtBlockStrip::moveEvent(QMoveEvent*) { update(); }

void QtBlockStrip::mousePressEvent(QMouseEvent* event) {
    const auto block = BlockAt(event->position());
    if (!block || event->button() != Qt::LeftButton) return;
    Choose(*block);
    if (onPicked_) onPicked_(*block);
}

void QtBlockStrip::keyPressEvent(QKeyEvent* event) {
    const bool right = event->key() == Qt::Key_Right;
    if (blocks_.empty()) return QWidget::keyPressEvent(event);
    if (right || event->key() == Qt::Key_Left) {
        const std::size_t count = blocks_.size();
        const std::size_t from = chosen_.value_or(right ? count - 1 : 0);
        Choose((from + (right ? 1 : count - 1)) % count);
    } else if (chosen_ && onPicked_ && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        onPicked_(*chosen_);
    } else {
        QWidget::keyPressEvent(event);
    }
}

bool QtBlockStrip::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const auto block = BlockAt(help->pos());
    QToolTip::showText(help->globalPos(), block ? blocks_[*block].hint : QString(), this);
    return true;
}

} // namespace vantrel
