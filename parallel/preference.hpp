// SPDX-License-Identifier: MIT
// Whether work goes faster by several threads or by one, found out by trying both now and then.
#pragma once

#include <algorithm>
#include <cstdint>

namespace zirk {

/// Begins with several. Where other programs use the processors, or these are far from each other, one is faster: then
/// it does the work, and several try again after longer and longer times. What it costs to try is 2 % at most.
class Preference {
public:
    /// How the next piece of work is to be done.
    bool isTogether() {
        if (tries_ == 0 && --untilTrial_ <= 0) beginTrial();
        isTogether_ = prefersTogether_ != (tries_ > 0);
        return isTogether_;
    }

    /// It has taken so many ticks of the processor, by so many threads at most.
    void note(std::uint64_t ticks, unsigned most) {
        (isTogether_ ? together_ : alone_).add(ticks);
        const bool endsTrial = tries_ > 0 && --tries_ == 0;
        if (tries_ > 0 || !together_.isKnown() || !alone_.isKnown()) return;
        // A twentieth is no gain.
        const bool isBetter = together_.median() + together_.median() / 20 < alone_.median();
        if (isBetter == prefersTogether_ && !endsTrial) return;
        const int shortest = 32 * static_cast<int>(most);
        interval_ = isBetter == prefersTogether_ ? std::clamp(2 * interval_, shortest, 16 * shortest) : shortest;
        prefersTogether_ = isBetter;
        untilTrial_ = interval_;
    }

private:
    /// The last three times: one piece of work may be larger, or interrupted.
    class Times {
    public:
        void add(std::uint64_t ticks) {
            last_[count_ % 3] = ticks;
            ++count_;
        }
        bool isKnown() const { return count_ > 0; }
        std::uint64_t median() const {
            if (count_ < 3) return *std::min_element(last_, last_ + count_);
            return std::max(std::min(last_[0], last_[1]), std::min(std::max(last_[0], last_[1]), last_[2]));
        }

    private:
        std::uint64_t last_[3] = {};
        std::uint64_t count_ = 0;
    };

    /// Some milliseconds: of shorter pieces one by one thread costs nothing.
    static constexpr std::uint64_t longWork = 20'000'000;

    void beginTrial() {
        if (prefersTogether_ && !alone_.isKnown() && !isPostponed_ && together_.median() > longWork) {
            isPostponed_ = true;
            untilTrial_ = 60;
            return;
        }
        // One by one thread; several have to warm up.
        tries_ = prefersTogether_ ? 1 : 3;
    }

    Times together_;
    Times alone_;
    bool prefersTogether_ = true;
    bool isTogether_ = true;
    bool isPostponed_ = false;
    int untilTrial_ = 5;
    int interval_ = 0;
    int tries_ = 0;
};

}  // namespace zirk
