// SPDX-License-Identifier: MIT
// The values of a system in the order in which they are computed, and where their terms are kept.
#pragma once

#include <cstdint>
#include <vector>

#include "adaptive/laws.hpp"

namespace zirk {

/// The same system with its values sorted: variables, then level by level what needs the levels before, and within a
/// level what is constant over a step first, then by law. So values of one law stand next to each other and need no
/// order among themselves.
ValueSystem arranged(const ValueSystem& system);

/// Where terms are kept, and which values follow the same law.
///
/// All sums are over products of cells that follow each other in memory: sum over i of x[i] * y[i]. A value keeps its
/// terms in up to three arrays for that: rising (A_0, A_1, ...), falling (..., A_2, A_1) and weighted
/// (0, A_1, 2 A_2, 3 A_3, ...).
struct Arrangement {
    static constexpr std::uint32_t none = 0xffffffff;

    struct Group {
        Law law;
        /// Whether some of them have arrays, and weighted ones among these.
        bool isKept;
        bool isWeighted;
        ValueIndex begin;
        ValueIndex end;
    };

    /// What the loop over terms has to know of a value.
    struct Instruction {
        ValueIndex value;
        /// Operands, 0 for none.
        ValueIndex a;
        ValueIndex b;
        /// Arrays of the sum over x[i] * y[k - i], and of a second one over z[i] * y[k - i].
        std::uint32_t x;
        std::uint32_t y;
        std::uint32_t z;
        /// Its own arrays; that for scrap where it has none.
        std::uint32_t rising;
        std::uint32_t falling;
        std::uint32_t weighted;
    };

    /// An array: the cell of term 0, and the way from term to term.
    struct Array {
        std::uint32_t first;
        std::int32_t step;
        bool isOfVariable;
    };

    /// Cells into which values without an array of a kind write, and which nobody reads: cheaper than to ask. Where
    /// arrays of scrap begin that rise and that fall.
    struct Scrap {
        std::uint32_t rising;
        std::uint32_t falling;
    };

    /// One more, so far from all others that threads do not get in each other's way.
    Scrap addScrap();

    /// For terms 0 to `order`.
    Arrangement(const ValueSystem& system, int order);

    /// All values but the variables in their order; and again, those apart that are constant over a step.
    std::vector<Group> groups;
    std::vector<Group> constants;
    std::vector<Group> varying;

    /// Per value: its first cell, or none. Term k is at rising + k, weighted + k, falling - k.
    std::vector<std::uint32_t> rising;
    std::vector<std::uint32_t> falling;
    std::vector<std::uint32_t> weighted;
    std::uint32_t cells = 0;
    Scrap scrap{};
    std::vector<Array> arrays;
    int order;
    /// Of terms k of all variables: as many as there are and up to three more, which stay zero.
    std::size_t rowLength;
    /// Variables that have an array.
    std::vector<Instruction> keptVariables;
    /// Per value.
    std::vector<Instruction> instructions;
    /// Those of `varying`, one group behind the other.
    std::vector<Instruction> loop;
    /// Values by whose term 0 others are divided.
    std::vector<ValueIndex> divisors;

private:
    void giveArrays(const ValueSystem& system);
    Instruction instructionFor(const ValueSystem& system, ValueIndex c) const;
    void groupValues(const ValueSystem& system);
};

}  // namespace zirk
