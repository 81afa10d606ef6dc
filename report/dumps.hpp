// SPDX-License-Identifier: MIT
// Diagnostic dumps of all Taylor terms and of the derivatives that they stand for.
#pragma once

#include <iosfwd>

#include "zirk/classic_integrator.hpp"

namespace zirk {

/// All terms of all equations, under the time of the last accepted point.
void dumpTerms(std::ostream& out, const ClassicIntegrator& run);

/// The i-th derivative is term i times i! / h^i, the factor built up step by step.
void dumpDerivatives(std::ostream& out, const ClassicIntegrator& run);

}  // namespace zirk
