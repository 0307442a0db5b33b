// Sequences that are whole, the one that is not, and what came through only in part.
#include "document/TransferTexts.h"

#include "document/FieldTable.h"
#include "link/TargetAddress.h"

namespace vantrel {

namespace {

/// "its SendToNode", or "To Node" in quotes.
std::string FieldName(std::size_t field, FieldNaming naming) {
    const FieldDescription& described = FieldTable().at(field);
    return naming == FieldNaming::Name ? "its " + std::string(described.name)
                                       : "\"" + std::string(described.heading) + "\"";
}

std::string WholeSequences(std::size_t count) {
    if (count == 0) return "";
    return count == 1 ? ", sequence 0" : ", sequences 0 to " + std::to_string(count - 1);
}

/// `fields`: how many fields of `sequence` arrived, fewer than all.
std::string PartialSequence(std::size_t sequence, std::size_t fields, FieldNaming naming) {
    if (fields == 0) return "";
    return ", and sequence " + std::to_string(sequence) + " up to " + FieldName(fields - 1, naming);
}

/// The first `walked` values, one at least.
std::string Walked(std::size_t walked, FieldNaming naming) {
    const bool all = walked == ValueCount;
    const std::size_t whole = all ? SequenceCount : SequenceOf(walked);
    return "the status stack address" + WholeSequences(whole) +
           (all ? "" : PartialSequence(whole, FieldOf(walked), naming));
}

std::string ButFor(std::size_t count, const std::string& what) {
    if (count == 0) return "";
    return ", but for " + std::to_string(count) + (count == 1 ? " value " : " values ") + what;
}

std::string OfAll(std::size_t count) { return std::to_string(count) + " of " + std::to_string(ValueCount); }

} // namespace

std::string ReachedText(std::size_t walked, std::size_t unconfirmed, FieldNaming naming) {
    const std::size_t arrived = walked - unconfirmed;
    if (arrived == 0) return "No value reached the board.";
    if (arrived == ValueCount) return "All " + std::to_string(ValueCount) + " values reached the board.";
    return "Reached the board: " + Walked(walked, naming) + ButFor(unconfirmed, "that the board did not confirm") +
           ". " + OfAll(ValueCount - arrived) + " values did not.";
}

std::string FetchedText(std::size_t walked, std::size_t unconfirmed, FieldNaming naming) {
    if (walked == 0) return "No value was read from the board. The set-up is as it was.";
    if (walked == ValueCount && unconfirmed == 0) return "All values were read from the board.";
    return "Read from the board: " + Walked(walked, naming) + ButFor(unconfirmed, "that were not read reliably") +
           (walked == ValueCount ? "." : ". " + OfAll(ValueCount - walked) + " values are as they were.");
}

std::string DifferenceText(const ValueDifference& difference, const std::string& recordSide,
                           const std::string& boardSide) {
    return ValueName(difference.index) + ": " + recordSide + " " + std::to_string(difference.inRecord) + ", " +
           boardSide + " " + std::to_string(difference.onBoard);
}

std::string ReachedBesideText(const std::string& what, bool repeated,
                              const std::vector<std::uint16_t>& mayHaveReached) {
    const std::string reached = "may have set " + ByteList(mayHaveReached) + " to 255 on the board.";
    if (repeated) {
        return "Note: " + what + " had to be sent twice" +
               (mayHaveReached.empty() ? "." : "; the first attempt, cut off, " + reached);
    }
    return mayHaveReached.empty() ? "" : "Note: " + what + ": what was sent for it " + reached;
}

} // namespace vantrel
