#include "app/KnownBoards.h"

#include "link/TargetMap.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/DelimitedText.h"
#include "text/NumberText.h"
#include "text/PathText.h"
#include "text/PrintableText.h"
#include "text/Windows1252.h"
#include "views/ReadingPass.h"

#include <algorithm>
#include <system_error>

namespace vantrel {

namespace {

constexpr int IdentLength = 8;
constexpr std::size_t LongestIdent = 64; ///< In bytes, as it is remembered.
constexpr int LargestByte = 255;
constexpr char Separator = '\t';
constexpr std::string_view TextBegin = "network address ";
constexpr std::string_view TextMiddle = ", program ident \"";

} // namespace

std::string BoardIdentity::Text() const {
    return std::string(TextBegin) + std::to_string(networkAddress) + std::string(TextMiddle) +
           PrintableText(ident, Layout::Drop) + "\"";
}

std::optional<BoardIdentity> BoardIdentity::FromText(const std::string& text) {
    const std::size_t middle = text.find(TextMiddle);
    if (!text.starts_with(TextBegin) || middle == std::string::npos) return std::nullopt;
    const std::size_t ident = middle + TextMiddle.size();
    const auto address = WholeNumber(text.substr(TextBegin.size(), middle - TextBegin.size()));
    if (!address || *address < 0 || *address > LargestByte || ident >= text.size()) return std::nullopt;
    BoardIdentity board{*address, text.substr(ident, text.size() - ident - 1)};
    return board.Text() == text ? std::optional(board) : std::nullopt;
}

TaskOf<std::optional<BoardIdentity>> ReadBoardIdentity(RSComm& link, TurnQueue& turns, std::function<bool()> wanted) {
    std::vector<std::string> addresses{"B" + std::to_string(NetworkAddressByte)};
    for (int i = 0; i < IdentLength; ++i)
        addresses.push_back("B" + std::to_string(RevisionIdentBase + i));
    std::vector<std::optional<std::uint32_t>> bytes(addresses.size());
    const std::function<void(const JudgedReading&)> take = [&bytes](const JudgedReading& judged) {
        bytes.at(judged.tag) = judged.reading.Number();
    };
    const std::function<bool()> mayRead = [&link, wanted] { return wanted() && !link.LinkFailed(); };
    const bool whole = co_await ReadInTurns(link, turns, std::move(addresses), mayRead, take);
    if (!whole || !std::ranges::all_of(bytes, [](const auto& byte) { return byte.has_value(); }))
        co_return std::nullopt;
    std::string ident;
    for (const auto& byte : bytes)
        ident += static_cast<char>(byte.value_or(0));
    BoardIdentity identity{static_cast<int>(bytes.front().value_or(0)),
                           OnOneLine(Utf8FromWindows1252(ident.substr(1)))};
    co_return identity;
}

std::vector<KnownBoards::Entry> KnownBoards::Read() const {
    std::error_code error;
    if (!std::filesystem::exists(file_, error)) return {};
    std::vector<Entry> entries;
    const std::vector<std::uint8_t> bytes = ReadWholeFile(file_);
    for (const TextRow& row : DelimitedRows(std::string(bytes.begin(), bytes.end()), Separator)) {
        if (row.size() != 3 || row[0].empty() || row[2].size() > LongestIdent) continue;
        const auto address = WholeNumber(row[1]);
        if (address && *address >= 0 && *address <= LargestByte) entries.push_back({row[0], {*address, row[2]}});
    }
    return entries;
}

std::optional<BoardIdentity> KnownBoards::Of(const std::filesystem::path& setup) const {
    try {
        const std::vector<Entry> entries = Read();
        const auto found = std::ranges::find(entries, Utf8FromPath(setup), &Entry::setup);
        return found == entries.end() ? std::nullopt : std::optional(found->board);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

void KnownBoards::Note(const std::filesystem::path& setup, const BoardIdentity& board) const {
    std::vector<Entry> entries = Read();
    const Entry noted{Utf8FromPath(setup), board};
    std::erase_if(entries, [&](const Entry& entry) { return entry.setup == noted.setup; });
    entries.insert(entries.begin(), noted);
    if (entries.size() > Most) entries.resize(Most);
    std::string text;
    for (const Entry& entry : entries)
        text += DelimitedLine({entry.setup, std::to_string(entry.board.networkAddress), entry.board.ident}, Separator);
    std::error_code ignored;
    std::filesystem::create_directories(file_.parent_path(), ignored);
    ReplaceFile(file_, std::vector<std::uint8_t>(text.begin(), text.end()), OldTail::Drop, {});
}

} // namespace vantrel
