// The commands that move whole set-ups between a file and the board: download, upload and compare.
#include "console/Commands.h"
#include "console/LinkSession.h"
#include "console/SetupFiles.h"
#include "console/Transfers.h"
#include "platform/SafeFile.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace vantrel {

namespace {

ExitCode Refuse(CommandContext& context, const std::string& what) {
    context.Say(what);
    return ExitCode::Refused;
}

/// The question alone does not say between which file and which board.
bool Confirmed(CommandContext& context, const std::string& transfer, const MessageBox& question) {
    context.Say(transfer);
    return context.dialogs.Show(question) == MessageAnswer::Yes;
}

/// An existing file keeps its descriptions and notations; a new one begins with the defaults. The file may be the one
/// that was named or the one that will be written, which has its extension forced.
bool OpenUploadTarget(CommandContext& context) {
    Document& document = context.program.document;
    document.NameFile(PathFromUtf8(context.arguments.file));
    for (const std::filesystem::path& file : {document.FilePath, document.SaveTarget()}) {
        std::error_code error;
        if (std::filesystem::exists(file, error)) return OpenSetupFile(context, file, OtherVersion::Ask);
    }
    return true;
}

} // namespace

ExitCode DownloadCommand(CommandContext& context) {
    LinkSession session(context);
    if (!OpenSetupFile(context, SetupFileNamed(context.arguments.file), OtherVersion::Ask) ||
        !Confirmed(context, DocumentFile(context) + " to " + session.PortName(), DownloadQuestion())) {
        return Refuse(context, "Nothing was sent to the board.");
    }
    session.Open();
    ExitCode end = SendDocument(context, session);
    if (context.arguments.verify && !session.Failed() && !session.Interrupted()) {
        end = std::max(end, CompareDocument(context, session));
    }
    session.Close();
    return session.Failed() ? ExitCode::LinkFailed : end;
}

ExitCode UploadCommand(CommandContext& context) {
    LinkSession session(context);
    if (!OpenUploadTarget(context) || !NameSetupFile(context, context.arguments.file) ||
        !Confirmed(context, session.PortName() + " to \"" + Utf8FromPath(context.program.document.SaveTarget()) + "\"",
                   UploadQuestion())) {
        return Refuse(context, "Nothing was read from the board, and nothing was written.");
    }
    session.Open();
    const ExitCode end = FetchDocument(context, session);
    session.Close();
    if (end == ExitCode::Done) {
        SaveSetupFile(context);
    } else {
        context.Say("No file was written.");
    }
    return session.Failed() ? ExitCode::LinkFailed : end;
}

ExitCode CompareCommand(CommandContext& context) {
    LinkSession session(context);
    if (!OpenSetupFile(context, SetupFileNamed(context.arguments.file), OtherVersion::Ask)) {
        return Refuse(context, "Nothing was compared.");
    }
    session.Open();
    const ExitCode end = session.Failed() ? ExitCode::LinkFailed : CompareDocument(context, session);
    session.Close();
    return session.Failed() ? ExitCode::LinkFailed : end;
}

} // namespace vantrel
