// SPDX-License-Identifier: MIT
// A graph of terms turned into chains of instructions.
#include "series/program.hpp"

#include <utility>

namespace zirk {

namespace {

using Code = Program::Code;
using Result = Program::Result;

constexpr std::uint32_t none = TermGraph::none;

/// Writes the programs of a graph in three passes over its slots; each needs what the one before has found out.
class ChainWriter {
public:
    ChainWriter(const TermGraph& graph, Programs& programs)
        : graph_(graph), programs_(programs), values_(graph.slots.size()), nextTaker_(graph.variables, none) {}

    void write() {
        for (SlotIndex slot = 0; slot < graph_.size(); ++slot) noteUses(slot);
        for (SlotIndex slot = 0; slot < graph_.size(); ++slot) chooseCarried(slot);
        for (SlotIndex slot = 0; slot < graph_.size(); ++slot) writeChains(slot);
        for (SlotIndex slot = 0; slot < graph_.size(); ++slot) programs_.places.push_back(placeOf(slot));
    }

private:
    /// What becomes of a slot.
    struct Value {
        ArrayIndex array = none;
        /// Operations that need its present term, and the variables that take their next term from it, as a list.
        std::uint32_t uses = 0;
        SlotIndex firstTaker = none;
        /// The operand that is in the accumulator when this operation begins; its other operand.
        SlotIndex carried = none;
        SlotIndex other = none;
        bool isCarried = false;
        bool isFused = false;
        /// Others sum over its array, so that its term must be kept before they do.
        bool isSummed = false;
    };

    bool isConstant(SlotIndex slot) const { return graph_[slot].isConstant; }
    bool isOperation(SlotIndex slot) const { return !graph_.isVariable(slot) && !graph_.isLeaf(slot); }
    bool isProduct(SlotIndex slot) const {
        return graph_[slot].type == ExprType::Multiply && !isConstant(graph_[slot].left) &&
               !isConstant(graph_[slot].right);
    }
    bool isQuotient(SlotIndex slot) const {
        return graph_[slot].type == ExprType::Divide && !isConstant(graph_[slot].right);
    }
    bool isSum(SlotIndex slot) const {
        return graph_[slot].type == ExprType::Plus || graph_[slot].type == ExprType::Minus;
    }

    Place placeOf(SlotIndex slot) {
        if (isConstant(slot) || graph_.isLeaf(slot)) return {Place::Fixed, programs_.fixed++};
        if (values_[slot].array != none) return {Place::Array, values_[slot].array};
        return graph_.isVariable(slot) ? Place{Place::Row, programs_.rows++} : Place{Place::Now, programs_.nows++};
    }

    // First pass: who needs what of each value. An operation either needs the present term of an operand, which counts
    // as a use, or sums over all terms so far, which gives the operand an array: both factors of a product that vary,
    // a divisor that varies and its quotient. A factor or divisor that is constant over the step is neither: its
    // term 0 is at hand. A variable takes its next term from its right-hand side, which lists its takers.

    void noteUses(SlotIndex slot) {
        const auto [type, constant, left, right, node] = graph_[slot];
        if (graph_.isVariable(slot)) {
            nextTaker_[slot] = std::exchange(values_[left].firstTaker, slot);
        } else if (isProduct(slot)) {
            giveArray(left, true);
            giveArray(right, true);
        } else if (type == ExprType::Multiply) {
            // The constant factor stays what it is; with two of them the left one varies in name only.
            ++values_[isConstant(right) ? left : right].uses;
        } else if (isOperation(slot)) {
            ++values_[left].uses;
            if (isSum(slot)) ++values_[right].uses;
            if (isQuotient(slot)) {
                giveArray(right, true);
                giveArray(slot, false);
            }
        }
    }

    void giveArray(SlotIndex slot, bool isSummed) {
        values_[slot].isSummed |= isSummed;
        if (values_[slot].array == none) values_[slot].array = programs_.arrays++;
    }

    // Second pass: which operand each operation finds in the accumulator. A value is free when a single operation needs
    // it and nobody else; it need not be stored then. A sum has two chances: a free product on its right is fused,
    // added without leaving the accumulator, and the left operand is carried; else the free operand is carried, the
    // left one first. Every other operation carries its operand, or the one that varies. What is carried but not free
    // is loaded. Constants make chains of one operation each, so that any of them can be stored.

    void chooseCarried(SlotIndex slot) {
        if (!isOperation(slot) || isProduct(slot)) return;
        Value& value = values_[slot];
        value.carried = graph_[slot].left;
        value.other = graph_[slot].right;
        if (isSum(slot)) {
            if (isProduct(value.other) && isFree(value.other)) {
                values_[value.other].isFused = true;
            } else if (!isFree(value.carried) && isFree(value.other)) {
                std::swap(value.carried, value.other);
            }
        } else if (graph_[slot].type == ExprType::Multiply && !isConstant(value.other)) {
            std::swap(value.carried, value.other);
        }
        values_[value.carried].isCarried = !isConstant(slot) && isFree(value.carried);
    }

    bool isFree(SlotIndex slot) const {
        const Value& value = values_[slot];
        return isOperation(slot) && !isConstant(slot) && value.uses == 1 && value.firstTaker == none && !value.isSummed;
    }

    // Third pass: the chains. Values that are carried or fused are written as part of the chain of whoever needs them;
    // every other operation ends a chain, which begins where following the carried operands meets one that has to be
    // loaded, or a product. Along the way terms are kept in arrays; at the end the value is stored for its users and
    // makes the next terms of its takers. Constants go into the program of their own; in the other one they are leaves,
    // which are loaded only to be kept or taken.

