// SPDX-License-Identifier: MIT
// A graph of terms compiled into chains.
#include "series/program.hpp"

#include <algorithm>

namespace zirk {

namespace {

using Kind = TermGraph::Kind;
using Code = Program::Code;
using Result = Program::Result;

constexpr int none = TermGraph::none;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

class Compiler {
public:
    Compiler(const TermGraph& graph, const std::vector<int>& first, Programs& programs)
        : graph_(graph),
          first_(first),
          programs_(programs),
          values_(graph.slots.size()),
          variableAt_(at(graph.variables), none) {}

    void compile() {
        for (int slot = 0; slot < graph_.size(); ++slot) {
            if (first_[at(slot)] == slot) classify(slot);
        }
        for (int slot = 0; slot < graph_.size(); ++slot) {
            if (first_[at(slot)] == slot && isOperation(slot)) carry(slot);
        }
        for (int slot = 0; slot < graph_.size(); ++slot) {
            if (first_[at(slot)] == slot) emit(slot);
        }
    }

private:
    /// What becomes of a slot.
    struct Value {
        int array = none;
        /// Operations that need its present term, and the variables that take their next term from it, as a list.
        int uses = 0;
        int firstTaker = none;
        /// The operand that is in the accumulator when this operation begins; its other operand.
        int carried = none;
        int other = none;
        bool isCarried = false;
        bool isFused = false;
        /// Others sum over its array, so that its term must be kept before they do.
        bool isSummed = false;
    };

    int left(int slot) const { return first_[at(graph_[slot].left)]; }
    int right(int slot) const { return first_[at(graph_[slot].right)]; }
    bool isConstant(int slot) const { return graph_[slot].constant; }
    bool isOperation(int slot) const { return !graph_.isVariable(slot) && !graph_.isLeaf(slot); }
    bool isProduct(int slot) const {
        return graph_[slot].kind == Kind::Multiply && !isConstant(left(slot)) && !isConstant(right(slot));
    }
    bool isQuotient(int slot) const { return graph_[slot].kind == Kind::Divide && !isConstant(right(slot)); }

    void giveArray(int slot, bool isSummed) {
        values_[at(slot)].isSummed |= isSummed;
        if (values_[at(slot)].array == none) values_[at(slot)].array = programs_.arrays++;
    }

    void classify(int slot) {
        const Kind kind = graph_[slot].kind;
        if (graph_.isVariable(slot)) {
            Value& source = values_[at(left(slot))];
            nextTaker_.push_back(source.firstTaker);
            source.firstTaker = static_cast<int>(programs_.variables.size());
            variableAt_[at(slot)] = static_cast<int>(programs_.variables.size());
            programs_.variables.push_back({slot, none});
            return;
        }
        if (!isOperation(slot)) return;
        if (isProduct(slot)) {
            giveArray(left(slot), true);
            giveArray(right(slot), true);
        } else if (kind == Kind::Multiply) {
            // The constant factor stays what it is; with two of them the left one varies in name only.
            ++values_[at(isConstant(right(slot)) ? left(slot) : right(slot))].uses;
        } else {
            ++values_[at(left(slot))].uses;
            if (kind == Kind::Plus || kind == Kind::Minus) ++values_[at(right(slot))].uses;
            if (isQuotient(slot)) {
                giveArray(right(slot), true);
                giveArray(slot, false);
            }
        }
    }

    /// Whether a value can stay in the accumulator for the only one that needs it.
    bool isFree(int slot) const {
        const Value& value = values_[at(slot)];
        return isOperation(slot) && !isConstant(slot) && value.uses == 1 && value.firstTaker == none && !value.isSummed;
    }

    void carry(int slot) {
        Value& value = values_[at(slot)];
        if (isProduct(slot)) return;
        const Kind kind = graph_[slot].kind;
        value.carried = left(slot);
        if (kind == Kind::Plus || kind == Kind::Minus) {
            value.other = right(slot);
            const bool fusible = isProduct(value.other) && isFree(value.other);
            if (fusible) {
                values_[at(value.other)].isFused = true;
            } else if (!isFree(value.carried) && isFree(value.other)) {
                std::swap(value.carried, value.other);
            }
        } else if (kind == Kind::Multiply || kind == Kind::Divide) {
            value.other = right(slot);
            if (kind == Kind::Multiply && !isConstant(value.other)) std::swap(value.carried, value.other);
        }
        values_[at(value.carried)].isCarried = !isConstant(slot) && isFree(value.carried);
    }

    Code codeOf(int slot) const {
        const Value& value = values_[at(slot)];
        switch (graph_[slot].kind) {
            case Kind::Plus:
                return values_[at(value.other)].isFused ? Code::PlusProduct : Code::Plus;
            case Kind::Minus:
                if (values_[at(value.other)].isFused) return Code::MinusProduct;
                return value.carried == left(slot) ? Code::Minus : Code::MinusFrom;
            case Kind::Negate:
                return Code::Negate;
            case Kind::Multiply:
                return isProduct(slot) ? Code::Product : Code::Scale;
            case Kind::Divide:
                return isQuotient(slot) ? Code::Quotient : Code::Ratio;
            default:
                return Code::Truncate;
        }
    }

