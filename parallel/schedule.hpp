// SPDX-License-Identifier: MIT
// Work that consists of tasks that need each other, cut into parts for several threads.
#pragma once

#include <cstdint>
#include <vector>

namespace zirk {

/// Tasks in an order in which each comes behind those whose results it needs.
class TaskGraph {
public:
    using Index = std::uint32_t;

    /// Adds the next task, which takes `nanoseconds` and needs nobody so far; returns its number.
    Index add(double nanoseconds);

    /// The task that was added last needs an earlier one.
    void need(Index earlier) { needs_.push_back(earlier); }

    Index size() const { return static_cast<Index>(cost_.size()); }
    double cost(Index task) const { return cost_[task]; }
    double total() const { return total_; }
    const Index* needsBegin(Index task) const { return needs_.data() + first_[task]; }
    const Index* needsEnd(Index task) const {
        return needs_.data() + (task + 1 < size() ? first_[task + 1] : needs_.size());
    }

private:
    std::vector<double> cost_;
    std::vector<std::size_t> first_;
    std::vector<Index> needs_;
    double total_ = 0;
};

/// Who does which task, and after how many waits.
///
/// The work runs in stages: within one, each part does its own tasks in their order, and between two, all wait for each
/// other. So a task may need tasks of earlier stages, and of its own stage those of its own part.
struct Schedule {
    /// Cut for exactly so many parts. `wait`: what it costs to wait for each other, in nanoseconds.
    Schedule(const TaskGraph& tasks, unsigned parts, double wait);

    /// Cut for the number of parts, at most `most`, that is expected to take the least time; one part where several
    /// gain too little.
    static Schedule best(const TaskGraph& tasks, unsigned most);

    /// Below this, in nanoseconds, nothing is gained by any number of parts.
    static double leastWork();

    unsigned parts;
    unsigned stages = 1;
    /// Expected time of one run, in nanoseconds.
    double time;
    /// Per task.
    std::vector<std::uint16_t> part;
    std::vector<std::uint32_t> stage;
};

/// What it costs `threads` threads to wait for each other when all come at the same time, in nanoseconds; measured with
/// two, in proportion to their number beyond.
double waitOf(unsigned threads);

}  // namespace zirk
