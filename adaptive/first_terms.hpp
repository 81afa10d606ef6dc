// SPDX-License-Identifier: MIT
// Terms 0 of all values: the formulas at one state.
#pragma once

#include <vector>

#include "adaptive/jumps.hpp"
#include "adaptive/sections.hpp"

namespace zirk {

/// Evaluates all values of a system from those of its variables.
class FirstTerms {
public:
    FirstTerms(const ValueSystem& system, const Arrangement& arrangement, const Sections& sections, Jumps& jumps,
               Crew& crew)
        : system_(system), arrangement_(arrangement), sections_(sections), jumps_(jumps), crew_(crew) {}

    /// Into `first`, which has room for them. `piecesStay`: jumping values keep theirs, else those of the begin of a
    /// step hold.
    void evaluate(const std::vector<real>& state, real time, bool piecesStay, std::vector<real>& first) const;

private:
    void run(const Arrangement::Group& group, const Arrangement::Instruction* begin, real time, bool piecesStay,
             real* first) const;

    const ValueSystem& system_;
    const Arrangement& arrangement_;
    const Sections& sections_;
    Jumps& jumps_;
    Crew& crew_;
};

}  // namespace zirk
