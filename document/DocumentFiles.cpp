// Errors with the file's name in them, and the looks at a file that keep the forgiving formats from taking nonsense.
#include "document/DocumentFiles.h"

#include "document/SetupFile.h"
#include "document/TextImport.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/AsciiCase.h"
#include "text/PathText.h"
#include "text/SequentialText.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace vantrel {

namespace {

RuntimeError Named(const std::filesystem::path& path, const RuntimeError& error, const std::string& advice) {
    return {static_cast<ErrorNumber>(error.Number()), QuotedPath(path) + ": " + error.Description() + advice};
}

/// Text of any code page: no control characters but those that lay it out, and the classic end mark.
bool LooksLikeText(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view layout("\t\n\f\r\x1A");
    return !bytes.empty() && std::none_of(bytes.begin(), bytes.end(), [&](std::uint8_t byte) {
        return byte < ' ' && layout.find(static_cast<char>(byte)) == std::string_view::npos;
    });
}

bool BeginsWithDigitBehind(char prefix, std::string_view item) {
    return item.size() > 1 && item[0] == prefix && item[1] >= '0' && item[1] <= '9';
}

/// What keeps a text from being one of the older format; empty for none. Reading it would not tell: the format takes
/// anything for an item, and a first sequence for a header.
std::string MissingPart(std::string_view bytes) {
    constexpr std::size_t statusStackItem = 3;
    SequentialText text(bytes);
    if (text.AtEnd()) return "it is empty";
    std::vector<std::string> header;
    while (header.size() <= statusStackItem && !text.AtEnd())
        header.push_back(text.NextItem());
    const bool sequence = header.size() > 1 && BeginsWithDigitBehind('N', header[0]) && header[1].starts_with('D');
    const bool number = header.size() > statusStackItem && header[statusStackItem].find_first_of("0123456789&+-.") == 0;
    return sequence || !number ? "it does not begin with a header whose fourth item is a number" : "";
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

void ReadSetupFileByName(Document& document, const std::filesystem::path& path, const std::string& advice) {
    try {
        document.ReadSetupFile(path);
    } catch (const BadSetupFile& error) {
        throw Named(path, error, LooksLikeText(ReadWholeFile(path)) ? "\n" + advice : "");
    }
}

void ImportTextFileByName(Document& document, const std::filesystem::path& path, const std::string& advice) {
    const std::vector<std::uint8_t> bytes = ReadWholeFile(path);
    if (IsSetupFile(bytes)) {
        throw RuntimeError(ErrorNumber::BadFileFormat, QuotedPath(path) + " is a set-up file already. " + advice);
    }
    RequireTextFormat(path, bytes);
    try {
        document.ImportTextFile(path);
    } catch (const BadImportFile& error) {
        throw Named(path, error, "");
    }
}

} // namespace vantrel
