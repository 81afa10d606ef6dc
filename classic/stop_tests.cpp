// SPDX-License-Identifier: MIT
// The period test.
#include "classic/stop_tests.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>

namespace zirk {

bool Period::found() {
    const real accuracy = limits_.accuracy;
    real rate = 0;
    watched_.rightHandSide()->Value(rate);
    // Around the accuracy and not around zero, on purpose: only turning points met with a rate of 0 or more count.
    if (!(std::fabs(rate - accuracy) <= accuracy)) return false;
    real value = 0;
    watched_.Value(value);
    const auto hit = std::find_if(values_.begin(), values_.end(),
                                  [&](real recorded) { return std::fabs(recorded - value) < accuracy; });
    if (hit == values_.end()) {
        if (static_cast<std::int64_t>(values_.size()) < static_cast<std::int64_t>(capacity_) - 1) {
            values_.push_back(value);
            hits_.push_back(0);
        }
        return false;
    }
    int& count = hits_[static_cast<std::size_t>(hit - values_.begin())];
    count = saturatingSum(count, 1);
    const bool allEqual = std::adjacent_find(hits_.begin(), hits_.end(), std::not_equal_to<>()) == hits_.end();
    return allEqual && hit + 1 == values_.end();
}

}  // namespace zirk
