#include "platform/HostName.h"

namespace vantrel {

std::string CompilerName() {
#if defined(__clang__)
    return std::string("clang ") + __clang_version__;
#else
    return std::string("g++ ") + __VERSION__;
#endif
}

} // namespace vantrel
