#include "widgets/QtBlockStrip.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

// Pixels.
constexpr double WordWidth = 3;
constexpr double LeastBlock = 8; ///< A block of one word is still hit by a pointer.
constexpr double FoldWidth = 34; ///< What a folded gap leaves of itself.
constexpr double LaneGap = 6;
constexpr double Margin = 8;
constexpr double Tick = 5;
constexpr std::int64_t LongestGap = 24; ///< Words; what is longer is folded.

const QColor WrongColor(0xC0, 0x30, 0x30);

} // namespace

QtBlockStrip::QtBlockStrip(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
}

void QtBlockStrip::Show(std::vector<StripBlock> blocks, QStringList lanes, QString prefix) {
    blocks_ = std::move(blocks);
    lanes_ = std::move(lanes);
    prefix_ = std::move(prefix);
    chosen_.reset();
    setAccessibleDescription({});
    FindStretches();
    updateGeometry();
    update();
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
        if (!stretches_.empty()) left = X(stretches_.back().last + 1) + FoldWidth;
        stretches_.push_back({first, last, left});
    }
}

double QtBlockStrip::X(std::int64_t word) const {
    const auto behind = std::ranges::find_if(stretches_, [word](const Stretch& one) { return one.first > word; });
    if (behind == stretches_.begin()) return NamesWidth() + 2 * Margin;
    const Stretch& stretch = *std::prev(behind);
    return stretch.left + WordWidth * static_cast<double>(word - stretch.first);
}

double QtBlockStrip::NamesWidth() const {
    double width = 0;
    for (const QString& lane : lanes_)
        width = std::max(width, QFontMetricsF(font()).horizontalAdvance(lane));
    return width;
}

double QtBlockStrip::LaneTop(std::size_t lane) const {
    const double height = QFontMetricsF(font()).height() + LaneGap;
    return Margin + static_cast<double>(lane) * (height + LaneGap);
}

QRectF QtBlockStrip::BlockRect(std::size_t block) const {
    const StripBlock& one = blocks_.at(block);
    const double left = X(one.first);
    const double width = std::max(X(one.last) + WordWidth - left, LeastBlock);
    return {left, LaneTop(one.lane), width, QFontMetricsF(font()).height() + LaneGap};
}

QSize QtBlockStrip::sizeHint() const {
    const double width = stretches_.empty() ? NamesWidth() : X(stretches_.back().last) + LeastBlock;
    const double addresses = 2 * QFontMetricsF(font()).horizontalAdvance(QStringLiteral("V34463"));
    const double height = LaneTop(static_cast<std::size_t>(lanes_.size())) + Tick + QFontMetricsF(font()).height();
    return QSizeF(width + addresses, height + Margin).toSize();
}

std::optional<std::size_t> QtBlockStrip::BlockAt(QPointF place) const {
    // The one on top was drawn last.
    for (std::size_t block = blocks_.size(); block-- > 0;) {
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
}

void QtBlockStrip::PaintLanes(QPainter& painter) const {
    for (qsizetype lane = 0; lane < lanes_.size(); ++lane) {
        const double top = LaneTop(static_cast<std::size_t>(lane));
        const double height = QFontMetricsF(font()).height() + LaneGap;
        painter.setPen(palette().windowText().color());
        painter.drawText(QRectF(Margin, top, NamesWidth(), height), Qt::AlignVCenter | Qt::AlignLeft, lanes_[lane]);
        painter.setPen(palette().mid().color());
        const double middle = top + height / 2;
        painter.drawLine(QPointF(NamesWidth() + 2 * Margin, middle), QPointF(width() - Margin, middle));
    }
}

void QtBlockStrip::PaintBlock(QPainter& painter, std::size_t block) const {
    const StripBlock& one = blocks_[block];
    const QRectF place = BlockRect(block);
    QColor fill = one.wrong ? WrongColor : palette().highlight().color();
    painter.setPen(QPen(fill.darker(), one.wrong ? 2 : 1));
    // What lies below an overlapping block shines through.
    fill.setAlphaF(0.55F);
    painter.setBrush(fill);
    painter.drawRect(place);
    if (one.wrong) {
        painter.setBrush(QBrush(fill.darker(), Qt::BDiagPattern));
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
    const double top = LaneTop(static_cast<std::size_t>(lanes_.size()));
    const QFontMetricsF metrics(font());
    painter.setPen(palette().windowText().color());
    double free = 0;
    for (const Stretch& stretch : stretches_) {
        const double x = X(stretch.first);
        const QString text = prefix_ + QString::number(stretch.first);
        painter.drawLine(QPointF(x, top), QPointF(x, top + Tick));
        if (x < free) continue;
        painter.drawText(QPointF(x, top + Tick + metrics.ascent()), text);
        free = x + metrics.horizontalAdvance(text) + Margin;
    }
}

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
