// SPDX-License-Identifier: MIT
// Exits of operands from the ranges on which what is made from them is constant.
#include "adaptive/jumps.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "adaptive/roots.hpp"

namespace zirk {

namespace {

constexpr real infinite = std::numeric_limits<real>::infinity();

}  // namespace

real Jumps::Piece::lower() const {
    if (isSign) return level > 0 ? 0 : -infinite;
    return level > 0 ? level : level - 1;
}

real Jumps::Piece::upper() const {
    if (isSign) return level > 0 ? infinite : 0;
    return level < 0 ? level : level + 1;
}

Jumps::Jumps(const ValueSystem& system) : place_(system.size()) {
    for (ValueIndex i = system.variables; i < system.size(); ++i) {
        const Value& value = system.values[i];
        if (!isJumping(value)) continue;
        place_[i] = pieces_.size();
        Piece piece{};
        piece.value = i;
        piece.operand = value.a;
        piece.isSign = value.law == Law::Sign;
        pieces_.push_back(piece);
    }
}

real Jumps::atBegin(ValueIndex value, real u) {
    Piece& piece = pieces_[place_[value]];
    // At a border it may stand still: there what it is decides, and where it goes when it moves.
    const bool isInside = u > piece.lower() && u < piece.upper();
    if (!piece.isKnown || (piece.enteredOver == 0 && !isInside)) {
        piece.level = piece.isSign ? (u < 0 ? -1 : 1) : std::trunc(u);
        piece.isKnown = true;
    }
    return piece.level;
}

void Jumps::findExit(Piece& piece, const StepSeries& series, real end) {
    piece.exit = end;
    piece.direction = 0;
    std::vector<real> u;
    for (const int side : {-1, 1}) {
        const real border = side < 0 ? piece.lower() : piece.upper();
        if (!std::isfinite(border)) continue;
        series.polynomial(piece.operand, u);
        // It has just come over this border, wherever rounding has left it.
        u[0] = piece.enteredOver == side ? 0 : u[0] - border;
        const auto leave = [&](real at) {
            if (piece.direction != 0 && std::fabs(at) >= std::fabs(piece.exit)) return;
            piece.exit = at;
            piece.direction = side;
        };
        // Inside, u - border has the sign -side.
        if (signAfterBegin(u, end) == side) {
            leave(0);
        } else {
            for (const PolynomialRoot& root : roots(u, end)) {
                if (root.rising != (side > 0)) continue;
                leave(root.at);
                break;
            }
        }
    }
}

real Jumps::firstExit(const StepSeries& series, real end) {
    real first = end;
    for (Piece& piece : pieces_) {
        findExit(piece, series, end);
        if (piece.direction != 0 && std::fabs(piece.exit) < std::fabs(first)) first = piece.exit;
    }
    // What leaves at the same place but for rounding leaves together.
    constexpr real together = 1 + 0x1p-56L;
    for (Piece& piece : pieces_) {
        if (piece.direction != 0 && std::fabs(piece.exit) > std::fabs(first) * together) piece.direction = 0;
    }
    return first;
}

void Jumps::leaveBorders() {
    for (Piece& piece : pieces_) piece.enteredOver = 0;
}

ValueIndex Jumps::change() {
    ValueIndex changed = Value::none;
    for (Piece& piece : pieces_) {
        if (piece.direction == 0) continue;
        piece.level = piece.isSign ? -piece.level : piece.level + static_cast<real>(piece.direction);
        piece.enteredOver = -piece.direction;
        piece.direction = 0;
        changed = piece.value;
    }
    return changed;
}

}  // namespace zirk
