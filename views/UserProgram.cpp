// Two small files of a file set: the first character of one, the first line of the other.
#include "views/UserProgram.h"

#include "document/DocumentFiles.h"
#include "link/RSComm.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/NumberText.h"
#include "text/PrintableText.h"
#include "text/Windows1252.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace vantrel {

namespace {

constexpr const char* ShippedProgram = "K5216-505.TRV";
/// Four hexadecimal digits end the revision line: the second number, then the first.
constexpr std::size_t NumberDigits = 2;

/// The file beside `file` with the same base name and an extension, given in upper case with its point.
std::optional<std::filesystem::path> SideFile(const std::filesystem::path& file, std::string_view extension) {
    std::filesystem::path exact = file;
    exact.replace_extension(extension);
    std::error_code error;
    if (std::filesystem::is_regular_file(exact, error)) return exact;
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::filesystem::path& path = entry->path();
        std::error_code notRegular;
        if (path.stem() == file.stem() && HasExtension(path, extension) && entry->is_regular_file(notRegular))
            return path;
    }
    return std::nullopt;
}

std::string FirstLine(const std::filesystem::path& file) {
    const std::vector<std::uint8_t> bytes = ReadWholeFile(file);
    const auto end = std::find_if(bytes.begin(), bytes.end(), [](std::uint8_t b) { return b == '\r' || b == '\n'; });
    return {bytes.begin(), end};
}

int RevisionNumber(const std::filesystem::path& file, std::string_view markHex) {
    const std::string hex = RSComm::MarkHex2HEX(std::string(markHex));
    if (hex.find_first_not_of("0123456789ABCDEFabcdef") != std::string::npos) {
        throw RuntimeError(ErrorNumber::BadFileFormat, QuotedPath(file) + ": \"" +
                                                           Excerpt(Utf8FromWindows1252(hex), NumberDigits) +
                                                           "\" is no revision number (00 to FF).");
    }
    return static_cast<int>(LeadingHexNumber(hex).value_or(0));
}

} // namespace

std::filesystem::path FindUserProgram(const std::filesystem::path& setupFile, const ProgramFolder& folder) {
    if (const auto beside = SideFile(setupFile, ".TRV")) return *beside;
    return folder.File("Program", ShippedProgram);
}

UserProgram ReadUserProgram(const std::filesystem::path& programFile) {
    UserProgram program;
    std::error_code error;
    if (!std::filesystem::is_regular_file(programFile, error)) return program;
    const std::string type = FirstLine(programFile);
    if (!type.empty()) program.boardType = static_cast<unsigned char>(type.front());
    const auto revisionFile = SideFile(programFile, ".REV");
    if (!revisionFile) return program;
    const std::string line = FirstLine(*revisionFile);
    // A line without room for an ident tells nothing.
    if (line.size() <= 2 * NumberDigits) return program;
    const std::string_view numbers = std::string_view(line).substr(line.size() - 2 * NumberDigits);
    program.revIdentOnDisk = Utf8FromWindows1252(line.substr(0, line.size() - 2 * NumberDigits));
    program.revisionNumbers = {RevisionNumber(*revisionFile, numbers.substr(NumberDigits)),
                               RevisionNumber(*revisionFile, numbers.substr(0, NumberDigits))};
    return program;
}

CheckSubject SubjectOfCheck(std::string portName, const std::filesystem::path& setupFile, const ProgramFolder& folder) {
    CheckSubject subject{.portName = std::move(portName)};
    try {
        const UserProgram program = ReadUserProgram(FindUserProgram(setupFile, folder));
        subject.boardType = program.boardType;
        if (program.revIdentOnDisk != UserProgram().revIdentOnDisk) subject.identOnDisk = program.revIdentOnDisk;
    } catch (const RuntimeError&) {
        // Whoever looks at the board's own view is told; the line has nothing to do with it.
        return subject;
    }
    return subject;
}

} // namespace vantrel
