#include "platform/SerialSettings.h"

#include "platform/RuntimeError.h"

#include <charconv>
#include <system_error>

namespace vantrel {

unsigned SpeedOfSettings(const std::string& settings) {
    unsigned speed = 0;
    const auto [end, error] = std::from_chars(settings.data(), settings.data() + settings.size(), speed);
    const std::string rest(end, settings.data() + settings.size());
    if (error != std::errc{} || speed == 0 || rest != ",n,8,1") {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall, "\"" + settings + "\" are no settings of a serial port.");
    }
    return speed;
}

} // namespace vantrel
