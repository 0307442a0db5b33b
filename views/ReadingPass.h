// One pass over addresses of the board, a value a turn, for everybody who shows them. Knows the link and the queue.
#pragma once

#include "link/RSComm.h"
#include "link/Reading.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"

#include <functional>
#include <string>
#include <vector>

namespace vantrel {

/// Reads `addresses` in their order, each in a turn of its own and only while `mayRead`, and gives each judged reading
/// to `take`, tagged with its place in the list. False when that has ended early: nobody wants more, or the port was
/// opened again, and what was read before may be another board's. Everything borrowed must outlive the task.
[[nodiscard]] TaskOf<bool> ReadInTurns(RSComm& link, TurnQueue& turns, std::vector<std::string> addresses,
                                       std::function<bool()> mayRead, std::function<void(const JudgedReading&)> take);

} // namespace vantrel
