// SPDX-License-Identifier: MIT
// From what a run asks for to the threads that it gets.
#include "parallel/crew.hpp"

#include <x86intrin.h>

#include <algorithm>

namespace zirk {

namespace {

unsigned mostFor(const ThreadOptions& options) {
    return std::min(options.most > 0 ? options.most : processorsToShare(), mostThreads);
}

}  // namespace

Schedule Crew::cut(const TaskGraph& tasks) const {
    if (options_.always) return Schedule(tasks, mostFor(options_), 0);
    // How many processors there are takes longer to find out than a short run.
    if (tasks.total() < Schedule::leastWork()) return Schedule(tasks, 1, 0);
    return Schedule::best(tasks, mostFor(options_));
}

void Crew::hire(unsigned members) {
    if (members > 1 && (team_ == nullptr || team_->size() < members)) team_ = std::make_unique<Team>(members);
}

void Crew::Turn::begin() {
    const unsigned present = crew_.team_->present();
    const bool isAsked = present > 1 && !crew_.options_.always;
    const bool isTogether = isAsked ? crew_.preference_.isTogether() : present > 1;
    share_.emplace(isTogether ? present : 1, crew_.options_.most == 0);
    crew_.members_ = share_->size();
    // Where other runs have left it alone, it says nothing.
    isCounted_ = isAsked && isTogether == (crew_.members_ > 1);
    begin_ = __rdtsc();
}

void Crew::Turn::end() {
    crew_.members_ = 1;
    if (isCounted_) crew_.preference_.note(__rdtsc() - begin_, crew_.team_->size());
}

}  // namespace zirk
