// Transfers between the document and the board, and what the user is told about them. Knows the link session and the
// document; asks nothing beforehand.
#pragma once

#include "console/CommandContext.h"
#include "console/LinkSession.h"

namespace vantrel {

// They are done or refused; that a failed link outranks both is for LinkSession::Close.

/// Writes the document's values to the board. Done when every one was confirmed, which is reported only when the link
/// stood all the time.
[[nodiscard]] ExitCode SendDocument(CommandContext& context, LinkSession& session);

/// Reads the board's values into the document. Done when every one was read.
[[nodiscard]] ExitCode FetchDocument(CommandContext& context, LinkSession& session);

/// Prints what differs between the document and the board. Done when nothing does.
[[nodiscard]] ExitCode CompareDocument(CommandContext& context, LinkSession& session);

} // namespace vantrel
