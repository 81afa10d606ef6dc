// SPDX-License-Identifier: MIT
// From what a run asks for to the threads that it gets.
#include "parallel/crew.hpp"

#include <algorithm>
#include <utility>

namespace zirk {

namespace {

/// What a step with several threads has to be faster by.
constexpr double leastGain = 1.05;

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

unsigned Crew::wanted() {
    if (!options_.always && retreat_.takesPoint()) return 1;
    return team_->present();
}

void Crew::Turn::begin() {
    share_.emplace(crew_.wanted(), crew_.options_.most == 0);
    crew_.members_ = share_->size();
    if (crew_.members_ == 1) return;
    begin_ = std::chrono::steady_clock::now();
    waitedBefore_ = crew_.team_->waited();
}

void Crew::Turn::end() {
    const unsigned members = std::exchange(crew_.members_, 1U);
    // Had all the others worked as long as the caller, alone it would have taken so many times as long.
    const std::chrono::duration<double> whole = std::chrono::steady_clock::now() - begin_;
    const std::chrono::duration<double> waited = crew_.team_->waited() - waitedBefore_;
    (whole - waited) * members < leastGain * whole ? crew_.retreat_.fail() : crew_.retreat_.succeed();
}

}  // namespace zirk
