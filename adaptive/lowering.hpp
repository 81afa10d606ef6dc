// SPDX-License-Identifier: MIT
// Formulas turned into values that recurrences can compute.
#pragma once

#include <vector>

#include "adaptive/laws.hpp"

namespace zirk {

/// The values for rates of change (one formula per variable) and for watched formulas, of one graph.
///
/// Functions become one to three values with the fewest sums that are known: a sum each for exp, ln, quotients and
/// powers, two for a sine with its cosine or a tangent, half as many roots. Functions of the same operand share theirs.
ValueSystem lower(const FormulaGraph& graph, const std::vector<NodeIndex>& rates,
                  const std::vector<NodeIndex>& watched);

}  // namespace zirk
