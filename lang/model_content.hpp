// SPDX-License-Identifier: MIT
// What a model holds: its text, and the equations that the first run takes.
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "expr/calculus.hpp"
#include "lang/equation_table.hpp"
#include "zirk/model.hpp"

namespace zirk {

/// Compiled equations with the record that their nodes work with. Nodes carry the state of a run: every run has a
/// system of its own.
struct CompiledSystem {
    CompiledSystem(const SeriesLimits& given, real step) : limits(given), calculus(limits, step) {}

    SeriesLimits limits;
    Calculus calculus;
    EquationSystem system;
};

/// What all copies of a model share.
struct ModelContent {
    std::string text;
    std::vector<std::string> names;
    std::string messages;

    /// Equations for one run: those that were made with the model, once and if these limits fold formulas alike;
    /// otherwise compiled anew.
    std::unique_ptr<CompiledSystem> take(const SeriesLimits& limits);

    /// Left until the first run takes it.
    std::unique_ptr<CompiledSystem> spare;
    std::mutex spareMutex;
};

}  // namespace zirk
