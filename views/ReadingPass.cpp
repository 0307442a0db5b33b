#include "views/ReadingPass.h"

#include "link/ReadingWalk.h"

#include <optional>

namespace vantrel {

TaskOf<bool> ReadInTurns(RSComm& link, TurnQueue& turns, std::vector<std::string> addresses,
                         std::function<bool()> mayRead, std::function<void(const JudgedReading&)> take) {
    ReadingWalk walk(link);
    for (std::size_t i = 0; i <= addresses.size(); ++i) {
        std::optional<JudgedReading> judged;
        if (i < addresses.size()) {
            co_await turns.Next();
            if (!mayRead() || walk.Reconnected()) co_return false;
            judged = co_await walk.Read(addresses[i], i);
        } else {
            judged = co_await walk.End();
        }
        // The warning of a failed link is a box of its own: whoever wanted this may be gone by then.
        if (!mayRead() || walk.Reconnected()) co_return false;
        if (judged) take(*judged);
    }
    co_return true;
}

} // namespace vantrel
