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
    if (IsStandardStream(context.arguments.file)) {
        if (IsStandardStream(context.arguments.trace.value_or(""))) {
            throw UsageError("--trace: standard output takes the set-up file already. Name a file.");
        }
        return true;
    }
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
    const bool stream = IsStandardStream(context.arguments.file);
    // A target that cannot be written must be known before the board is asked for minutes, not after.
    if (!stream) RequireReplaceable(target);
    return session.TraceAccepted() &&
           Confirmed(context, session.PortName() + " to " + (stream ? DocumentFile(context) : QuotedPath(target)),
                     UploadQuestion());
}

/// A board that was away for a while may have lost what it had confirmed before; only reading it back tells.
ExitCode SendAndVerify(CommandContext& context, LinkSession& session) {
    const ExitCode sent = SendDocument(context, session);
    const int reopened = session.Link().Reopened();
    const bool verifies = context.arguments.verify && !session.Failed() && !session.Interrupted();
    const ExitCode verified = verifies ? CompareDocument(context, session) : ExitCode::Done;
    const ExitCode end = std::max(sent, verified);
    const bool settled = reopened == 0 || verifies;
    if (session.Failed() || settled) return end;
    context.Say("The link was taken up again; what the board lost meanwhile is not known. Compare, or download again.");
    return std::max(end, ExitCode::Refused);
}

ExitCode Fetch(CommandContext& context, LinkSession& session) {
    const ExitCode fetched = FetchDocument(context, session);
    return fetched == ExitCode::Done && context.arguments.verify ? FetchAgain(context, session) : fetched;
}

/// A data byte has no check on its way; whoever wants to be surer has it read twice.
std::string UploadedText(const CommandContext& context, const LinkSession& session) {
    const std::string how = context.arguments.verify
                                ? " values, read twice with the same result."
                                : " values, every answer in step. (--verify reads everything twice: a data byte has no "
                                  "check on its way.)";
    return "Uploaded " + session.PortName() + " to " + DocumentFile(context) + ": " + std::to_string(ValueCount) + how;
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
    if (session.Failed()) {
        context.Say("No value reached the board.");
        return session.Close(ExitCode::LinkFailed);
    }
    return session.Close(SendAndVerify(context, session));
}

ExitCode UploadCommand(CommandContext& context) {
    LinkSession session(context);
    if (!OpenUploadTarget(context) || !NameSetupFile(context, context.arguments.file) ||
        !MayTransferInto(context, session)) {
        return Refuse(context, "Nothing was read from the board, and nothing was written.");
    }
    session.Open();
    const ExitCode fetched = session.Failed() ? ExitCode::LinkFailed : Fetch(context, session);
    const ExitCode end = session.Close(fetched);
    if (fetched == ExitCode::Done) {
        SaveSetupFile(context);
        context.Say(UploadedText(context, session));
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
    return session.Close(CompareDocument(context, session));
}

} // namespace vantrel
