#include "platform/Folders.h"

#include "text/AsciiCase.h"
#include "text/PathText.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace vantrel {

namespace {

/// The entry of `folder` with that name, an exact match before one that differs in case.
std::filesystem::path EntryIgnoringCase(const std::filesystem::path& folder, const std::string& name) {
    std::error_code error;
    std::filesystem::path exact = folder / PathFromUtf8(name);
    if (std::filesystem::exists(exact, error)) return exact;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (SameIgnoringCase(Utf8FromPath(entry->path().filename()), name)) return entry->path();
    }
    return exact;
}

} // namespace

ProgramFolder::ProgramFolder(std::filesystem::path folder, std::filesystem::path userFolder)
    : folder_(std::move(folder)), userFolder_(std::move(userFolder)) {}

ProgramFolder ProgramFolder::Find(const std::optional<std::filesystem::path>& named) {
    if (named) return ProgramFolder(std::filesystem::absolute(*named));
    const std::filesystem::path variable = FolderFromVariable("VANTREL_FOLDER");
    return ProgramFolder(variable.empty() ? ExecutableFolder() : std::filesystem::absolute(variable));
}

std::filesystem::path ProgramFolder::Entry(const std::string& name) const { return EntryIgnoringCase(folder_, name); }

std::filesystem::path ProgramFolder::File(const std::string& subFolder, const std::string& name) const {
    return EntryIgnoringCase(Entry(subFolder), name);
}

std::filesystem::path ProgramFolder::SupportFile(const std::string& name) const {
    std::error_code error;
    const std::filesystem::path own = WritableSupportFile(name);
    return std::filesystem::exists(own, error) ? own : File("Support", name);
}

std::filesystem::path ProgramFolder::SupportFolder() const {
    std::error_code error;
    const std::filesystem::path support = Entry("Support");
    const bool exists = std::filesystem::exists(support, error);
    return FolderIsWritable(exists ? support : folder_) ? support : EntryIgnoringCase(userFolder_, "Support");
}

std::filesystem::path ProgramFolder::WritableSupportFile(const std::string& name) const {
    return EntryIgnoringCase(SupportFolder(), name);
}

} // namespace vantrel
