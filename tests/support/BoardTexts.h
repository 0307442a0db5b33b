// Boards by the words in which a user describes them.
#pragma once

#include "simulator/BoardHabits.h"

#include <sstream>
#include <string>

namespace vantrel {

/// "half-sent=40ms idle=echo"; nothing: as simulated.
inline BoardHabits HabitsOf(const std::string& texts) {
    BoardHabits habits;
    std::istringstream words(texts);
    for (std::string word; words >> word;)
        habits = WithHabit(habits, word).value();
    return habits;
}

} // namespace vantrel
