// The operations of the proof, one table: what is done with the link, and what the user is told by it.
#pragma once

#include "tests/proof/ProofWorld.h"

#include <vector>

namespace vantrel::proof {

struct Operation {
    const char* name;
    Task (*run)(World& world);
};

[[nodiscard]] const std::vector<Operation>& LinkOperations();
[[nodiscard]] const std::vector<Operation>& ViewOperations();

} // namespace vantrel::proof
