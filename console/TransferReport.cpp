// Names of values and sentences about how far a transfer came.
#include "console/TransferReport.h"

#include "link/TargetAddress.h"

namespace vantrel {

namespace {

std::string FieldName(std::size_t field) { return std::string(FieldTable().at(field).name); }

std::string WholeSequences(std::size_t count) {
    if (count == 0) return "";
    return count == 1 ? ", sequence 0" : ", sequences 0 to " + std::to_string(count - 1);
}

/// `fields`: how many fields of `sequence` arrived, fewer than all.
std::string PartialSequence(std::size_t sequence, std::size_t fields) {
    if (fields == 0) return "";
    return ", and sequence " + std::to_string(sequence) + " up to its " + FieldName(fields - 1);
}

std::string ButFor(std::size_t unconfirmed) {
    if (unconfirmed == 0) return "";
    return ", but for " + std::to_string(unconfirmed) + (unconfirmed == 1 ? " value" : " values") +
           " that the board did not confirm";
}

} // namespace

std::string ReachedText(std::size_t walked, std::size_t unconfirmed) {
    const std::size_t arrived = walked - unconfirmed;
    if (arrived == 0) return "No value reached the board.";
    if (arrived == ValueCount) return "All " + std::to_string(ValueCount) + " values reached the board.";
    const std::size_t whole = walked == ValueCount ? SequenceCount : SequenceOf(walked);
    return "Reached the board: the status stack address" + WholeSequences(whole) +
           (walked == ValueCount ? "" : PartialSequence(whole, FieldOf(walked))) + ButFor(unconfirmed) + ". " +
           std::to_string(ValueCount - arrived) + " of " + std::to_string(ValueCount) + " values did not.";
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
