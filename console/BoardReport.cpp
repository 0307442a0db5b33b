// The board's state as labels and values.
#include "console/BoardReport.h"

#include "console/PrintableText.h"
#include "console/ResultJson.h"
#include "link/TargetMap.h"

#include <algorithm>
#include <charconv>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

constexpr std::size_t LabelWidth = 33;
constexpr const char* Unread = "-";

std::string Line(std::string label, const std::string& text) {
    label.resize(std::max(label.size() + 1, LabelWidth), ' ');
    const std::string line = label + PrintableText(text, Layout::Drop);
    return line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

std::string RevisionText(const std::string& ident, const std::string& first, const std::string& second) {
    return ident + ", revision numbers " + first + " and " + second;
}

bool IsPossible(std::size_t field, const std::string& value) {
    return value == Unread || SetupEntry(field, value).has_value();
}

/// Two digits say everything of a value that is possible.
std::string Shown(std::size_t field, const std::string& value) {
    return value != Unread && IsPossible(field, value) ? TwoDigits(value) : value;
}

std::string Mark(std::size_t field, const std::string& value) {
    if (IsPossible(field, value)) return "";
    std::string name(SetupFields.at(field).description);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return " (" + (field == NetworkAddressField ? "" : value + " is ") + "not a valid " + name + ")";
}

std::string ModelText(const UserProgram& onDisk) {
    return onDisk.boardType != 0 ? RSComm::TargetboardName(onDisk.boardType)
                                 : "not known, for want of a user program on disk";
}

std::string OnDiskText(const UserProgram& onDisk) {
    const auto& [first, second] = onDisk.revisionNumbers;
    if (onDisk.revIdentOnDisk == Unread) return Unread;
    return RevisionText(onDisk.revIdentOnDisk, std::to_string(first), std::to_string(second));
}

/// Of the hexadecimal text of a code; what is none stays as it is.
std::string DecimalCode(const std::string& code) {
    int number = 0;
    const bool known = std::from_chars(code.data(), code.data() + code.size(), number, 16).ec == std::errc{};
    return known ? std::to_string(number) : Unread;
}

} // namespace

void BoardReport::ShowByte(int byte, const std::string& text) {
    (byte == SerialSetupByte ? serialWord_ : firmware_) = text;
}

void BoardReport::Clear() {
    captions_.fill("");
    descriptions_.fill("");
    setup_.fill(Unread);
    revision_.fill(Unread);
    serialWord_ = firmware_ = Unread;
}

bool BoardReport::Complete() const {
    return std::find(setup_.begin(), setup_.end(), Unread) == setup_.end() && serialWord_ != Unread &&
           firmware_ != Unread;
}

std::string BoardReport::ClockText(std::size_t firstField, const std::string& separator) const {
    std::string text;
    std::string marks;
    for (std::size_t field = firstField; field < firstField + 3; ++field) {
        text += (field > firstField ? separator : "") + Shown(field, setup_.at(field));
        marks += Mark(field, setup_.at(field));
    }
    return text + marks;
}

std::string BoardReport::Text(const UserProgram& onDisk) const {
    constexpr std::size_t firstDateField = FirstClockField + 3;
    std::string text = Line("Board model:", ModelText(onDisk)) + Line("Firmware revision:", firmware_);
    for (std::size_t i = 0; i < BoardCodeCount; ++i) {
        if (!captions_[i].empty()) text += Line(captions_[i], descriptions_[i]);
    }
    text += Line("Advice for the last fault:", descriptions_[IndexOf(BoardCode::Advice)]);
    const std::string& address = setup_[NetworkAddressField];
    text += Line("Network address:", Shown(NetworkAddressField, address) + Mark(NetworkAddressField, address));
    text += Line("Serial set-up word:", serialWord_);
    if (HasBoardClock(onDisk.boardType)) {
        text += Line("Board time:", ClockText(FirstClockField, " : "));
        text += Line("Board date (month, day, year):", ClockText(firstDateField, " - "));
    }
    const std::string diskText = OnDiskText(onDisk);
    return text + Line("User program in the board:", RevisionText(revision_[0], revision_[1], revision_[2])) +
           Line("User program on disk:", diskText == Unread ? "not known" : diskText);
}

std::string BoardReport::Json(const UserProgram& onDisk, const std::array<std::string, BoardCodeCount>& codes) const {
    constexpr std::array names{std::pair{BoardCode::CurrentFault, "currentFault"},
                               std::pair{BoardCode::LastFault, "lastFault"},
                               std::pair{BoardCode::CurrentCommError, "currentCommError"},
                               std::pair{BoardCode::LastCommError, "lastCommError"}};
    constexpr std::array fields{"networkAddress", "serialSetup", "clock.hour", "clock.minute",
                                "clock.second",   "clock.month", "clock.day",  "clock.year"};
    std::vector<std::pair<std::string, std::string>> members{
        {"model", onDisk.boardType != 0 ? ModelText(onDisk) : Unread}, {"firmwareRevision", firmware_}};
    for (const auto& [code, name] : names) {
        members.emplace_back(std::string(name) + ".code", DecimalCode(codes.at(IndexOf(code))));
        members.emplace_back(std::string(name) + ".description", descriptions_.at(IndexOf(code)));
    }
    if (HasCoCpu(onDisk.boardType))
        members.emplace_back("coCpuSlot", DecimalCode(codes.at(IndexOf(BoardCode::CoCpuSlot))));
    members.emplace_back("advice", descriptions_.at(IndexOf(BoardCode::Advice)));
    for (std::size_t field = 0; field < fields.size(); ++field) {
        const bool shown = field < FirstClockField || HasBoardClock(onDisk.boardType);
        if (shown) members.emplace_back(fields.at(field), field == SerialSetupField ? serialWord_ : setup_.at(field));
    }
    members.emplace_back("programInBoard", RevisionText(revision_[0], revision_[1], revision_[2]));
    members.emplace_back("programOnDisk", OnDiskText(onDisk));
    return ObjectJson(members);
}

} // namespace vantrel
