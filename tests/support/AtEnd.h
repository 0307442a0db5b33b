// Something that a test takes back when its block ends, however it ends.
#pragma once

#include <utility>

namespace vantrel {

template <typename Action> class AtEnd {
public:
    explicit AtEnd(Action action) : action_(std::move(action)) {}
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;
    ~AtEnd() { action_(); }

private:
    Action action_;
};

} // namespace vantrel
