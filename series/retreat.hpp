// SPDX-License-Identifier: MIT
// How long to leave alone what has just failed.
#pragma once

#include <algorithm>

namespace zirk {

/// After a failure the next point does without, after the second in a row the next two, then four, up to 64: a
/// run that stays where the fast way fails loses next to nothing by trying.
class Retreat {
public:
    /// Whether this point does without; asked once at each.
    bool takesPoint() {
        if (left_ == 0) return false;
        --left_;
        return true;
    }

    void fail() {
        left_ = next_;
        next_ = std::min(2 * next_, longest);
    }
    void succeed() { next_ = 1; }

private:
    static constexpr int longest = 64;

    int left_ = 0;
    int next_ = 1;
};

}  // namespace zirk