    void writeChains(SlotIndex slot) {
        const Value& value = values_[slot];
        if (value.isCarried || value.isFused) return;
        if (!isOperation(slot)) return writeLeaf(slot);
        chain_.assign(1, slot);
        for (SlotIndex next = value.carried; next != none && values_[next].isCarried; next = values_[next].carried) {
            chain_.push_back(next);
        }
        beginChain(isConstant(slot) ? programs_.constants : programs_.varying);
        if (!isProduct(chain_.back())) load(values_[chain_.back()].carried);
        for (auto step = chain_.rbegin(); step != chain_.rend(); ++step) writeOperation(*step);
        if (isConstant(slot) || (value.uses > 0 && value.array == none)) leave(Result::Store, slot, none);
        if (!isConstant(slot)) {
            for (SlotIndex taker = value.firstTaker; taker != none; taker = nextTaker_[taker]) leaveNext(taker);
        }
        endChain(slot);
        if (isConstant(slot)) writeLeaf(slot);
    }

    void writeOperation(SlotIndex slot) {
        const Value& value = values_[slot];
        const bool isFused = value.other != none && values_[value.other].isFused;
        const Code minus = value.carried == graph_[slot].left ? Code::Minus : Code::MinusFrom;
        switch (graph_[slot].type) {
            case ExprType::Plus:
                isFused ? sumProduct(Code::PlusProduct, value.other) : operate(Code::Plus, value.other);
                break;
            case ExprType::Minus:
                isFused ? sumProduct(Code::MinusProduct, value.other) : operate(minus, value.other);
                break;
            case ExprType::Multiply:
                isProduct(slot) ? sumProduct(Code::Product, slot) : operate(scaleBy(value.other), value.other);
                break;
            case ExprType::Divide:
                isQuotient(slot) ? operate(Code::Quotient, value.array, values_[value.other].array)
                                 : operate(Code::Ratio, value.other);
                break;
            default:
                operate(graph_[slot].type == ExprType::UnMinus ? Code::Negate : Code::Truncate, none);
        }
        if (value.array != none) leave(Result::Keep, none, value.array);
    }

    Code scaleBy(SlotIndex constant) const {
        if (graph_[constant].type != ExprType::Number) return Code::Scale;
        const real& number = graph_[constant].node->startValue();
        return static_cast<real>(static_cast<double>(number)) == number ? Code::ScaleByDouble : Code::Scale;
    }

    void writeLeaf(SlotIndex slot) {
        const Value& value = values_[slot];
        if (value.array != none && !graph_.isVariable(slot)) {
            beginChain(programs_.varying);
            load(slot);
            leave(Result::Keep, none, value.array);
            endChain(slot);
        }
        for (SlotIndex taker = value.firstTaker; taker != none; taker = nextTaker_[taker]) {
            beginChain(programs_.varying);
            load(slot);
            leaveNext(taker);
            endChain(taker);
        }
    }

    // Instructions: a load, an operation and a result share one where they follow each other.

    void beginChain(Program& program) {
        program_ = &program;
        chainBegin_ = program.instructions.size();
    }

    void endChain(SlotIndex owner) {
        program_->chains.push_back({owner, static_cast<std::uint32_t>(program_->instructions.size() - chainBegin_)});
    }

    void load(SlotIndex slot) {
        program_->instructions.emplace_back();
        program_->instructions.back().load = slot;
    }

    void operate(Code code, std::uint32_t a, ArrayIndex b = none) {
        std::vector<Program::Instruction>& list = program_->instructions;
        const bool open =
            list.size() > chainBegin_ && list.back().code == Code::Nothing && list.back().result == Result::Nothing;
        if (!open) list.emplace_back();
        list.back().code = code;
        list.back().a = a;
        list.back().b = b;
    }

    void sumProduct(Code code, SlotIndex product) {
        operate(code, values_[graph_[product].left].array, values_[graph_[product].right].array);
    }

    void leave(Result result, SlotIndex target, ArrayIndex array) {
        std::vector<Program::Instruction>& list = program_->instructions;
        if (list.back().result != Result::Nothing) list.emplace_back();
        list.back().result = result;
        list.back().target = target;
        list.back().array = array;
    }

    void leaveNext(SlotIndex taker) {
        const ArrayIndex array = values_[taker].array;
        leave(array == none ? Result::Next : Result::NextKept, taker, array);
    }

    const TermGraph& graph_;
    Programs& programs_;
    std::vector<Value> values_;
    std::vector<SlotIndex> nextTaker_;
    /// The operations of one chain, the last one first.
    std::vector<SlotIndex> chain_;
    Program* program_ = nullptr;
    std::size_t chainBegin_ = 0;
};

}  // namespace

Program Program::needing(const std::vector<char>& needed) const {
    Program part;
    part.parts = parts;
    auto next = instructions.begin();
    const auto endSections = [&](std::size_t done) {
        for (std::size_t i = part.sectionEnds.size(); i < sectionEnds.size() && sectionEnds[i] <= done; ++i) {
            part.sectionEnds.push_back(part.chains.size());
        }
    };
    for (std::size_t i = 0; i < chains.size(); ++i) {
        endSections(i);
        const auto end = next + chains[i].length;
        if (needed[chains[i].owner] != 0) {
            part.chains.push_back(chains[i]);
            part.instructions.insert(part.instructions.end(), next, end);
        }
        next = end;
    }
    endSections(chains.size());
    return part;
}

Programs::Programs(const TermGraph& graph) { ChainWriter(graph, *this).write(); }

}  // namespace zirk
