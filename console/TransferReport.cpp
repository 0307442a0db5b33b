// Names of values and bytes, in sentences.
#include "console/TransferReport.h"

namespace vantrel {

namespace {

/// "B16639", "B255 and B16639", "B1, B2 and B3"
std::string BytesText(const std::vector<std::uint16_t>& bytes) {
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i > 0) text += i + 1 == bytes.size() ? " and " : ", ";
        text += "B" + std::to_string(bytes[i]);
    }
    return text;
}

} // namespace

std::string DifferenceText(const ValueDifference& difference, const std::string& recordSide,
                           const std::string& boardSide) {
    return ValueName(difference.index) + ": " + recordSide + " " + std::to_string(difference.inRecord) + ", " +
           boardSide + " " + std::to_string(difference.onBoard);
}

std::string ReachedBesideText(const std::string& what, bool repeated,
                              const std::vector<std::uint16_t>& mayHaveReached) {
    const std::string reached = "may have set " + BytesText(mayHaveReached) + " to 255 on the board.";
    if (repeated) {
        return "Note: " + what + " had to be sent twice" +
               (mayHaveReached.empty() ? "." : "; the first attempt, cut off, " + reached);
    }
    return mayHaveReached.empty() ? "" : "Note: " + what + ": what was sent for it " + reached;
}

} // namespace vantrel
