// What asio leaves to the host about an opened serial device. Private to the real serial port.
#pragma once

#include "platform/RuntimeError.h"

#include <cstddef>
#include <string>
#include <system_error>

namespace vantrel::serial {

#ifdef _WIN32
using NativeHandle = void*;
#else
using NativeHandle = int;
#endif

/// How many bytes to ask for at once, for an answer with the first one that arrives. A host whose drivers keep a read
/// until all its bytes are there is asked for one.
#ifdef _WIN32
inline constexpr std::size_t BytesAtOnce = 1;
#else
inline constexpr std::size_t BytesAtOnce = 64;
#endif

/// Keeps every other program away from the device as long as it is open; false when another one has it already.
[[nodiscard]] bool TakeForOneself(NativeHandle handle);
/// Lets others have it again; before the device is closed.
void GiveBack(NativeHandle handle);
/// Asks for received bytes at once instead of in bundles, where the host can do that; a refusal is no error.
void AskForLowLatency(NativeHandle handle);
/// Throws away what the host has received but not handed over.
void DiscardReceived(NativeHandle handle);
/// What an event loop can watch for received bytes; -1 where the host has no such thing.
[[nodiscard]] int WatchedDescriptor(NativeHandle handle);
/// Why a device cannot be opened, as an error whose description tells the user what to do.
[[nodiscard]] RuntimeError OpenFailure(const std::string& device, const std::error_code& why);

} // namespace vantrel::serial
