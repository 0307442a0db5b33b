// What a user names as the port on a command line, and what that means for the link.
#pragma once

#include "link/RSComm.h"

#include <optional>
#include <string>

namespace vantrel {

struct PortChoice {
    enum class Kind {
        Number, ///< A port number: 1 is COM1.
        Device, ///< A device by its path, or a board behind a network by its address.
        Simulated, ///< A simulated board in this process.
        Demonstration, ///< A simulated board behind a device of its own where the host can have one.
    };
    Kind kind = Kind::Simulated;
    int number = 0;
    std::string device{};
};

/// A number of the range, "simulated", a device's name or its path, the address of a board behind a network. Whether a
/// device is there shows when it is opened. Throws UsageError for any other text.
[[nodiscard]] PortChoice ReadPortChoice(const std::string& text, PortRange range);

/// What replaces the stored settings: the number, if that was named, and the speed. A port that has no number leaves
/// the stored one alone.
[[nodiscard]] PortOverride OverrideFor(const PortChoice& choice, const std::optional<std::string>& speed);

} // namespace vantrel
