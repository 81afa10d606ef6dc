// SPDX-License-Identifier: MIT
// Clusters of tasks that only one other needs, dealt out level by level.
#include "parallel/schedule.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace zirk {

namespace {

using Index = TaskGraph::Index;

constexpr Index none = 0xffffffff;

/// Two threads on one chip take 110 to 350 to see each other. Parts are never quite equal, and on a machine that others
/// use as well the first steps would cost a short run more than it could gain.
constexpr double waitOfTwo = 1500;

/// Cutting has to gain at least this: the rest of a step gains less, and a machine is seldom all ours.
constexpr double leastGain = 1.25;

/// Tasks that are done together: one, and those that nobody else needs.
class Clusters {
public:
    Clusters(const TaskGraph& tasks, unsigned parts) : tasks_(tasks), of_(tasks.size(), none) {
        findRoots(tasks.total() / (8 * parts));
        findLevels();
    }

    Index operator[](Index task) const { return of_[task]; }
    Index size() const { return static_cast<Index>(cost_.size()); }
    double cost(Index cluster) const { return cost_[cluster]; }
    Index level(Index cluster) const { return level_[cluster]; }
    Index levels() const { return levels_; }

private:
    /// A task that only one other needs belongs to that one's cluster, unless what hangs on it is work for a cluster of
    /// its own.
    void findRoots(double most) {
        std::vector<Index> user(tasks_.size(), none);
        std::vector<char> isShared(tasks_.size(), 0);
        std::vector<double> below(tasks_.size());
        for (Index task = 0; task < tasks_.size(); ++task) {
            for (const Index* need = tasks_.needsBegin(task); need != tasks_.needsEnd(task); ++need) {
                isShared[*need] |= user[*need] != none && user[*need] != task;
                user[*need] = task;
            }
        }
        for (Index task = 0; task < tasks_.size(); ++task) {
            below[task] += tasks_.cost(task);
            if (user[task] == none || isShared[task] != 0) continue;
            if (below[task] > most) {
                isShared[task] = 1;
            } else {
                below[user[task]] += below[task];
            }
        }
        // Clusters get the order of their last tasks, which is one in which each comes behind what it needs.
        for (Index task = 0; task < tasks_.size(); ++task) {
            if (user[task] != none && isShared[task] == 0) continue;
            of_[task] = size();
            cost_.push_back(0);
        }
        for (Index task = tasks_.size(); task-- > 0;) {
            if (of_[task] == none) of_[task] = of_[user[task]];
            cost_[of_[task]] += tasks_.cost(task);
        }
    }

    void findLevels() {
        level_.assign(size(), 0);
        for (Index task = 0; task < tasks_.size(); ++task) {
            Index& level = level_[of_[task]];
            for (const Index* need = tasks_.needsBegin(task); need != tasks_.needsEnd(task); ++need) {
                if (of_[*need] != of_[task]) level = std::max(level, level_[of_[*need]] + 1);
            }
            levels_ = std::max(levels_, level + 1);
        }
    }

