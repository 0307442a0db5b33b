// A variable that holds something for as long as a block runs, however it ends. Uses nothing.
#pragma once

#include <utility>

namespace vantrel {

/// Gives `variable` its value back at the end; the variable must outlive it.
template <typename Variable> class SetWhile {
public:
    template <typename Value>
    SetWhile(Variable& variable, Value&& value)
        : variable_(variable), before_(std::exchange(variable, std::forward<Value>(value))) {}
    SetWhile(const SetWhile&) = delete;
    SetWhile& operator=(const SetWhile&) = delete;
    ~SetWhile() { variable_ = std::move(before_); }

private:
    Variable& variable_;
    Variable before_;
};

} // namespace vantrel
