// SPDX-License-Identifier: MIT
// One point: every equation evaluated at the current time, and the step stamps around it.
#pragma once

#include "expr/calculus.hpp"
#include "lang/equation_table.hpp"
#include "series/chooser.hpp"
#include "zirk/classic_integrator.hpp"

namespace zirk {

/// Evaluates all equations in the order of their names.
class TaylorStep {
public:
    TaylorStep(Calculus& calculus, const EquationTable& equations, Evaluation evaluation,
               const ThreadOptions& threads = {})
        : calculus_(calculus), equations_(equations), evaluation_(evaluation), chooser_(calculus, equations, threads) {}

    /// Values of all equations at the current time. Leaves the order used in the calculus.
    void evaluate();

    /// The point is accepted: it becomes the base of the next one.
    void accept();

    /// The point is done again from the same base with another step.
    void repeat();

    /// Equations that did not move in the last pass.
    int steadyCount() const { return steadyCount_; }

    // Terms of the last pass, of the variables in the order of their names. Good until the next pass.

    /// Index of the last term; -1 for algebraic equations.
    int highestTerm(std::size_t variable) const;
    /// Term k, up to the highest one. An algebraic equation is constant over a step for all who use it: term 0 is the
    /// value that they see, every other is 0.
    real term(std::size_t variable, int k) const;

private:
    /// std::bad_alloc when the terms that every series needs at least do not fit into memory.
    void claimTerms();
    void findPlaces();

    Calculus& calculus_;
    const EquationTable& equations_;
    const Evaluation evaluation_;
    Chooser chooser_;
    /// The program and not the nodes made the last pass.
    bool isCompiled_ = false;
    /// Per equation: how many differential variables come before it.
    std::vector<SlotIndex> place_;
    bool termsClaimed_ = false;
    int steadyCount_ = 0;
};

}  // namespace zirk
