// SPDX-License-Identifier: MIT
// What values cost and need, and lists by part and stage.
#include "adaptive/sections.hpp"

#include <algorithm>

namespace zirk {

namespace {

constexpr TaskGraph::Index none = 0xffffffff;

// In nanoseconds, and for sums of as many products as half a usual order.
constexpr double perValue = 2;
constexpr double perSum = 10;
constexpr double perVariable = 2;

double costOf(const Arrangement::Instruction& instruction) {
    const bool sums = instruction.x != Arrangement::none;
    const bool sumsTwice = instruction.z != Arrangement::none;
    return perValue + (sums ? perSum : 0) + (sumsTwice ? perSum : 0);
}

}  // namespace

TaskGraph tasksOf(const ValueSystem& system, const Arrangement& arrangement, std::vector<TaskGraph::Index>& taskOf) {
    TaskGraph tasks;
    taskOf.assign(system.size(), none);
    std::vector<double> cost(system.size(), 0);
    for (const ValueIndex rate : system.rates) cost[rate] += perVariable;
    for (ValueIndex i = system.variables; i < system.size(); ++i) {
        if (system.values[i].isConstant) continue;
        taskOf[i] = tasks.add(cost[i] + costOf(arrangement.instructions[i]));
        for (const ValueIndex operand : sameOrderOperands(system.values[i]).of) {
            if (operand != Value::none && operand != i && taskOf[operand] != none) tasks.need(taskOf[operand]);
        }
    }
    return tasks;
}

Sections::Sections(const ValueSystem& system, Arrangement& arrangement, Crew& crew) {
    if (crew.isAlone()) return;
    std::vector<TaskGraph::Index> taskOf;
    const TaskGraph tasks = tasksOf(system, arrangement, taskOf);
    const Schedule schedule = crew.cut(tasks);
    if (schedule.parts == 1) return;
    parts = schedule.parts;
    stages = schedule.stages;
    crew.hire(parts);

    std::vector<Arrangement::Scrap> scrap;
    for (unsigned part = 0; part < parts; ++part) scrap.push_back(arrangement.addScrap());
    const auto instructionFor = [&](ValueIndex value, unsigned part) {
        Arrangement::Instruction instruction = arrangement.instructions[value];
        if (arrangement.rising[value] == Arrangement::none) instruction.rising = scrap[part].rising;
        if (arrangement.falling[value] == Arrangement::none) instruction.falling = scrap[part].falling;
        if (arrangement.weighted[value] == Arrangement::none) instruction.weighted = scrap[part].rising;
        return instruction;
    };
    sections.resize(static_cast<std::size_t>(stages) * parts);
    std::vector<ValueIndex> kinds[4];
    for (const Arrangement::Group& group : arrangement.varying) {
        for (auto& kind : kinds) kind.clear();
        for (ValueIndex i = group.begin; i < group.end; ++i) {
            const Arrangement::Instruction& instruction = arrangement.instructions[i];
            const bool isFirst = instruction.a < system.variables;
            const bool isSecond = instruction.b < system.variables;
            kinds[2 * isFirst + isSecond].push_back(i);
        }
        for (int kind = 0; kind < 4; ++kind) {
            std::vector<char> isBegun(sections.size(), 0);
            for (const ValueIndex i : kinds[kind]) {
                const TaskGraph::Index task = taskOf[i];
                const unsigned part = schedule.part[task];
                const std::size_t index = static_cast<std::size_t>(schedule.stage[task]) * parts + part;
                Section& section = sections[index];
                const auto place = static_cast<ValueIndex>(section.loop.size());
                if (isBegun[index] == 0) section.groups.push_back({group, kind >= 2, kind % 2 == 1});
                Group& last = section.groups.back();
                if (isBegun[index] == 0) last.begin = last.end = place;
                isBegun[index] = 1;
                ++last.end;
                section.loop.push_back(instructionFor(i, part));
            }
        }
    }

    shares.resize(parts);
    const auto append = [](std::vector<Range>& ranges, ValueIndex i) {
        if (ranges.empty() || ranges.back().end != i) ranges.push_back({i, i});
        ++ranges.back().end;
    };
    for (ValueIndex i = 0; i < system.size(); ++i) {
        const bool isVariable = i < system.variables;
        const TaskGraph::Index task = taskOf[isVariable ? system.rates[i] : i];
        // What follows another variable or a constant follows no part.
        const auto even = static_cast<unsigned>(std::size_t{i} * parts / system.variables);
        const unsigned part = task != none ? schedule.part[task] : isVariable ? even : 0;
        Share& share = shares[part];
        append(share.values, i);
        const bool isKept = arrangement.rising[i] != Arrangement::none || arrangement.falling[i] != Arrangement::none ||
                            arrangement.weighted[i] != Arrangement::none;
        if (isVariable) append(share.variables, i);
        if (isVariable && isKept) share.keptVariables.push_back(instructionFor(i, part));
        if (arrangement.rising[i] != Arrangement::none) share.arrays.push_back({arrangement.rising[i], 1, isVariable});
        if (arrangement.falling[i] != Arrangement::none)
            share.arrays.push_back({arrangement.falling[i], -1, isVariable});
        if (arrangement.weighted[i] != Arrangement::none)
            share.arrays.push_back({arrangement.weighted[i], 1, isVariable});
    }
}

}  // namespace zirk
