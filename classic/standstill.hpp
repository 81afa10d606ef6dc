// SPDX-License-Identifier: MIT
// Notices a run whose time has practically stopped.
#pragma once

#include <algorithm>
#include <cmath>

#include "expr/real.hpp"

namespace zirk {

/// Counts passes, accepted or not, since the accepted time last moved by more than rounding.
class Standstill {
public:
    static constexpr int mostPasses = 100000;

    /// After each pass. True when so many passes in a row have moved the time by no more than 2^-63 of the larger of
    /// itself and the end time (where that is finite).
    bool lasts(real acceptedTime, real endTime) {
        const real size =
            std::isfinite(endTime) ? std::max(std::fabs(acceptedTime), std::fabs(endTime)) : std::fabs(acceptedTime);
        if (std::fabs(acceptedTime - since_) > std::ldexp(size, -63)) {
            since_ = acceptedTime;
            passes_ = 0;
        }
        return ++passes_ >= mostPasses;
    }

    /// The time may stand still now.
    void forgive() { passes_ = 0; }

private:
    real since_ = 0;
    int passes_ = 0;
};

}  // namespace zirk
