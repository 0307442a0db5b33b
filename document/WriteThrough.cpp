// The four steps of a write-through.
#include "document/WriteThrough.h"

#include "link/TargetMap.h"

namespace vantrel {

bool WriteThroughResult::Holds(std::int32_t value) const {
    const auto number = onBoard.Number();
    return written.Confirmed() && number && value >= 0 && *number == static_cast<std::uint32_t>(value);
}

TaskOf<WriteThroughResult> WriteThrough(RSComm& link, std::string address, std::int32_t value) {
    RSComm::Line line = co_await link.TakeLine();
    const int opened = link.Opened();
    WriteThroughResult result;
    result.written.outcome = WriteOutcome::LinkFailed;
    if (!link.LinkFailed()) {
        result.begun = true;
        const WriteResult raised = co_await line.RSWrite(WriteThroughFlag, "1");
        result.flagRaised = raised.Confirmed();
    }
    if (!link.LinkFailed()) result.written = co_await line.RSWrite(address, std::to_string(value));
    if (!link.LinkFailed()) {
        const WriteResult lowered = co_await line.RSWrite(WriteThroughFlag, "0");
        result.flagLowered = lowered.Confirmed();
    }
    if (!link.LinkFailed()) result.onBoard = co_await line.Read(address);
    result.mayHaveReached = link.TakeMayHaveReached();
    result.reconnected = link.Opened() != opened;
    co_return result;
}

} // namespace vantrel
