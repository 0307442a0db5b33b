// What the program runs on and was built with, for people who look for the cause of a problem. Nothing of the user's.
#pragma once

#include <string>

namespace vantrel {

/// System, its version and the machine's kind: "Debian GNU/Linux 12 (bookworm), Linux 6.1.0 x86_64".
[[nodiscard]] std::string HostName();
/// "g++ 12.2.0".
[[nodiscard]] std::string CompilerName();

} // namespace vantrel
