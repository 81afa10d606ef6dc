// SPDX-License-Identifier: MIT
// What the chains of a program need of each other, and their order by sections.
#include "series/sections.hpp"

#include <algorithm>
#include <numeric>

namespace zirk {

namespace {

using Code = Program::Code;
using Result = Program::Result;

constexpr std::uint32_t none = TermGraph::none;

// In nanoseconds, and for sums of as many products as half a usual order.
constexpr double perInstruction = 2;
constexpr double perSum = 18;

/// Which task has made a slot or an array at the present order.
class Makers {
public:
    void set(std::uint32_t index, TaskGraph::Index task) {
        if (index >= task_.size()) task_.resize(index + std::size_t{1}, none);
        task_[index] = task;
    }
    /// None: it was made at the order before, or is constant.
    TaskGraph::Index operator[](std::uint32_t index) const { return index < task_.size() ? task_[index] : none; }

private:
    std::vector<TaskGraph::Index> task_;
};

bool sums(Code code) {
    return code == Code::Product || code == Code::PlusProduct || code == Code::MinusProduct || code == Code::Quotient;
}

}  // namespace

TaskGraph tasksOf(const Program& program) {
    TaskGraph tasks;
    Makers ofSlot;
    Makers ofArray;
    auto next = program.instructions.begin();
    for (const Program::Chain& chain : program.chains) {
        const auto end = next + chain.length;
        const auto products = std::count_if(next, end, [](const auto& i) { return sums(i.code); });
        const auto task = tasks.add(perInstruction * chain.length + perSum * static_cast<double>(products));
        const auto need = [&](const Makers& makers, std::uint32_t index) {
            const TaskGraph::Index maker = index == none ? none : makers[index];
            if (maker != none && maker != task) tasks.need(maker);
        };
        for (; next != end; ++next) {
            need(ofSlot, next->load);
            if (sums(next->code)) {
                // A quotient sums over itself as well, up to the order before.
                if (next->code != Code::Quotient) need(ofArray, next->a);
                need(ofArray, next->b);
            } else if (next->code != Code::Scale && next->code != Code::Ratio) {
                need(ofSlot, next->a);
            }
            if (next->result == Result::Store) ofSlot.set(next->target, task);
            if (next->result == Result::Keep) ofArray.set(next->array, task);
        }
    }
    return tasks;
}

Program inSections(const Program& program, const Schedule& schedule) {
    std::vector<std::size_t> begin(program.chains.size());
    std::size_t instructions = 0;
    for (std::size_t i = 0; i < program.chains.size(); ++i) {
        begin[i] = instructions;
        instructions += program.chains[i].length;
    }
    const auto sectionOf = [&](std::size_t chain) {
        return static_cast<std::size_t>(schedule.stage[chain]) * schedule.parts + schedule.part[chain];
    };
    std::vector<std::size_t> order(program.chains.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t x, std::size_t y) { return sectionOf(x) < sectionOf(y); });
    Program result;
    result.parts = schedule.parts;
    result.sectionEnds.assign(static_cast<std::size_t>(schedule.stages) * schedule.parts, 0);
    for (const std::size_t i : order) {
        const Program::Chain& chain = program.chains[i];
        result.chains.push_back(chain);
        const auto first = program.instructions.begin() + static_cast<std::ptrdiff_t>(begin[i]);
        result.instructions.insert(result.instructions.end(), first, first + chain.length);
        result.sectionEnds[sectionOf(i)] += chain.length;
    }
    std::partial_sum(result.sectionEnds.begin(), result.sectionEnds.end(), result.sectionEnds.begin());
    return result;
}

}  // namespace zirk
