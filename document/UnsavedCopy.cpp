// A copy is a set-up file, which the program could open, too. Behind the record stand the time and the document's path.
#include "document/UnsavedCopy.h"

#include "document/SetupFile.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/NumberText.h"
#include "text/PathText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <random>
#include <string_view>
#include <system_error>
#include <utility>

namespace vantrel {

namespace {

namespace fs = std::filesystem;

constexpr MonotonicTime LookEvery = std::chrono::minutes(1);
constexpr std::string_view UnsavedMark = "\nVANTREL unsaved\n";
constexpr std::string_view Extension = ".sdt";

std::string DaysText(OleDate date) {
    std::array<char, 40> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), date.days).ptr};
}

fs::path ClaimOf(fs::path file) { return file.replace_extension(".lock"); }

void Remove(const fs::path& file) {
    std::error_code ignored;
    fs::remove(file, ignored);
}

/// Nothing for what is no copy, and for the copy of a program that still runs.
std::optional<LeftBehind> TakeLeft(const fs::path& file) {
    auto claim = FileClaim::Take(ClaimOf(file));
    if (!claim) return std::nullopt;
    try {
        const std::vector<std::uint8_t> bytes = ReadWholeFile(file);
        const std::string text(bytes.begin(), bytes.end());
        const std::size_t mark = text.rfind(UnsavedMark);
        if (mark == std::string::npos) return std::nullopt;
        const std::string behind = text.substr(mark + UnsavedMark.size());
        const std::size_t line = behind.find('\n');
        if (line == std::string::npos) return std::nullopt;
        return LeftBehind{file,
                          PathFromUtf8(behind.substr(line + 1)),
                          {LeadingNumber(behind.substr(0, line))},
                          ParseSetupFile(bytes),
                          std::move(*claim)};
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

} // namespace

void LeftBehind::Delete() const { Remove(file); }

UnsavedCopy::UnsavedCopy(fs::path folder, const Document& document, const Clock& clock)
    : folder_(std::move(folder)), document_(document), clock_(clock), nextLook_(clock.Now() + LookEvery) {}

std::optional<std::string> UnsavedCopy::Tick() {
    if (!file_.empty() && (!document_.Edited() || generation_ != document_.Generation)) Discard();
    if (clock_.Now() < nextLook_) return std::nullopt;
    nextLook_ = clock_.Now() + LookEvery;
    try {
        if (document_.Edited()) Keep();
        told_ = false;
    } catch (const RuntimeError& error) {
        if (!std::exchange(told_, true))
            return "Unsaved edits are not kept against a power failure. " + error.Description();
    }
    return std::nullopt;
}

void UnsavedCopy::Keep() {
    const std::vector<std::uint8_t> record = SetupFileBytes(document_.CurrentConfiguration);
    if (!file_.empty() && record == kept_) return;
    std::vector<std::uint8_t> bytes = record;
    const std::string path = document_.IsUnnamed ? "" : Utf8FromPath(document_.FilePath);
    const std::string behind = std::string(UnsavedMark) + DaysText(OleDate::FromLocal(clock_.LocalNow())) + "\n" + path;
    bytes.insert(bytes.end(), behind.begin(), behind.end());
    Write(bytes);
    kept_ = record;
    generation_ = document_.Generation;
}

void UnsavedCopy::Write(const std::vector<std::uint8_t>& bytes) {
    fs::path file = file_;
    if (file.empty()) {
        std::error_code ignored;
        fs::create_directories(folder_, ignored);
        std::random_device random;
        file = folder_ / (HexText(random(), 8) + HexText(random(), 8) + std::string(Extension));
        // Before there is anything that another program could take for abandoned.
        claim_ = FileClaim::Take(ClaimOf(file));
    }
    ReplaceFile(file, bytes, OldTail::Drop, {});
    file_ = file;
}

void UnsavedCopy::Discard() {
    if (!file_.empty()) Remove(std::exchange(file_, {}));
    claim_.reset();
    kept_.clear();
    // The folder, too, unless others keep something in it.
    Remove(folder_);
}

std::vector<LeftBehind> UnsavedCopy::Find() const {
    std::vector<LeftBehind> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->path().extension() != Extension) continue;
        if (auto left = TakeLeft(entry->path())) found.push_back(std::move(*left));
    }
    std::ranges::sort(found, std::ranges::greater(), [](const LeftBehind& left) { return left.when.days; });
    return found;
}

void UnsavedCopy::Adopt(LeftBehind left) {
    Discard();
    file_ = std::move(left.file);
    claim_ = std::move(left.claim);
    generation_ = document_.Generation;
}

} // namespace vantrel
