// SPDX-License-Identifier: MIT
// Programs cut into sections that several threads run at the same time.
#pragma once

#include <vector>

#include "parallel/crew.hpp"
#include "series/lanes.hpp"

namespace zirk {

/// The chains of what varies as tasks, with what they cost at an order of a usual point.
TaskGraph tasksOf(const Programs& programs);

/// The same program with its chains in the order of their sections: stage by stage, and within it part by part.
Program inSections(const Program& program, const Schedule& schedule);

/// Cuts what varies where that pays; the crew hires whom it takes.
Programs cutFor(Crew& crew, Programs programs);

/// A program packed for running: as a whole or, where it is cut, section by section.
struct LaneSections {
    LaneSections() = default;
    LaneSections(const Program& program, const Programs& programs);

    bool isCut() const { return parts > 1; }
    unsigned stages() const { return static_cast<unsigned>(sections.size() / parts); }
    const Lanes& section(unsigned stage, unsigned part) const {
        return sections[static_cast<std::size_t>(stage) * parts + part];
    }

    unsigned parts = 1;
    /// Stage by stage; one behind the other they are the program.
    std::vector<Lanes> sections;
};

}  // namespace zirk
