// Program transfer, as far as this program has it.
#include "link/RSComm.h"

namespace vantrel {

void RSComm::DumpProgram() {
    dialogs_.Show(
        {.title = "VANTREL",
         .text = "This program sets up the board; it does not download programs.\nNothing was sent to the board.",
         .icon = MessageIcon::Information,
         .buttons = MessageButtons::Ok});
}

} // namespace vantrel
