// SPDX-License-Identifier: MIT
// The values of a system cut into sections that several threads compute at the same time.
#pragma once

#include <vector>

#include "adaptive/arrangement.hpp"
#include "parallel/crew.hpp"

namespace zirk {

/// The values that move within a step as tasks, with what they cost at an order of a usual step. `taskOf` is made: per
/// value its task, or 2^32 - 1.
TaskGraph tasksOf(const ValueSystem& system, const Arrangement& arrangement, std::vector<TaskGraph::Index>& taskOf);

/// What moves within a step, cut where that pays: parts run at the same time, stages one after the other. Within a
/// section values keep their order.
struct Sections {
    /// Values of one law whose operands are of one kind: variables or others.
    struct Group : Arrangement::Group {
        bool firstAreVariables;
        bool secondAreVariables;
    };
    /// Some values of one part in one stage.
    struct Section {
        std::vector<Group> groups;
        /// Of all groups, one behind the other.
        std::vector<Arrangement::Instruction> loop;
    };
    struct Range {
        ValueIndex begin;
        ValueIndex end;
    };
    /// What belongs to a part in all stages: who computes a term looks after all copies of it, for memory that another
    /// processor has written last is far away.
    struct Share {
        /// Variables whose terms follow from those of the part, and those of them that have an array.
        std::vector<Range> variables;
        std::vector<Arrangement::Instruction> keptVariables;
        /// These, and all other values of the part.
        std::vector<Range> values;
        std::vector<Arrangement::Array> arrays;
    };

    /// Cuts for the crew, which hires whom it takes; each part gets an array for scrap of its own in the arrangement.
    Sections(const ValueSystem& system, Arrangement& arrangement, Crew& crew);

    /// Whether the members of a crew at the present step are to do it.
    bool areUsedBy(const Crew& crew) const { return parts > 1 && crew.members() > 1; }

    const Section& section(unsigned stage, unsigned part) const {
        return sections[static_cast<std::size_t>(stage) * parts + part];
    }

    /// Calls work(begin, end) for ranges of all values, each part's by whom it belongs to.
    template <class Work>
    void eachRange(const ValueSystem& system, Crew& crew, const Work& work) const {
        if (!areUsedBy(crew)) return work(ValueIndex{0}, system.size());
        eachShare(crew, [&](const Share& share) {
            for (const Range& range : share.values) work(range.begin, range.end);
        });
    }

    /// Calls work(share) for each part, at the same time.
    template <class Work>
    void eachShare(Crew& crew, const Work& work) const {
        crew.run([&](unsigned member) {
            for (unsigned part = member; part < parts; part += crew.members()) work(shares[part]);
        });
    }

    /// Runs action(section) for all of them, in order, by the members of a crew; endOfStages(part) behind the last one.
    template <class Action, class End>
    void run(Crew& crew, unsigned member, const Action& action, const End& endOfStages) const {
        for (unsigned stage = 0; stage < stages; ++stage) {
            for (unsigned part = member; part < parts; part += crew.members()) {
                action(section(stage, part));
                if (stage + 1 == stages) endOfStages(part);
            }
            crew.wait();
        }
    }

    unsigned parts = 1;
    unsigned stages = 1;
    /// Stage by stage; none where nothing is cut.
    std::vector<Section> sections;
    /// Per part.
    std::vector<Share> shares;
};

}  // namespace zirk
