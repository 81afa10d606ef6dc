// SPDX-License-Identifier: MIT
// Formulas to be read, with the variables that they need.
#pragma once

#include <cstdint>
#include <vector>

#include "adaptive/evaluation.hpp"
#include "zirk/integrator.hpp"

namespace zirk {

struct Readout::Content {
    Evaluation evaluation;
    /// Each once.
    std::vector<std::uint32_t> variables;
};

}  // namespace zirk
