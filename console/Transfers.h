// Transfers between the document and the board, and what the user is told about them. Knows the link session and the
// document; asks nothing beforehand.
#pragma once

#include "console/CommandContext.h"
#include "console/LinkSession.h"
#include "document/SettingsTransfer.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

// They are done or refused; that a failed link outranks both is for LinkSession::Close.

/// Writes the document's values, or those that are given, to the board. Done when every one was confirmed, which is
/// reported only when the link stood all the time. What had to be sent twice, and what that may have done, is named.
[[nodiscard]] ExitCode SendDocument(CommandContext& context, LinkSession& session,
                                    const std::vector<std::size_t>& indices = EveryIndex());

/// That a download may have left the board expecting one, and the command that ends it.
[[nodiscard]] std::string FlagLeftText(const Arguments& arguments);

/// Reads the board's values into the document. Done when every one was read, over one and the same connection.
[[nodiscard]] ExitCode FetchDocument(CommandContext& context, LinkSession& session);

/// Reads the values that FetchDocument has read once more. Done when they were all read, and the same.
[[nodiscard]] ExitCode FetchAgain(CommandContext& context, LinkSession& session);

/// Prints what differs between the document and the board, of all values or of those that are given. Done when nothing
/// does. Nothing is printed, but said, when the link was taken up again meanwhile: the values may be those of two
/// boards.
[[nodiscard]] ExitCode CompareDocument(CommandContext& context, LinkSession& session,
                                       const std::vector<std::size_t>& indices = EveryIndex());

/// The values, ascending, that the board does not hold, or did not give clearly; named. None, with a word to the user,
/// when not all of it could be read.
[[nodiscard]] std::optional<std::vector<std::size_t>> FindChanges(CommandContext& context, LinkSession& session);

/// Prints what differs between the document and another record, "here | there". Done when nothing does.
[[nodiscard]] ExitCode CompareRecords(CommandContext& context, const Configuration& other);

} // namespace vantrel
