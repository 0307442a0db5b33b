// How far a transfer came, in words. Knows the field table only.
#pragma once

#include <cstddef>
#include <string>

namespace vantrel {

/// By which of its names a field is called: the one of files and commands, or the heading of its column.
enum class FieldNaming { Name, Heading };

/// Which values reached the board when the first `walked` of them were sent and the board did not confirm `unconfirmed`
/// of those.
[[nodiscard]] std::string ReachedText(std::size_t walked, std::size_t unconfirmed, FieldNaming naming);

/// Which values of the set-up are the board's now, when the first `walked` of them were read and `unconfirmed` of those
/// not reliably.
[[nodiscard]] std::string FetchedText(std::size_t walked, std::size_t unconfirmed, FieldNaming naming);

} // namespace vantrel
