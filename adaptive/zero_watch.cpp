// SPDX-License-Identifier: MIT
// Signs handed on between steps.
#include "adaptive/zero_watch.hpp"

#include <algorithm>

namespace zirk {

std::vector<PolynomialRoot> ZeroWatch::zeros(const std::vector<real>& coefficients, real end) {
    std::vector<PolynomialRoot> found = roots(coefficients, end);
    const int after = signAfterBegin(coefficients, end);
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
