// SPDX-License-Identifier: MIT
// The number type of every value.
#pragma once

namespace zirk {

/// x87 extended format: 64-bit mantissa, 15-bit exponent; some 19 decimal digits.
using real = long double;

}  // namespace zirk
