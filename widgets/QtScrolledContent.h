// The part of a window that scrolls where the screen, or the user's font, leaves too little room for all of it.
#pragma once

#include <QLayout>
#include <QScrollArea>

namespace vantrel {

/// As large as its content, and never smaller than the content's minimum; but never asks for more than what most of the
/// screen has, so that the buttons below it stay within reach.
class QtScrolledContent final : public QScrollArea {
public:
    /// Takes `content` over, with the widgets in it. Labels in it that wrap have a height of their own.
    explicit QtScrolledContent(QLayout* content, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override { return widget()->sizeHint(); }
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace vantrel
