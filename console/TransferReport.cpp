// Names of values and bytes, in sentences.
#include "console/TransferReport.h"

#include "link/TargetAddress.h"

namespace vantrel {

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
