// Errors with the file's name in them, and the looks at a file that keep the forgiving formats from taking nonsense.
#include "document/DocumentFiles.h"

#include "document/SetupFile.h"
#include "document/TextImport.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/AsciiCase.h"
#include "text/PathText.h"
#include "text/SequentialText.h"
#include "text/Windows1252.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>
#include <system_error>
#include <vector>

namespace vantrel {

namespace {

RuntimeError Named(const std::filesystem::path& path, const RuntimeError& error, const std::string& advice) {
    return {static_cast<ErrorNumber>(error.Number()), QuotedPath(path) + ": " + error.Description() + advice};
}

struct NamedBytes {
    std::filesystem::path path;
    std::vector<std::uint8_t> bytes;
};

NamedBytes Read(const std::filesystem::path& path, std::istream* in) {
    if (in && IsStandardStream(path)) return {StandardInput, ReadWholeStream(*in)};
    return {path, ReadWholeFile(path)};
}

/// Text of any code page: no control characters but those that lay it out, up to the classic end mark.
bool LooksLikeText(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view layout("\t\n\f\r");
    const auto end = std::find(bytes.begin(), bytes.end(), ControlZ);
    return !bytes.empty() && std::none_of(bytes.begin(), end, [&](std::uint8_t byte) {
        return byte < ' ' && layout.find(static_cast<char>(byte)) == std::string_view::npos;
    });
}

bool BeginsWithDigitBehind(char prefix, std::string_view item) {
    return item.size() > 1 && item[0] == prefix && item[1] >= '0' && item[1] <= '9';
}

/// What keeps a text from being one of the older format; empty for nothing. Reading it would not tell: the format takes
/// anything for an item, and a first sequence for a header.
std::string MissingPart(const std::string& bytes) {
    const std::string utf8 = Utf8FromAnyEditor(bytes);
    SequentialText text(utf8);
    if (text.AtEnd()) return "it is empty";
    const std::string first = text.NextItem();
    const bool sequence = BeginsWithDigitBehind('N', first) && text.NextItem().starts_with('D');
    return sequence ? "it begins with a sequence instead of a header" : "";
}

void RequireTextFormat(const std::filesystem::path& path, std::span<const std::uint8_t> bytes) {
    const std::string text(bytes.begin(), bytes.end());
    const std::string problem =
        bytes.empty() || LooksLikeText(bytes) ? MissingPart(text) : "it holds bytes that are no text";
    if (problem.empty()) return;
    throw RuntimeError(ErrorNumber::BadFileFormat,
                       QuotedPath(path) + " is no text file of the older format: " + problem + ".");
}

bool IsSetupFile(std::span<const std::uint8_t> bytes) {
    try {
        return !ParseSetupFile(bytes).Values.empty();
    } catch (const BadSetupFile&) {
        return false;
    }
}

} // namespace

std::string QuotedPath(const std::filesystem::path& path) { return "\"" + Utf8FromPath(path) + "\""; }

bool HasExtension(const std::filesystem::path& file, std::string_view extension) {
    return SameIgnoringCase(Utf8FromPath(file.extension()), extension);
}

bool MeansTextFile(const std::filesystem::path& file) { return HasExtension(file, ".vtl"); }

std::filesystem::path FreeNameBeside(const std::filesystem::path& file, const std::string& addition) {
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
    for (int number = 1;; ++number) {
        const std::string counted = number == 1 ? addition : addition + " " + std::to_string(number);
        std::filesystem::path name = file.parent_path() / file.stem();
        name += PathFromUtf8(counted + ".sdt");
        // A link that leads nowhere is something, too. What cannot be looked at fails when it is written.
        if (!std::filesystem::exists(std::filesystem::symlink_status(name, ignored))) return name;
    }
}

std::filesystem::path NameAbout(const Document& document, const std::string& what) {
    if (document.IsUnnamed) return PathFromUtf8(what);
    std::filesystem::path name = document.FilePath.stem();
    name += PathFromUtf8(" " + what);
    return name;
}

bool IsStandardStream(const std::filesystem::path& name) { return name == "-"; }

void ReadSetupFileByName(Document& document, const std::filesystem::path& named, const std::string& advice,
                         std::istream* in) {
    const auto [path, bytes] = Read(named, in);
    try {
        document.TakeSetupFile(bytes, path);
    } catch (const BadSetupFile& error) {
        throw Named(path, error, LooksLikeText(bytes) ? "\n" + advice : "");
    }
}

void ImportTextFileByName(Document& document, const std::filesystem::path& named, const std::string& advice,
                          std::istream* in) {
    const auto [path, bytes] = Read(named, in);
    if (IsSetupFile(bytes)) {
        throw RuntimeError(ErrorNumber::BadFileFormat, QuotedPath(path) + " is a set-up file already. " + advice);
    }
    if (!HasExtension(path, ".json") && !HasExtension(path, ".csv")) RequireTextFormat(path, bytes);
    try {
        document.TakeTextFile(bytes, path);
    } catch (const RuntimeError& error) {
        throw Named(path, error, "");
    }
}

} // namespace vantrel
