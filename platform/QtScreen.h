// What every window needs to know of its screen, and what every entry box does on focus.
#pragma once

#include <QLineEdit>
#include <QTreeView>
#include <QWidget>

namespace vantrel {

/// From here to ScreenFound(), which stand around the making of the application: where there is no screen, the process
/// ends with this exit code and text on standard error instead of Qt's abort.
void RequireScreen(int exitCode, const char* text);
void ScreenFound();

/// Where dark colours come with the links of light ones, links get a colour that can be read. Call once, with the
/// application made.
void MakeLinksReadable();

/// Pixels of a length in twips (1/1440 inch) at the logical resolution of the screen that `window` belongs to.
[[nodiscard]] int PixelsOfTwips(int twips, const QWidget& window);

struct TwipsSize {
    int width; ///< Twips, as for PixelsOfTwips.
    int height;
};
/// A window's size in pixels, which leaves a tenth of its screen free.
[[nodiscard]] QSize SizeOnScreen(const TwipsSize& planned, const QWidget& window);

/// Width of an entry box: that many twips, and more where the box's font needs it for `text`.
[[nodiscard]] int EntryWidth(int twips, const QLineEdit& box, const QString& text);

/// Makes every column as wide as what it holds; the last one takes what is left.
void FitColumns(QTreeView& list);

/// Gives a dialog the size that its content asks for and puts it in the middle of its owner's screen (its own, without
/// an owner). Call before it is shown.
void CentreOnScreen(QWidget& dialog);

/// Puts a window that is about to be shown for the first time beside or below its owner. Where the screen has not the
/// room, the owner makes some, as far as it can; where both do not fit, neither is moved.
void PlaceBeside(QWidget& window, QWidget& owner);

/// From now on `box` selects its whole text when it gets the focus. Coming back from another program, a message box or
/// a menu is no new focus: what the user had selected stays.
void SelectAllOnFocus(QLineEdit& box);

} // namespace vantrel
