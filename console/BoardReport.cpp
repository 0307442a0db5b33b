// The board's state as labels and values.
#include "console/BoardReport.h"

#include "console/ResultJson.h"
#include "console/TextTable.h"
#include "link/Reading.h"
#include "link/TargetMap.h"
#include "text/AsciiCase.h"
#include "text/NumberText.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

std::string RevisionText(const std::string& ident, const std::string& first, const std::string& second) {
    return ident + ", revision numbers " + first + " and " + second;
}

bool IsPossible(std::size_t field, const std::string& value) {
    return value == UnreadText || SetupEntry(field, value).has_value();
}

/// Two digits say everything of a value that is possible.
std::string Shown(std::size_t field, const std::string& value) {
    return value != UnreadText && IsPossible(field, value) ? TwoDigits(value) : value;
}

std::string Mark(std::size_t field, const std::string& value) {
    if (IsPossible(field, value)) return "";
    const std::string name = InLowerCase(std::string(SetupFields.at(field).description));
    return " (" + (field == NetworkAddressField ? "" : value + " is ") + "not a valid " + name + ")";
}

std::string ModelText(const UserProgram& onDisk) {
    return onDisk.boardType != 0 ? RSComm::TargetboardName(onDisk.boardType)
                                 : "not known, for want of a user program on disk";
}

std::string OnDiskText(const UserProgram& onDisk) {
    const auto& [first, second] = onDisk.revisionNumbers;
    if (onDisk.revIdentOnDisk == UnreadText) return UnreadText;
    return RevisionText(onDisk.revIdentOnDisk, std::to_string(first), std::to_string(second));
}

/// Of the hexadecimal text of a code; what is none stays as it is.
std::string DecimalCode(const std::string& code) {
    const auto number = LeadingHexNumber(code);
    return number ? std::to_string(*number) : UnreadText;
}

} // namespace

void BoardReport::ShowByte(int byte, const std::string& text) {
    (byte == SerialSetupByte ? serialWord_ : firmware_) = text;
}

void BoardReport::Clear() {
    captions_.fill("");
    descriptions_.fill("");
    setup_.fill(UnreadText);
    clockOff_.Forget();
    setupRead_ = false;
    revision_.fill(UnreadText);
    serialWord_ = firmware_ = UnreadText;
}

bool BoardReport::Complete() const {
    return std::find(setup_.begin(), setup_.end(), UnreadText) == setup_.end() && serialWord_ != UnreadText &&
           firmware_ != UnreadText;
}

std::string BoardReport::FieldsText(std::size_t first, std::size_t count, const std::string& separator) const {
    std::string text;
    std::string marks;
    for (std::size_t field = first; field < first + count; ++field) {
        text += (field > first ? separator : "") + Shown(field, setup_.at(field));
        marks += Mark(field, setup_.at(field));
    }
    return text + marks;
}

void BoardReport::AddClock(std::vector<Entry>& entries) const {
    constexpr std::array members{"clock.hour",  "clock.minute", "clock.second",
                                 "clock.month", "clock.day",    "clock.year"};
    entries.push_back({"Board time:", FieldsText(FirstClockField, 3, " : ")});
    entries.push_back({"Board date (month, day, year):", FieldsText(FirstClockField + 3, 3, " - ")});
    for (std::size_t i = 0; i < members.size(); ++i)
        entries.push_back({"", setup_.at(FirstClockField + i), members.at(i)});
    const bool known = clockOff_.What() == ClockComparison::State::Known;
    const auto seconds = [known](std::chrono::seconds time) {
        return known ? std::to_string(time.count()) : UnreadText;
    };
    entries.push_back({"Board clock:", clockOff_.Text()});
    entries.push_back({"", seconds(clockOff_.Ahead()), "clock.secondsAhead"});
    entries.push_back({"", seconds(clockOff_.Within()), "clock.toWithinSeconds"});
}

std::vector<BoardReport::Entry> BoardReport::Entries(const UserProgram& onDisk,
                                                     const std::array<std::string, BoardCodeCount>& codes) const {
    constexpr std::array names{std::pair{BoardCode::CurrentFault, "currentFault"},
                               std::pair{BoardCode::LastFault, "lastFault"},
                               std::pair{BoardCode::CurrentCommError, "currentCommError"},
                               std::pair{BoardCode::LastCommError, "lastCommError"}};
    const bool modelKnown = onDisk.boardType != 0;
    std::vector<Entry> entries{
        {"Board model:", ModelText(onDisk), "model", modelKnown ? ModelText(onDisk) : UnreadText},
        {"Firmware revision:", firmware_, "firmwareRevision"}};
    for (const auto& [code, name] : names) {
        const std::size_t at = IndexOf(code);
        entries.push_back({"", DecimalCode(codes.at(at)), std::string(name) + ".code"});
        entries.push_back({captions_.at(at), descriptions_.at(at), std::string(name) + ".description"});
    }
    if (HasCoCpu(onDisk.boardType)) {
        const std::size_t slot = IndexOf(BoardCode::CoCpuSlot);
        entries.push_back({captions_.at(slot), "", "coCpuSlot", DecimalCode(codes.at(slot))});
    }
    entries.push_back({"Advice for the last fault:", descriptions_[IndexOf(BoardCode::Advice)], "advice"});
    entries.push_back(
        {"Network address:", FieldsText(NetworkAddressField, 1, ""), "networkAddress", setup_[NetworkAddressField]});
    entries.push_back({"Serial set-up word:", serialWord_, "serialSetup"});
    if (HasBoardClock(onDisk.boardType)) AddClock(entries);
    entries.push_back(
        {"User program in the board:", RevisionText(revision_[0], revision_[1], revision_[2]), "programInBoard"});
    const std::string disk = OnDiskText(onDisk);
    entries.push_back({"User program on disk:", disk == UnreadText ? "not known" : disk, "programOnDisk", disk});
    return entries;
}

std::string BoardReport::Text(const UserProgram& onDisk, const std::array<std::string, BoardCodeCount>& codes,
                              bool json) const {
    Json result;
    std::vector<Row> rows;
    for (const Entry& entry : Entries(onDisk, codes)) {
        if (!entry.label.empty()) rows.push_back({entry.label, entry.text});
        if (entry.member.empty()) continue;
        const std::size_t point = entry.member.find('.');
        Json& object = point == std::string::npos ? result : result[entry.member.substr(0, point)];
        object[entry.member.substr(point + 1)] = ValueJson(entry.value.empty() ? entry.text : entry.value);
    }
    return json ? JsonText(result) : TableText(rows, "ll");
}

} // namespace vantrel
