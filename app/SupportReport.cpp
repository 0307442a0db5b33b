#include "app/SupportReport.h"

#include "document/DocumentFiles.h"
#include "document/OleDate.h"
#include "document/SetupFile.h"
#include "platform/HostName.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/Padding.h"
#include "text/PathText.h"
#include "text/PrintableText.h"

#include <algorithm>
#include <fstream>
#include <string_view>
#include <utility>

namespace vantrel {

namespace {

constexpr const char* ListName = "contents.txt";

std::vector<std::uint8_t> BytesOf(std::string_view text) { return {text.begin(), text.end()}; }

/// "trace.txt", and "trace-2.txt" where that is taken.
std::string Numbered(const std::string& name, int number) {
    const std::size_t dot = name.rfind('.');
    const std::string end = dot == std::string::npos ? "" : name.substr(dot);
    return name.substr(0, name.size() - end.size()) + "-" + std::to_string(number) + end;
}

/// A set-up that has no name yet stands under the dialogs' pattern.
std::string SetupName(const std::filesystem::path& file) {
    const std::string name = Utf8FromPath(file.filename());
    return name.empty() || name.find('*') != std::string::npos || name == "-" ? "set-up.sdt" : name;
}

} // namespace

SupportReport::SupportReport(const Program& state, const SupportSources& sources, std::chrono::local_seconds now)
    : now_(now) {
    AddVersions(sources);
    AddSettings(state);
    if (sources.withSetup) AddSetup(state);
    if (!sources.trace.empty()) AddTrace(sources.trace);
    for (const SupportSources::Text& text : sources.texts)
        AddText(text.name, text.what, text.text);
    for (const std::filesystem::path& file : sources.files)
        AddFile(file, "a file that was named", true);
}

void SupportReport::AddVersions(const SupportSources& sources) {
    std::string text = "Program: " + sources.program + " " + VersionNumber() + "\n";
    if (!sources.toolkit.empty()) text += "Toolkit: " + sources.toolkit + "\n";
    text += "Host: " + HostName() + "\nCompiler: " + CompilerName() + "\n";
    AddText("versions.txt", "versions of program, toolkit and host", text);
}

void SupportReport::AddSettings(const Program& state) {
    AddFile(state.CommSettingsFile(), "settings of the port", false);
    AddFile(state.folder.WritableSupportFile("vantrel.ini"),
            "settings of the windows, with the names of the files used last", false);
}

void SupportReport::AddSetup(const Program& state) {
    const Document& document = state.document;
    std::error_code error;
    // The file itself, with all that the record does not hold: that may be the problem.
    const bool onDisk = std::filesystem::is_regular_file(document.FilePath, error);
    if (onDisk) AddFile(document.FilePath, "the set-up file", true);
    if (!onDisk || document.Changed()) {
        Add(SetupName(document.FilePath), document.Changed() ? "the set-up with its unsaved changes" : "the set-up",
            SetupFileBytes(document.CurrentConfiguration));
    }
}

void SupportReport::AddTrace(const std::filesystem::path& file) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size <= MostOfTrace) {
        AddFile(file, "the last trace of the line", true);
        return;
    }
    std::ifstream in(file, std::ios::binary);
    in.seekg(static_cast<std::streamoff>(size - MostOfTrace));
    std::string end(MostOfTrace, '\0');
    in.read(end.data(), static_cast<std::streamsize>(end.size()));
    end.resize(static_cast<std::size_t>(in.gcount()));
    end.erase(0, end.find('\n') + 1);
    AddText(Utf8FromPath(file.filename()), "the end of the last trace of the line", end);
}

void SupportReport::Add(std::string name, std::string what, std::vector<std::uint8_t> bytes) {
    // What is a letter of a name here may divide folders elsewhere.
    std::ranges::replace_if(
        name, [](char c) { return c == '/' || c == '\\' || c == ':'; }, '_');
    const auto taken = [this](const std::string& wanted) {
        return wanted == ListName || std::ranges::any_of(items_, [&](const Item& item) { return item.name == wanted; });
    };
    const std::string wanted = name;
    for (int number = 2; taken(name); ++number)
        name = Numbered(wanted, number);
    items_.push_back({std::move(name), std::move(what), std::move(bytes)});
}

void SupportReport::AddText(std::string name, std::string what, std::string_view text) {
    Add(std::move(name), std::move(what), BytesOf(text));
}

void SupportReport::AddFile(const std::filesystem::path& file, std::string what, bool named) {
    std::error_code error;
    if (!named && !std::filesystem::exists(file, error)) return;
    try {
        Add(Utf8FromPath(file.filename()), std::move(what), ReadWholeFile(file));
    } catch (const RuntimeError& failure) {
        leftOut_.push_back(QuotedPath(file) + ": " + failure.Description());
    }
}

std::string SupportReport::ListText() const {
    constexpr std::size_t gap = 2;
    std::size_t widest = 0;
    for (const Item& item : items_)
        widest = std::max(widest, item.name.size() + gap);
    std::string text;
    for (const Item& item : items_) {
        text += PadRight(PrintableText(item.name, Layout::Drop), widest) + item.what + " (" +
                SizeText(item.bytes.size()) + ")\n";
    }
    for (const std::string& one : leftOut_)
        text += "Left out: " + one + "\n";
    return text;
}

std::vector<std::uint8_t> SupportReport::Archive() const {
    std::vector<ZipEntry> entries{{ListName, BytesOf(ListText())}};
    for (const Item& item : items_)
        entries.push_back({item.name, item.bytes});
    return ZipBytes(entries, now_);
}

std::string SizeText(std::size_t bytes) {
    constexpr std::size_t group = 3;
    std::string digits = std::to_string(bytes);
    for (std::size_t at = digits.size(); at > group; at -= group)
        digits.insert(at - group, ",");
    return digits + (bytes == 1 ? " byte" : " bytes");
}

} // namespace vantrel
