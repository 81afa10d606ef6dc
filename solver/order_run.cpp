// SPDX-License-Identifier: MIT
// The loop over instructions: the order of additions and multiplications inside each term is that of the nodes.
#include "solver/order_run.hpp"

namespace {

/// Read as two bytes and no more, on purpose: the wider load that compilers like to make of a copy has to wait until
/// the number has left the store buffer.
using SignAndExponent = const volatile std::uint16_t __attribute__((may_alias));

/// Infinite or not a number, told by the exponent alone.
bool isWild(const real& x) { return (reinterpret_cast<SignAndExponent*>(&x)[4] & 0x7fff) == 0x7fff; }

/// Order k alone.
inline void runOrder(const Program& program, int k, const real* row, real* nextRow, Calculus& calculus,
                     OrderState& state) {
    using Code = Program::Code;
    const real factor = calculus.stepTable[k + 1];
    real* const now = state.now.data();
    const auto operand = [=](const Program::Instruction& i) -> const real& { return (i.ofVariable ? row : now)[i.a]; };
    // At order 0 the present term of a constant is the constant.
    const real* const constant = k == 0 ? now : state.constant.data();
    SeriesSum* const sums = state.sums.data();
    TermArrays& arrays = state.arrays;
    real acc = 0;
    bool anyEnded = false;
    bool anyWild = false;
    const Program::Instruction* const end = program.instructions.data() + program.instructions.size();
    for (const Program::Instruction* i = program.instructions.data(); i != end; ++i) {
        switch (i->code) {
            case Code::Load:
                acc = operand(*i);
                break;
            case Code::Plus:
                acc = acc + operand(*i);
                break;
            case Code::Minus:
                acc = acc - operand(*i);
                break;
            case Code::MinusFrom:
                acc = operand(*i) - acc;
                break;
            case Code::Negate:
                acc = -acc;
                break;
            case Code::Truncate:
                acc = k == 0 ? static_cast<real>(std::trunc(static_cast<double>(acc))) : 0;
                break;
            // One factor is constant: the other products are exact zeros as long as every term is finite. Adding to
            // zero stays: it turns a negative zero into a positive one.
            case Code::Scale:
                acc = 0 + acc * constant[i->a];
                break;
            case Code::Ratio:
                acc = acc / constant[i->a];
                break;
            case Code::LoadProduct:
                acc = arrays.sum(i->a, k, i->b, 0, k + 1);
                break;
            case Code::PlusProduct:
                acc = acc + arrays.sum(i->a, k, i->b, 0, k + 1);
                break;
            case Code::MinusProduct:
                acc = acc - arrays.sum(i->a, k, i->b, 0, k + 1);
                break;
            case Code::Quotient:
                acc = (acc - arrays.sum(i->b, k, i->a, 0, k)) / arrays.first(i->b);
                break;
            case Code::Store:
                now[i->a] = acc;
                break;
            case Code::Keep:
                arrays.keep(i->a, k, acc);
                break;
            case Code::Next: {
                const real term = acc * factor;
                nextRow[i->a] = term;
                anyWild |= isWild(nextRow[i->a]);
                if (i->b != TermGraph::none) arrays.keep(i->b, k + 1, term);
                SeriesSum& series = sums[i->a];
                if (!series.wantsMore(calculus)) break;
                series.add(term, calculus);
                anyEnded |= !series.wantsMore(calculus);
                break;
            }
        }
    }
    state.anyEnded = anyEnded;
    state.anyWild = anyWild || arrays.hasWild();
}

}  // namespace

int runOrders(const Program& program, int first, int last, real* row, std::size_t rowSize, Calculus& calculus,
              OrderState& state) {
    int k = first;
    do {
        runOrder(program, k, row, row + rowSize, calculus, state);
        row += rowSize;
    } while (k++ < last && !state.anyEnded && !state.anyWild);
    return k;
}
