// SPDX-License-Identifier: MIT
// A program packed for running: chains of one shape side by side, in lanes.
#pragma once

#include <cstdint>
#include <vector>

#include "series/program.hpp"

namespace zirk {

/// Chains that do the same operations on other operands, none of which needs another, run together: one step from
/// instruction to instruction serves as many chains as there are lanes, and the additions of one chain fill the waiting
/// times of the others. Each chain keeps its own operations in their order, so no bit changes.
struct Lanes {
    /// What is done in every lane. Operations that come in fours say where their operand stands, as a Place does.
    enum class Code : unsigned char {
        LoadRow,
        LoadArray,
        LoadNow,
        LoadFixed,
        PlusRow,
        PlusArray,
        PlusNow,
        PlusFixed,
        MinusRow,
        MinusArray,
        MinusNow,
        MinusFixed,
        MinusFromRow,
        MinusFromArray,
        MinusFromNow,
        MinusFromFixed,
        Negate,
        Truncate,
        Scale,
        ScaleByDouble,
        Ratio,
        Product,
        PlusProduct,
        MinusProduct,
        // Two sums at once, the second one added or subtracted behind the first.
        ProductPlusProduct,
        ProductMinusProduct,
        PlusProductPlusProduct,
        PlusProductMinusProduct,
        MinusProductPlusProduct,
        MinusProductMinusProduct,
        Quotient,
        Store,
        Keep,
        NextRow,
        NextArray
    };

    /// So many codes, for `blocks` times `lanes` chains.
    struct Run {
        std::uint32_t codes;
        std::uint32_t blocks;
        std::uint32_t lanes;
    };

    static constexpr std::uint32_t most = 4;

    Lanes() = default;
    Lanes(const Program& program, const Programs& programs);

    std::vector<Run> runs;
    /// Of all runs one after the other.
    std::vector<Code> codes;
    /// Of all blocks one after the other; within a block code by code, and for each code lane by lane.
    std::vector<std::uint32_t> operands;
};

}  // namespace zirk
