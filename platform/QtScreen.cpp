#include "platform/QtScreen.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPalette>
#include <QScreen>
#include <QStyle>

#include <cstdio>
#include <cstdlib>

namespace vantrel {

namespace {

constexpr double TwipsPerInch = 1440;

/// The focus goes to, or comes from, something that is no neighbour of the box: another window or a menu.
bool IsElsewhere(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
}

/// Lives with the box that it watches.
class SelectAllFilter final : public QObject {
public:
    explicit SelectAllFilter(QLineEdit& box) : QObject(&box), box_(box) { box.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
        case QEvent::FocusIn:
            GotFocus(static_cast<QFocusEvent*>(event)->reason());
            break;
        case QEvent::FocusOut:
            LostFocus(static_cast<QFocusEvent*>(event)->reason());
            break;
        case QEvent::MouseButtonRelease:
            Released();
            break;
        default:
            break;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void GotFocus(Qt::FocusReason reason) {
        const bool comesBack = away_ && IsElsewhere(reason);
        away_ = false;
        if (comesBack) return;
        clicked_ = reason == Qt::MouseFocusReason;
        if (!clicked_) box_.selectAll();
    }
    void LostFocus(Qt::FocusReason reason) {
        clicked_ = false;
        away_ = IsElsewhere(reason);
    }
    // The click that brings the focus would undo a selection made before its end; one that drags makes its own.
    void Released() {
        if (clicked_ && !box_.hasSelectedText()) box_.selectAll();
        clicked_ = false;
    }

    QLineEdit& box_;
    bool away_ = false; ///< The focus is where it comes back from.
    bool clicked_ = false; ///< The focus came with a click that has not ended.
};

/// For the message handler, which Qt hands nothing of ours.
struct {
    int exitCode = 0;
    const char* text = "";
    QtMessageHandler usual = nullptr;
} withoutScreen;

void TellOrEnd(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    // Qt says first, and then once more in its fatal message, what the one text says as well.
    if (QByteArrayView(context.category).startsWith("qt.qpa")) return;
    if (type != QtFatalMsg) {
        withoutScreen.usual(type, context, message);
        return;
    }
    std::fputs(withoutScreen.text, stderr);
    std::_Exit(withoutScreen.exitCode);
}

} // namespace

void RequireScreen(int exitCode, const char* text) {
    withoutScreen.exitCode = exitCode;
    withoutScreen.text = text;
    withoutScreen.usual = qInstallMessageHandler(TellOrEnd);
}

void ScreenFound() { qInstallMessageHandler(withoutScreen.usual); }

void MakeLinksReadable() {
    constexpr int middle = 128;
    constexpr QColor onDark(122, 170, 255);
    const QPalette colours = QApplication::palette();
    const bool dark = colours.color(QPalette::Base).lightness() < middle;
    if (!dark || colours.color(QPalette::Link) != QColor(Qt::blue)) return;
    QPalette readable;
    readable.setColor(QPalette::Link, onDark);
    QApplication::setPalette(readable);
}

int PixelsOfTwips(int twips, const QWidget& window) {
    return qRound(twips * window.screen()->logicalDotsPerInchX() / TwipsPerInch);
}

QSize SizeOnScreen(const TwipsSize& planned, const QWidget& window) {
    constexpr double share = 0.9;
    return QSize(PixelsOfTwips(planned.width, window), PixelsOfTwips(planned.height, window))
        .boundedTo(window.screen()->availableSize() * share);
}

int EntryWidth(int twips, const QLineEdit& box, const QString& text) {
    constexpr int cursorAndMargins = 8;
    const int frame = 2 * box.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &box);
    return qMax(PixelsOfTwips(twips, box), box.fontMetrics().horizontalAdvance(text) + frame + cursorAndMargins);
}

void FitColumns(QTreeView& list) {
    constexpr int gap = 18; // Pixels.
    for (int column = 0; column + 1 < list.model()->columnCount(); ++column) {
        list.resizeColumnToContents(column);
        list.setColumnWidth(column, list.columnWidth(column) + gap);
    }
}

void CentreOnScreen(QWidget& dialog) {
    dialog.adjustSize();
    const QWidget& onScreen = dialog.parentWidget() ? *dialog.parentWidget() : dialog;
    const QRect screen = onScreen.screen()->availableGeometry();
    const QRect centred = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, dialog.size(), screen);
    // The title bar of a dialog that is larger than the screen stays within reach.
    dialog.move(qMax(centred.x(), screen.x()), qMax(centred.y(), screen.y()));
}

void PlaceBeside(QWidget& window, QWidget& owner) {
    const QRect room = owner.screen()->availableGeometry();
    const QRect taken = owner.frameGeometry();
    // It will get the same frame.
    const QSize frame = taken.size() - owner.size();
    const QSize least = window.minimumSizeHint() + frame;
    const QSize wanted = window.sizeHint().expandedTo(window.size()) + frame;
    if (taken.width() + wanted.width() <= room.width() && least.height() <= room.height()) {
        const bool right = room.right() - taken.right() >= wanted.width();
        const bool left = taken.left() - room.left() >= wanted.width();
        const int ownerX = right || left ? taken.left() : room.right() + 1 - wanted.width() - taken.width();
        const int x = left && !right ? taken.left() - wanted.width() : ownerX + taken.width();
        window.resize(wanted.boundedTo({wanted.width(), room.height()}) - frame);
        owner.move(ownerX, taken.top());
        window.move(x, qMin(taken.top(), room.bottom() + 1 - window.height() - frame.height()));
    } else if (taken.height() + least.height() <= room.height() && least.width() <= room.width()) {
        const int height = qMin(wanted.height(), room.height() - taken.height());
        const int ownerY = qMin(taken.top(), room.bottom() + 1 - height - taken.height());
        window.resize(QSize(qMin(wanted.width(), room.width()), height) - frame);
        owner.move(taken.left(), ownerY);
        window.move(qBound(room.left(), taken.left(), room.right() + 1 - window.width() - frame.width()),
                    ownerY + taken.height());
    }
}

void SelectAllOnFocus(QLineEdit& box) { new SelectAllFilter(box); }

} // namespace vantrel
