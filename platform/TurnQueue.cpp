#include "platform/TurnQueue.h"

#include "platform/RuntimeError.h"

#include <algorithm>

namespace vantrel {

bool TurnQueue::RunOne() {
    if (turns_.empty()) return false;
    Turn* turn = turns_.front();
    turns_.pop_front();
    Task::Resume(turn->waiting_);
    return true;
}

void TurnQueue::RunToEnd(Task& task) {
    task.Start();
    while (!task.Done()) {
        if (!RunOne()) throw RuntimeError(ErrorNumber::InvalidProcedureCall, "A task waits for nothing.");
    }
}

void TurnQueue::Add(Turn& turn) {
    turns_.push_back(&turn);
    TurnAdded();
}

void TurnQueue::Withdraw(const Turn& turn) { std::erase(turns_, &turn); }

} // namespace vantrel
