// The commands that move whole set-ups between a file and the board: download, upload and compare.
#include "console/Commands.h"
#include "console/LinkSession.h"
#include "console/SetupFiles.h"
#include "console/Transfers.h"
#include "document/FileQuestions.h"
#include "platform/SafeFile.h"
#include "text/PathText.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace vantrel {

namespace {

/// The question alone does not say between which file and which board.
bool Confirmed(CommandContext& context, const std::string& transfer, const MessageBox& question) {
    context.Say(transfer);
    return context.dialogs.Show(question) == MessageAnswer::Yes;
}

/// An existing file keeps its descriptions and notations; a new one begins with the defaults. The file may be the one
/// that was named or the one that will be written, which has its extension forced.
bool OpenUploadTarget(CommandContext& context) {
    RequireFilePart(context.arguments.file);
    Document& document = context.program.document;
    document.NameFile(PathFromUtf8(context.arguments.file));
    for (const std::filesystem::path& file : {document.FilePath, document.SaveTarget()}) {
        std::error_code error;
        if (std::filesystem::exists(file, error)) return OpenSetupFile(context, file, OtherVersion::Ask);
    }
    return true;
}

bool MayTransferInto(CommandContext& context, LinkSession& session) {
    const std::filesystem::path target = context.program.document.SaveTarget();
    // A target that cannot be written must be known before the board is asked for minutes, not after.
    RequireReplaceable(target);
    return session.TraceAccepted() &&
           Confirmed(context, session.PortName() + " to " + QuotedPath(target), UploadQuestion());
}

/// A board that was away for a while may have lost what it had confirmed before; only reading it back tells.
ExitCode SendAndVerify(CommandContext& context, LinkSession& session) {
    ExitCode end = SendDocument(context, session);
    const int reopened = session.Link().Reopened();
    const bool verifies = context.arguments.verify && !session.Failed() && !session.Interrupted();
    if (verifies) end = std::max(end, CompareDocument(context, session));
    const bool foundEqual = verifies && end == ExitCode::Done;
    const bool settled = session.Link().Reopened() == reopened && (reopened == 0 || foundEqual);
    if (session.Failed() || settled) return end;
    context.Say("The link was taken up again; what the board lost meanwhile is not known. Compare, or download again.");
    return std::max(end, ExitCode::Refused);
}

/// What was read before the board was away need not be what it holds since.
ExitCode IfNeverAway(CommandContext& context, LinkSession& session, ExitCode end, const std::string& again) {
    if (session.Failed() || session.Link().Reopened() == 0) return end;
    context.Say("The link was taken up again; what was read before may be out of date. " + again);
    return std::max(end, ExitCode::Refused);
}

} // namespace

ExitCode DownloadCommand(CommandContext& context) {
    LinkSession session(context);
    if (!OpenSetupFile(context, SetupFileNamed(context.arguments.file), OtherVersion::Ask) ||
        !session.TraceAccepted() ||
        !Confirmed(context, DocumentFile(context) + " to " + session.PortName(), DownloadQuestion())) {
        return Refuse(context, "Nothing was sent to the board.");
    }
    session.Open();
    return session.Close(SendAndVerify(context, session));
}

ExitCode UploadCommand(CommandContext& context) {
    LinkSession session(context);
    if (!OpenUploadTarget(context) || !NameSetupFile(context, context.arguments.file) ||
        !MayTransferInto(context, session)) {
        return Refuse(context, "Nothing was read from the board, and nothing was written.");
    }
    session.Open();
    const ExitCode fetched = IfNeverAway(context, session, FetchDocument(context, session), "Upload again.");
    const ExitCode end = session.Close(fetched);
    if (fetched == ExitCode::Done) {
        SaveSetupFile(context);
        context.Say("Uploaded " + session.PortName() + " to " + DocumentFile(context) + ": " +
                    std::to_string(ValueCount) + " values, all read reliably.");
    } else {
        context.Say("No file was written.");
    }
    return end;
}

ExitCode CompareCommand(CommandContext& context) {
    LinkSession session(context);
    if (!OpenSetupFile(context, SetupFileNamed(context.arguments.file), OtherVersion::Note) ||
        !session.TraceAccepted()) {
        return Refuse(context, "Nothing was compared.");
    }
    session.Open();
    if (session.Failed()) return session.Close(ExitCode::LinkFailed);
    return session.Close(IfNeverAway(context, session, CompareDocument(context, session), "Compare again."));
}

} // namespace vantrel
