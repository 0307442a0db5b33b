#include "platform/Dialogs.h"

#include "platform/RuntimeError.h"

namespace vantrel {

void ReportRuntimeError(Dialogs& dialogs, const std::string& label, const RuntimeError& error) {
    dialogs.Show({.title = label,
                  .text = "Error Number = " + std::to_string(error.Number()) + "\n" + error.Description(),
                  .icon = MessageIcon::Exclamation,
                  .buttons = MessageButtons::Ok});
}

} // namespace vantrel
