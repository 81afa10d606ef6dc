// SPDX-License-Identifier: MIT
// How many orders run before the sums are looked at.
#pragma once

#include <algorithm>
#include <vector>

namespace zirk {

/// Orders that run at once keep every sum in a register; those that run after the last sum has ended are in vain. The
/// point before tells where that will be.
class Batching {
public:
    /// A new point begins.
    void beginPoint() {
        endsBefore_.swap(ends_);
        ends_.clear();
    }

    /// All sums of some component have ended after so many orders; told in rising order.
    void noteEnd(int orders) { ends_.push_back(orders); }

    /// The last order that runs at once with order k: one less than the next end at the point before took, and k alone
    /// where no end was later.
    int lastWith(int k) const {
        const auto end =
            std::find_if(endsBefore_.begin(), endsBefore_.end(), [k](int orders) { return orders > k + 1; });
        return end == endsBefore_.end() ? k : std::min(*end - 2, k + mostAtOnce - 1);
    }

    /// Orders that run without a look at what else there is to do.
    static constexpr int mostAtOnce = 64;

private:
    std::vector<int> endsBefore_;
    std::vector<int> ends_;
};

}  // namespace zirk
