// The record that a new document begins with.
#pragma once

#include "document/Configuration.h"

namespace vantrel {

inline const Configuration& Defaults() {
    static const Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    return record;
}

} // namespace vantrel
