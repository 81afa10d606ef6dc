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

bool sums(Code code) {
    return code == Code::Product || code == Code::PlusProduct || code == Code::MinusProduct || code == Code::Quotient;
}

}  // namespace

TaskGraph tasksOf(const Programs& programs) {
    const Program& program = programs.varying;
    TaskGraph tasks;
    // By kind and index of a place: the task that makes what stands there at the present order.
    std::vector<TaskGraph::Index> makers[4];
    makers[Place::Array].resize(programs.arrays, none);
    makers[Place::Now].resize(programs.nows, none);
    auto next = program.instructions.begin();
    for (const Program::Chain& chain : program.chains) {
        const auto end = next + chain.length;
        const auto products = std::count_if(next, end, [](const auto& i) { return sums(i.code); });
        const auto task = tasks.add(perInstruction * chain.length + perSum * static_cast<double>(products));
        const auto need = [&](Place place) {
            // Rows are of the order before, and what is fixed is there.
            if (place.where != Place::Array && place.where != Place::Now) return;
            const TaskGraph::Index maker = makers[place.where][place.index];
            if (maker != none && maker != task) tasks.need(maker);
        };
        for (; next != end; ++next) {
            if (next->load != none) need(programs.places[next->load]);
            if (sums(next->code)) {
                // A quotient sums over itself as well, up to the order before.
                if (next->code != Code::Quotient) need({Place::Array, next->a});
                need({Place::Array, next->b});
            } else if (next->a != none) {
                need(programs.places[next->a]);
            }
            if (next->result == Result::Store) {
                const Place place = programs.places[next->target];
                makers[place.where][place.index] = task;
            }
            if (next->result == Result::Keep) makers[Place::Array][next->array] = task;
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
        ++result.sectionEnds[sectionOf(i)];
    }
    std::partial_sum(result.sectionEnds.begin(), result.sectionEnds.end(), result.sectionEnds.begin());
    return result;
}

Programs cutFor(Crew& crew, Programs programs) {
    if (crew.isAlone()) return programs;
    const Schedule schedule = crew.cut(tasksOf(programs));
    if (schedule.parts == 1) return programs;
    programs.varying = inSections(programs.varying, schedule);
    crew.hire(schedule.parts);
    return programs;
}

LaneSections::LaneSections(const Program& program, const Programs& programs) : parts(program.parts) {
    if (parts == 1) {
        sections.emplace_back(program, programs);
        return;
    }
    std::size_t chain = 0;
    auto next = program.instructions.begin();
    for (const std::size_t end : program.sectionEnds) {
        Program section;
        for (; chain < end; ++chain) {
            section.chains.push_back(program.chains[chain]);
            section.instructions.insert(section.instructions.end(), next, next + program.chains[chain].length);
            next += program.chains[chain].length;
        }
        sections.emplace_back(section, programs);
    }
}

}  // namespace zirk
