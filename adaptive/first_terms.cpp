// SPDX-License-Identifier: MIT
// Group after group, by one thread or by several.
#include "adaptive/first_terms.hpp"

#include <algorithm>

namespace zirk {

using Instruction = Arrangement::Instruction;

void FirstTerms::run(const Arrangement::Group& group, const Instruction* begin, real time, bool piecesStay,
                     real* first) const {
    const Instruction* const end = begin + (group.end - group.begin);
    const auto each = [&](auto term) {
        for (const Instruction* i = begin; i != end; ++i) first[i->value] = term(*i);
    };
    // The commonest laws without a look at each value.
    switch (group.law) {
        case Law::Time:
            return each([&](const Instruction&) { return time; });
        case Law::Step:
        case Law::Sign:
            return each([&](const Instruction& i) {
                return piecesStay ? jumps_.inStep(i.value) : jumps_.atBegin(i.value, first[i.a]);
            });
        case Law::Add:
            return each([&](const Instruction& i) { return first[i.a] + first[i.b]; });
        case Law::Subtract:
            return each([&](const Instruction& i) { return first[i.a] - first[i.b]; });
        case Law::Scale:
            return each([&](const Instruction& i) { return first[i.a] * system_.values[i.value].n; });
        case Law::Product:
            return each([&](const Instruction& i) { return system_.values[i.value].n * (first[i.a] * first[i.b]); });
        case Law::ProductRate:
        case Law::QuotientRate:
            // Partners may not be there yet, and functions do not ask for them.
            return each([&](const Instruction& i) {
                const Value& value = system_.values[i.value];
                return firstTerm(value, first[i.a], 0, value.side == Value::none ? 0 : first[value.side]);
            });
        default:
            return each(
                [&](const Instruction& i) { return firstTerm(system_.values[i.value], first[i.a], first[i.b], 0); });
    }
}

void FirstTerms::evaluate(const std::vector<real>& state, real time, bool piecesStay, std::vector<real>& first) const {
    crew_.divide(state.size(), [&](std::size_t begin, std::size_t end) {
        std::copy(state.data() + begin, state.data() + end, first.data() + begin);
    });
    const auto runAlone = [&](const std::vector<Arrangement::Group>& groups) {
        for (const Arrangement::Group& group : groups) {
            run(group, &arrangement_.instructions[group.begin], time, piecesStay, first.data());
        }
    };
    // The pieces of jumping values, which are constant over a step, follow from values that move.
    if (!sections_.areUsedBy(crew_) || jumps_.any()) return runAlone(arrangement_.groups);
    runAlone(arrangement_.constants);
    crew_.run([&](unsigned member) {
        const auto runSection = [&](const Sections::Section& section) {
            for (const Sections::Group& group : section.groups) {
                run(group, section.loop.data() + group.begin, time, piecesStay, first.data());
            }
        };
        sections_.run(crew_, member, runSection, [](unsigned) {});
    });
}

}  // namespace zirk
