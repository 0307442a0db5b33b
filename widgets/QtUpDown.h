// The up-down control: two small arrow buttons that step the entry box beside them.
#pragma once

#include <QLineEdit>
#include <QToolButton>
#include <QWidget>

#include <functional>

namespace vantrel {

/// Never takes the focus, so that a step is no leaving of the box. The Up and Down keys in the box and the mouse wheel
/// over it step too; the wheel only while the box has the focus, so that turning past it changes nothing.
class QtUpDown final : public QWidget {
public:
    /// `step`: called with 1 for up and -1 for down. The box belongs to the caller and must stand in the same window.
    QtUpDown(QLineEdit& box, std::function<void(int)> step, QWidget* parent);

    QToolButton* up = nullptr;
    QToolButton* down = nullptr;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QToolButton* AddButton(Qt::ArrowType arrow, int direction, const QString& name);

    std::function<void(int)> step_;
    bool boxFocused_ = false; ///< The box, or another control that this one filters for the same keys.
};

} // namespace vantrel
