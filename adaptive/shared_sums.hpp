// SPDX-License-Identifier: MIT
// Products and quotients that differ by a factor alone.
#pragma once

#include "adaptive/laws.hpp"

namespace zirk {

/// The same system, in which products, and quotients, of the same operands are computed once, without their factors,
/// and scaled: two bodies pull at each other with forces whose sums are the same.
ValueSystem withSharedSums(const ValueSystem& system);

}  // namespace zirk
