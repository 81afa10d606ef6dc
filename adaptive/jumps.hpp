// SPDX-License-Identifier: MIT
// Where truncations and sides change, and what they are in between.
#pragma once

#include <vector>

#include "adaptive/step_series.hpp"

namespace zirk {

/// The present pieces of all values that jump: trunc(u) is constant while u stays between two whole numbers.
///
/// The piece is kept from step to step and not asked of u again, so that rounding cannot make it flicker: it changes
/// where the polynomial of u leaves its range, and when u itself has jumped.
class Jumps {
public:
    explicit Jumps(const ValueSystem& system);

    bool any() const { return !pieces_.empty(); }

    /// A step begins: the value of a jumping value whose operand is u there, which may choose another piece.
    real atBegin(ValueIndex value, real u);

    /// The same with pieces as they are.
    real inStep(ValueIndex value) const { return pieces_[place_[value]].level; }

    /// The first place up to `end` (both in units of the scale) where some operand leaves its piece; `end` when none
    /// does. Remembers who leaves; 0 when it is now.
    real firstExit(const StepSeries& series, real end);

    /// Those that leave take their next piece. The value of one of them; none when there is none.
    ValueIndex change();

    /// A step is made: no operand stands at the border through which it came any more.
    void moveOn();

private:
    struct Piece {
        ValueIndex value;
        ValueIndex operand;
        bool isSign;
        /// trunc(u), or the sign.
        real level = 0;
        bool isKnown = false;
        /// Has just changed, from below (1) or from above (-1): its operand stands at the border, but for rounding. 0
        /// once it has moved on.
        int entered = 0;
        /// Where it leaves, and to which side.
        real exit = 0;
        int direction = 0;

        real lower() const;
        real upper() const;
        real border(int side) const { return side < 0 ? lower() : upper(); }
        bool standsAtBorder(real u) const;
    };

    static void findExit(Piece& piece, const StepSeries& series, real end);

    std::vector<Piece> pieces_;
    /// Per value of the system.
    std::vector<std::size_t> place_;
};

}  // namespace zirk
