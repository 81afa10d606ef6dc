// SPDX-License-Identifier: MIT
// What stands behind the public face of a run.
#pragma once

#include "adaptive/adaptive_run.hpp"

namespace zirk {

class Integrator::Content : public AdaptiveRun {
public:
    using AdaptiveRun::AdaptiveRun;
};

}  // namespace zirk
