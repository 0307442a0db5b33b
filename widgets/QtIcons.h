// The program's own icons, drawn as vector paths: crisp at any scale, in the colours of the light or dark theme.
#pragma once

#include <QIcon>

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
};

/// Follows the application's palette whenever it is drawn; a disabled icon loses its colours.
[[nodiscard]] QIcon IconOf(ProgramIcon icon);

} // namespace vantrel