    const TaskGraph& tasks_;
    std::vector<Index> of_;
    std::vector<double> cost_;
    std::vector<Index> level_;
    Index levels_ = 0;
};

/// Deals out the clusters of each level in equal shares of its work; neighbours stay together.
std::vector<std::uint16_t> dealOut(const Clusters& clusters, unsigned parts) {
    std::vector<double> work(clusters.levels(), 0);
    for (Index c = 0; c < clusters.size(); ++c) work[clusters.level(c)] += clusters.cost(c);
    std::vector<double> dealt(clusters.levels(), 0);
    std::vector<std::uint16_t> part(clusters.size());
    for (Index c = 0; c < clusters.size(); ++c) {
        const Index level = clusters.level(c);
        const double middle = dealt[level] + clusters.cost(c) / 2;
        dealt[level] += clusters.cost(c);
        const double place = work[level] > 0 ? middle / work[level] * parts : 0;
        part[c] = static_cast<std::uint16_t>(std::min(static_cast<unsigned>(place), parts - 1));
    }
    return part;
}

/// The stages that follow when a cluster waits only for what another part does.
std::vector<Index> leastStages(const TaskGraph& tasks, const Clusters& clusters,
                               const std::vector<std::uint16_t>& part) {
    std::vector<Index> stage(clusters.size(), 0);
    for (Index task = 0; task < tasks.size(); ++task) {
        const Index mine = clusters[task];
        for (const Index* need = tasks.needsBegin(task); need != tasks.needsEnd(task); ++need) {
            const Index other = clusters[*need];
            if (other == mine) continue;
            stage[mine] = std::max(stage[mine], stage[other] + (part[other] == part[mine] ? 0 : 1));
        }
    }
    return stage;
}

/// In each stage the part that has most to do counts.
double timeOf(const Clusters& clusters, const std::vector<std::uint16_t>& part, const std::vector<Index>& stage,
              unsigned parts, double wait) {
    const Index stages = clusters.size() == 0 ? 1 : *std::max_element(stage.begin(), stage.end()) + 1;
    std::vector<double> load(static_cast<std::size_t>(stages) * parts, 0);
    for (Index c = 0; c < clusters.size(); ++c) {
        load[static_cast<std::size_t>(stage[c]) * parts + part[c]] += clusters.cost(c);
    }
    double time = 0;
    for (auto begin = load.begin(); begin != load.end(); begin += parts) {
        time += *std::max_element(begin, begin + parts) + wait;
    }
    return time;
}

}  // namespace

Index TaskGraph::add(double nanoseconds) {
    cost_.push_back(nanoseconds);
    first_.push_back(needs_.size());
    total_ += nanoseconds;
    return size() - 1;
}

double waitOf(unsigned threads) { return threads < 2 ? 0 : waitOfTwo / 2 * threads; }

Schedule::Schedule(const TaskGraph& tasks, unsigned partCount, double wait)
    : parts(partCount), time(tasks.total()), part(tasks.size(), 0), stage(tasks.size(), 0) {
    if (parts < 2 || tasks.size() == 0) return;
    const Clusters clusters(tasks, parts);
    const std::vector<std::uint16_t> partOf = dealOut(clusters, parts);
    std::vector<Index> stageOf(clusters.size());
    for (Index c = 0; c < clusters.size(); ++c) stageOf[c] = clusters.level(c);
    time = timeOf(clusters, partOf, stageOf, parts, wait);
    // Fewer waits, but the shares of each stage may be less equal.
    std::vector<Index> fewer = leastStages(tasks, clusters, partOf);
    const double timeOfFewer = timeOf(clusters, partOf, fewer, parts, wait);
    if (timeOfFewer < time) {
        time = timeOfFewer;
        stageOf = std::move(fewer);
    }
    for (Index task = 0; task < tasks.size(); ++task) {
        part[task] = partOf[clusters[task]];
        stage[task] = stageOf[clusters[task]];
        stages = std::max(stages, stage[task] + 1);
    }
}

double Schedule::leastWork() {
    // Equal parts that wait once. Beyond eight, waits grow faster than parts shrink.
    double least = leastGain * waitOf(2) / (1 - leastGain / 2);
    for (unsigned parts = 3; parts <= 8; ++parts) {
        least = std::min(least, leastGain * waitOf(parts) / (1 - leastGain / parts));
    }
    return least;
}

Schedule Schedule::best(const TaskGraph& tasks, unsigned most) {
    Schedule chosen(tasks, 1, 0);
    for (unsigned parts = most; parts > 1; parts /= 2) {
        // Even without a wait too many.
        if (tasks.total() < leastGain * (tasks.total() / parts + waitOf(parts))) continue;
        Schedule candidate(tasks, parts, waitOf(parts));
        if (candidate.time * (chosen.parts == 1 ? leastGain : 1) < chosen.time) {
            chosen = std::move(candidate);
        } else if (chosen.parts > 1) {
            break;
        }
    }
    return chosen;
}

}  // namespace zirk
