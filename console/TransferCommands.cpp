// The commands that move set-ups between a file and the board: download, upload, backup and compare.
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

bool MayTransferInto(CommandContext& context, const LinkSession& session) {
    const std::filesystem::path target = context.program.document.SaveTarget();
    const bool stream = IsStandardStream(context.arguments.file);
    // A target that cannot be written must be known before the board is asked for minutes, not after.
    if (!stream) RequireReplaceable(target);
    return Confirmed(context, session.PortName() + " to " + (stream ? DocumentFile(context) : QuotedPath(target)),
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

ExitCode Fetch(CommandContext& context, LinkSession& session, bool twice) {
    const ExitCode fetched = FetchDocument(context, session);
    return fetched == ExitCode::Done && twice ? FetchAgain(context, session) : fetched;
}

/// A data byte has no check on its way; whoever wants to be surer has it read twice.
std::string UploadedText(const CommandContext& context, const LinkSession& session, bool twice) {
    const std::string how = twice
                                ? " values, read twice with the same result."
                                : " values, every answer in step. (--verify reads everything twice: a data byte has no "
                                  "check on its way.)";
    return "Uploaded " + session.PortName() + " to " + DocumentFile(context) + ": " + std::to_string(ValueCount) + how;
}

/// Reads all, sends what differs, reads that back.
ExitCode SendChanges(CommandContext& context, LinkSession& session) {
    const auto changes = FindChanges(context, session);
    if (!changes) return ExitCode::Refused;
    if (changes->empty()) return ExitCode::Done;
    const ExitCode sent = SendDocument(context, session, *changes);
    if (session.Failed() || session.Interrupted()) return sent;
    return std::max(sent, CompareDocument(context, session, *changes));
}

ExitCode FetchAndSave(CommandContext& context, LinkSession& session, bool twice) {
    if (Fetch(context, session, twice) != ExitCode::Done) return Refuse(context, "No file was written.");
    SaveSetupFile(context);
    context.Say(UploadedText(context, session, twice));
    return ExitCode::Done;
}

ExitCode Download(CommandContext& context) {
    LinkSession session(context);
    return session.Use(
        "No value was sent to the board.",
        [&] {
            return OpenSetupFile(context, OtherVersion::Ask) &&
                   Confirmed(context, DocumentFile(context) + " to " + session.PortName(), DownloadQuestion());
        },
        [&] { return context.arguments.changes ? SendChanges(context, session) : SendAndVerify(context, session); });
}

ExitCode Upload(CommandContext& context) {
    LinkSession session(context);
    return session.Use(
        "Nothing was read from the board, and nothing was written.",
        [&] {
            return OpenUploadTarget(context) && NameSetupFile(context, context.arguments.file) &&
                   MayTransferInto(context, session);
        },
        [&] { return FetchAndSave(context, session, context.arguments.verify); });
}

/// A backup is never laid over a file's descriptions: it is what the board holds, and nothing else.
ExitCode SaveBackup(CommandContext& context) {
    LinkSession session(context);
    return session.Use(
        "Nothing was read from the board, and nothing was written.",
        [&] { return NameSetupFile(context, context.arguments.file) && MayTransferInto(context, session); },
        [&] { return FetchAndSave(context, session, true); });
}

ExitCode CompareFiles(CommandContext& context) {
    const std::string& other = *context.arguments.otherFile;
    if (!OpenSetupFile(context, SetupFileNamed(other), OtherVersion::Note)) return ExitCode::Refused;
    const Configuration there = context.program.document.CurrentConfiguration;
    if (!OpenSetupFile(context, OtherVersion::Note)) return ExitCode::Refused;
    return CompareRecords(context, there);
}

ExitCode Compare(CommandContext& context) {
    const Arguments& arguments = context.arguments;
    if (arguments.otherFile.has_value() != arguments.port.empty()) {
        throw UsageError("Compare with one other side: a second file, or --port for the board.");
    }
    if (arguments.otherFile) return CompareFiles(context);
    LinkSession session(context);
    return session.Use(
        "Nothing was compared.", [&] { return OpenSetupFile(context, OtherVersion::Note); },
        [&] { return CompareDocument(context, session); });
}

void TakeTransfer(CommandOptions& options, const char* file, const char* verify) {
    options.File(file);
    options.Flag("--verify", options.to.verify, verify);
    options.Port();
}

} // namespace

const Command DownloadCommand{"download", "Write the settings of a set-up file to the board",
                              [](CommandOptions& options) {
                                  TakeTransfer(options, "The set-up file to send",
                                               "Read everything back afterwards and name what differs");
                                  options.Flag("--changes", options.to.changes,
                                               "Read everything first, send only what differs, and read that back");
                              },
                              "  vantrelctl download plant.sdt --port 1 --verify\n"
                              "  vantrelctl download plant.sdt --port 1 --changes\n"
                              "  vantrelctl download plant.sdt --port /dev/ttyUSB0 --speed 19200 --yes\n",
                              Download};

const Command UploadCommand{"upload", "Read the settings of the board into a set-up file",
                            [](CommandOptions& options) {
                                TakeTransfer(options,
                                             "The set-up file to write; the descriptions of one that exists stay",
                                             "Read everything twice and name what differs");
                            },
                            "  vantrelctl upload plant.sdt --port 1 --verify\n", Upload};

const Command BackupCommand{"backup", "Keep what the board holds, read twice, in a set-up file of its own",
                            [](CommandOptions& options) {
                                options.File("The set-up file to write");
                                options.Port();
                            },
                            "  vantrelctl backup before-the-change.sdt --port 1\n", SaveBackup};

const Command CompareCommand{
    "compare", "Name what differs between a set-up file and the board, or another file; writes nothing",
    [](CommandOptions& options) {
        options.File("The set-up file to compare");
        options.Place("OTHER", options.to.otherFile, "Another set-up file, instead of the board");
        options.Json();
        options.Port(CommandOptions::PortIs::MayBeMissing);
    },
    "  vantrelctl compare plant.sdt --port 1\n"
    "  vantrelctl compare plant.sdt plant-old.sdt\n",
    Compare};

} // namespace vantrel
