#include "document/StatusTexts.h"

#include "link/StatusAdvice.h"
#include "link/StatusText.h"
#include "text/NumberText.h"
#include "text/TimeText.h"

namespace vantrel {

namespace {

constexpr int DescriptionWidth = 2400;
constexpr int ErrorsWidth = 900;

std::string CodeText(std::uint16_t code) { return StatusDisplay(std::to_string(code)); }

std::string SinceText(const SequenceRecord& record, std::chrono::local_seconds now) {
    if (!record.since) return {};
    return (record.changeSeen ? "" : "before ") + MomentText(*record.since, now);
}

std::string ErrorText(const SequenceRecord::Error& error, std::chrono::local_seconds now) {
    return MomentText(error.at, now) + "  " + CodeText(error.code);
}

/// "390 times 02, 22 times 05"
std::string Looks(const SequenceRecord& record) {
    std::string text;
    for (std::size_t place = 0; place < record.looksByCode.size(); ++place) {
        const std::size_t count = record.looksByCode.at(place);
        if (count == 0) continue;
        const bool others = place == SequenceRecord::CodePlaces - 1;
        text += (text.empty() ? "" : ", ") + std::to_string(count) + (count == 1 ? " time " : " times ") +
                (others ? "a code above 12" : HexText(static_cast<std::uint32_t>(place), 2));
    }
    return text;
}

} // namespace

std::string StatusColumnsFormat() { return "|<Description|^Errors|<Last Error|<Since"; }

std::vector<int> StatusColumnsWidths() { return {DescriptionWidth, ErrorsWidth, 0, 0}; }

std::vector<std::string> StatusColumnsWidestTexts() {
    return {"", "100000", "09:05:07  04: Xmitt Timeout, No Response ", "before 09:05:07"};
}

std::vector<std::string> StatusColumnsTexts(const SequenceRecord& record, const std::string& description,
                                            std::chrono::local_seconds now) {
    const bool looked = record.lastLook.has_value();
    return {description, looked ? std::to_string(record.errors) : "",
            record.lastError ? ErrorText(*record.lastError, now) : "", SinceText(record, now)};
}

std::string StatusHint(const SequenceRecord& record, std::size_t sequence, std::chrono::local_seconds now) {
    std::string text = "Sequence " + std::to_string(sequence);
    if (record.node) text += ", node " + std::to_string(*record.node);
    if (!record.lastLook) return text + "\nNot read yet.";
    if (record.code) {
        text += "\n" + CodeText(*record.code) + "\n" + AdviceText(*record.code);
        if (record.health == SequenceHealth::Disabled && *record.code != DisabledCode)
            text += "\nIts node number is 0, so it counts as disabled.";
    } else {
        text += "\nNot read clearly, or not at all since.";
    }
    text += "\n";
    if (record.since) text += "\nThis state: since " + SinceText(record, now) + ", as far as it was looked at.";
    if (record.lastError) text += "\nLast error: " + ErrorText(*record.lastError, now);
    if (record.lastOk) text += "\nLast OK: " + MomentText(*record.lastOk, now);
    text += "\nLast look: " + MomentText(*record.lastLook, now);
    if (const std::string looks = Looks(record); !looks.empty()) text += "\nRead since ONLINE: " + looks;
    return text;
}

std::string FailingLine(const StatusLog& log) {
    std::string list;
    std::size_t count = 0;
    for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence) {
        if (log.Of(sequence).health != SequenceHealth::Failing) continue;
        list += (list.empty() ? "" : ", ") + std::to_string(sequence);
        ++count;
    }
    if (count == 0) return {};
    return (count == 1 ? "1 sequence was" : std::to_string(count) + " sequences were") +
           " failing when last read: " + list + ".";
}

} // namespace vantrel
