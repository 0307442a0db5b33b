#include "widgets/QtScrolledContent.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QScreen>
#include <QScrollBar>

namespace vantrel {

namespace {

/// Of the screen; the rest is for the window's frame, its margins and its buttons.
constexpr double WidthShare = 0.9;
constexpr double HeightShare = 0.75;

/// Else the area would scroll below the height that the content likes best, not below its least one.
class OfAnyHeight final : public QHBoxLayout {
public:
    using QHBoxLayout::QHBoxLayout;
    [[nodiscard]] bool hasHeightForWidth() const override { return false; }
};

} // namespace

QtScrolledContent::QtScrolledContent(QLayout* content, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    auto* held = new QWidget;
    auto* layout = new OfAnyHeight(held);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(content);
    setWidget(held);
}

QSize QtScrolledContent::minimumSizeHint() const {
    const QSize room = screen()->availableSize();
    const int height = qRound(room.height() * HeightShare);
    QSize least = widget()->minimumSizeHint();
    if (least.height() > height) least.rwidth() += verticalScrollBar()->sizeHint().width();
    return least.boundedTo({qRound(room.width() * WidthShare), height});
}

bool QtScrolledContent::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}

} // namespace vantrel
