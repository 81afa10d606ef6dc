// SPDX-License-Identifier: MIT
// Values of formulas where they are 0/0: u/(exp(u) - 1) at u = 0.
#pragma once

#include <functional>

#include "zirk/real.hpp"

namespace zirk {

/// The limit of a function at `at` between `begin` and `end`, from its values around; not a number when it has none
/// that these values agree on. Else the function has to be smooth over the whole interval.
real limitOf(const std::function<real(real)>& function, real at, real begin, real end);

}  // namespace zirk