    void emit(int slot) {
        const Value& value = values_[at(slot)];
        if (!isOperation(slot)) {
            emitLeaf(slot);
            return;
        }
        if (value.isCarried || value.isFused) return;
        // From the end of the chain back to where its first operand is loaded.
        chain_.assign(1, slot);
        while (values_[at(chain_.back())].carried != none &&
               values_[at(values_[at(chain_.back())].carried)].isCarried) {
            chain_.push_back(values_[at(chain_.back())].carried);
        }
        beginChain(isConstant(slot) ? programs_.constants : programs_.varying);
        if (!isProduct(chain_.back())) load(values_[at(chain_.back())].carried);
        for (auto step = chain_.rbegin(); step != chain_.rend(); ++step) emitOperation(*step);
        if (value.uses > 0 || isConstant(slot)) leave(Result::Store, slot, none);
        if (isConstant(slot)) {
            endChain(slot);
            emitLeaf(slot);
            return;
        }
        for (int taker = value.firstTaker; taker != none; taker = nextTaker_[at(taker)]) leaveNext(taker);
        endChain(slot);
    }

    void emitOperation(int slot) {
        const Value& value = values_[at(slot)];
        const Code code = codeOf(slot);
        if (code == Code::Product || code == Code::PlusProduct || code == Code::MinusProduct) {
            const int product = code == Code::Product ? slot : value.other;
            operate(code, {false, values_[at(left(product))].array}, values_[at(right(product))].array);
        } else if (code == Code::Quotient) {
            operate(code, {false, value.array}, values_[at(right(slot))].array);
        } else if (code == Code::Plus || code == Code::Minus || code == Code::MinusFrom) {
            operate(code, operandAt(value.other), none);
        } else {
            operate(code, {false, value.other}, none);
        }
        if (value.array != none) leave(Result::Keep, none, value.array);
    }

    /// Variables, time and constants need no computing, but may be summed over or be somebody's right-hand side.
    void emitLeaf(int slot) {
        const Value& value = values_[at(slot)];
        if (value.array != none && !graph_.isVariable(slot)) {
            beginChain(programs_.varying);
            load(slot);
            leave(Result::Keep, none, value.array);
            endChain(slot);
        }
        for (int taker = value.firstTaker; taker != none; taker = nextTaker_[at(taker)]) {
            beginChain(programs_.varying);
            load(slot);
            leaveNext(taker);
            endChain(programs_.variables[at(taker)].slot);
        }
    }

    void leaveNext(int taker) {
        Programs::Variable& variable = programs_.variables[at(taker)];
        variable.array = values_[at(variable.slot)].array;
        leave(variable.array == none ? Result::Next : Result::NextKept, taker, variable.array);
    }

    // Instructions: a load, an operation and a result share one where they follow each other.

    void beginChain(Program& program) {
        program_ = &program;
        chainBegin_ = program.instructions.size();
    }

    void endChain(int owner) {
        program_->chains.push_back({owner, static_cast<int>(program_->instructions.size() - chainBegin_)});
    }

    void load(int slot) {
        program_->instructions.emplace_back();
        program_->instructions.back().load = operandAt(slot);
    }

    void operate(Code code, Program::Operand a, int b) {
        std::vector<Program::Instruction>& list = program_->instructions;
        const bool open =
            list.size() > chainBegin_ && list.back().code == Code::Nothing && list.back().result == Result::Nothing;
        if (!open) list.emplace_back();
        list.back().code = code;
        list.back().a = a;
        list.back().b = b;
    }

    void leave(Result result, int target, int array) {
        std::vector<Program::Instruction>& list = program_->instructions;
        if (list.back().result != Result::Nothing) list.emplace_back();
        list.back().result = result;
        list.back().target = target;
        list.back().array = array;
    }

    Program::Operand operandAt(int slot) const {
        const bool ofVariable = graph_.isVariable(slot);
        return {ofVariable, ofVariable ? variableAt_[at(slot)] : slot};
    }

    const TermGraph& graph_;
    const std::vector<int>& first_;
    Programs& programs_;
    std::vector<Value> values_;
    std::vector<int> nextTaker_;
    std::vector<int> variableAt_;
    std::vector<int> chain_;
    Program* program_ = nullptr;
    std::size_t chainBegin_ = 0;
};

}  // namespace

Program Program::needing(const std::vector<char>& needed) const {
    Program part;
    auto next = instructions.begin();
    for (const Chain& chain : chains) {
        const auto end = next + chain.length;
        if (needed[at(chain.owner)] != 0) {
            part.chains.push_back(chain);
            part.instructions.insert(part.instructions.end(), next, end);
        }
        next = end;
    }
    return part;
}

Programs::Programs(const TermGraph& graph, const std::vector<int>& first) { Compiler(graph, first, *this).compile(); }

}  // namespace zirk
