// The search: `fuzz --target=NAME` with the fuzzer's own options behind it. Any bytes may end in any call, so never as
// root.
#include "fuzz/FuzzTargets.h"

#include <cstdio>
#include <string_view>
#include <unistd.h>

namespace {
const vantrel::fuzz::Target* wanted =
    nullptr; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): as the fuzzer calls
}

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    if (::geteuid() == 0) {
        std::fputs("Not as root: what is searched may write anywhere.\n", stderr);
        std::exit(2);
    }
    constexpr std::string_view option = "--target=";
    for (const std::string_view argument : std::span(*arguments, static_cast<std::size_t>(*count))) {
        if (argument.starts_with(option)) wanted = vantrel::fuzz::FindTarget(argument.substr(option.size()));
    }
    if (wanted) return 0;
    std::fputs("--target=NAME is missing; one of:\n", stderr);
    for (const auto& target : vantrel::fuzz::Targets)
        std::fprintf(stderr, "%s\n", std::string(target.name).c_str());
    std::exit(2);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    wanted->take({data, size});
    return 0;
}
