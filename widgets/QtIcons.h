// The program's own icons, drawn as vector paths: crisp at any scale, in the colours of the light or dark theme.
#pragma once

#include <QColor>
#include <QIcon>
#include <QSize>
#include <QWidget>

namespace vantrel {

enum class ProgramIcon {
    New,
    Open,
    Save,
    Print,
    OfflineEdit,
    Upload, ///< From the board to the computer: the arrow leaves the board.
    Download, ///< From the computer to the board: the arrow enters the board.
    TargetBoard,
    Communication,
    Program, ///< The program itself, also its windows' icon.
    // Lamps: each with a shape of its own, for eyes that see no colours.
    LampGood, ///< A disc.
    LampBad, ///< A diamond with an exclamation mark.
    LampOff, ///< A ring with a bar in it.
    LampUnknown, ///< A small ring.
};

/// Follows the application's palette whenever it is drawn; a disabled icon loses its colours.
[[nodiscard]] QIcon IconOf(ProgramIcon icon);
/// Of a lamp beside a text of that widget's font: as high as its letters, and no smaller than the host's small icons.
[[nodiscard]] QSize LampSize(const QWidget& widget);
/// The colour that a lamp has in the application's theme.
[[nodiscard]] QColor LampColor(ProgramIcon lamp);

} // namespace vantrel
