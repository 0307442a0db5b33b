// Windows has no device that a program could open like a serial port without a driver.
#include "platform/PseudoTerminal.h"

#include "platform/RuntimeError.h"

namespace vantrel {

std::unique_ptr<PseudoTerminal> PseudoTerminal::Create() {
    throw RuntimeError(ErrorNumber::InvalidProcedureCall,
                       "Windows has no pseudo-terminals, so the simulated board cannot be served as a serial device.");
}

} // namespace vantrel
