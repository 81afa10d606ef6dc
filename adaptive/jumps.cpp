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

bool Jumps::Piece::standsAtBorder(real u) const {
    // Another jump at the same time may have carried the operand away.
    constexpr real near = 0x1p-10L;
    return entered != 0 && std::fabs(u - border(-entered)) < near;
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
    const bool isInside = u >= piece.lower() && u <= piece.upper();
    if (!piece.standsAtBorder(u)) piece.entered = 0;
    if (!piece.isKnown || (piece.entered == 0 && !isInside)) {
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
        const real border = piece.border(side);
        if (!std::isfinite(border)) continue;
        series.polynomial(piece.operand, u);
        u[0] -= border;
        if (piece.entered == -side) u[0] = 0;
        const auto leave = [&](real at) {
            if (piece.direction != 0 && std::fabs(at) >= std::fabs(piece.exit)) return;
            piece.exit = at;
            piece.direction = side;
        };
        // Inside, u - border has the sign -side. What rests on a border belongs to the piece away from zero.
        const int sign = signAfterBegin(u, end);
        const bool isOutward = piece.isSign ? side > 0 : static_cast<real>(side) * piece.level >= 0;
        if (sign == side || (isOutward && std::all_of(u.begin(), u.end(), [](real c) { return c == 0; }))) {
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

ValueIndex Jumps::change() {
    ValueIndex changed = Value::none;
    for (Piece& piece : pieces_) {
        if (piece.direction == 0) continue;
        piece.level = piece.isSign ? -piece.level : piece.level + static_cast<real>(piece.direction);
        piece.entered = piece.direction;
        piece.direction = 0;
        changed = piece.value;
    }
    return changed;
}

void Jumps::moveOn() {
    for (Piece& piece : pieces_) piece.entered = 0;
}

}  // namespace zirk
