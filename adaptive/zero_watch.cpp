// SPDX-License-Identifier: MIT
// Signs handed on between steps.
#include "adaptive/zero_watch.hpp"

#include <algorithm>
#include <cmath>

namespace zirk {

std::vector<PolynomialRoot> ZeroWatch::zeros(const std::vector<real>& coefficients, real end) {
    std::vector<PolynomialRoot> found = roots(coefficients, end);
    int after = signAfterBegin(coefficients, end);
    // The zero at the end of the step before, seen once more because rounding has put it on this side.
    constexpr real atOnce = 0x1p-40L;
    if (after != sign_ && sign_ != 0 && !found.empty() && std::fabs(found.front().at) <= std::fabs(end) * atOnce &&
        found.front().rising == (sign_ > 0)) {
        found.erase(found.begin());
        after = sign_;
    }
    if (after != 0 && sign_ != 0 && after != sign_) found.insert(found.begin(), {0, after > 0});
    if (after != 0) sign_ = after;
    if (!found.empty()) sign_ = found.back().rising ? 1 : -1;
    const auto unwanted = [this](const PolynomialRoot& root) {
        return which_ != Crossing::Any && root.rising != (which_ == Crossing::Up);
    };
    found.erase(std::remove_if(found.begin(), found.end(), unwanted), found.end());
    return found;
}

}  // namespace zirk
