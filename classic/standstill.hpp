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

    /// What counts as no motion: 2^-63 of the larger of the time and the end time (where that is finite).
    static real rounding(real acceptedTime, real endTime) {
        const real end = std::isfinite(endTime) ? std::fabs(endTime) : 0;
        return std::max(std::fabs(acceptedTime), end) * 0x1p-63L;
    }

    /// After each pass. True when so many passes in a row have moved the time by no more than rounding.
    bool lasts(real acceptedTime, real endTime) {
        if (std::fabs(acceptedTime - since_) > rounding(acceptedTime, endTime)) {
            since_ = acceptedTime;
            passes_ = 0;
        }
        return ++passes_ >= mostPasses;
    }

    /// The time has never moved.
    bool isFromTheStart() const { return since_ == 0; }

    /// The time may stand still now.
    void forgive() { passes_ = 0; }

private:
    real since_ = 0;
    int passes_ = 0;
};

}  // namespace zirk
