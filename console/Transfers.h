// Transfers between the document and the board, and what the user is told about them. Knows the link session and the
// document; asks nothing beforehand.
#pragma once

#include "console/CommandContext.h"
#include "console/LinkSession.h"

#include <string>

namespace vantrel {

// They are done or refused; that a failed link outranks both is for LinkSession::Close.

/// Writes the document's values to the board. Done when every one was confirmed, which is reported only when the link
/// stood all the time. What had to be sent twice, and what that may have done, is named.
[[nodiscard]] ExitCode SendDocument(CommandContext& context, LinkSession& session);

/// That a download may have left the board expecting one, and the command that ends it.
[[nodiscard]] std::string FlagLeftText(const Arguments& arguments);

/// Reads the board's values into the document. Done when every one was read, over one and the same connection.
[[nodiscard]] ExitCode FetchDocument(CommandContext& context, LinkSession& session);

/// Reads the values that FetchDocument has read once more. Done when they were all read, and the same.
[[nodiscard]] ExitCode FetchAgain(CommandContext& context, LinkSession& session);

/// Prints what differs between the document and the board. Done when nothing does. Nothing is printed, but said, when
/// the link was taken up again meanwhile: the values may be those of two boards.
[[nodiscard]] ExitCode CompareDocument(CommandContext& context, LinkSession& session);

} // namespace vantrel
