// The error of a command line that asks for something that cannot be. Toolkit-free; every room may throw it.
#pragma once

#include "platform/RuntimeError.h"

#include <string>

namespace vantrel {

/// What cannot be, and how to mend it. Apart from other errors only in that nothing has been tried yet.
class UsageError : public RuntimeError {
public:
    explicit UsageError(const std::string& description)
        : RuntimeError(ErrorNumber::InvalidProcedureCall, description) {}
};

} // namespace vantrel
