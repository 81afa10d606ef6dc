// SPDX-License-Identifier: MIT
// What all nodes share: the caches, the walks over deep formulas, and the end of nodes.
#include "expr/expr.hpp"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <stdexcept>

#include "expr/calculus.hpp"
#include "expr/walk.hpp"
#include "zirk/error.hpp"

namespace zirk {

Expr::Expr(ExprType type)
    : type_(type),
      // The shared empty node belongs to no system.
      termStamp_(type == ExprType::Nothing ? -1 : Calculus::current().stepStamp - 1),
      resultStamp_(termStamp_),
      // The shared empty node refers to itself.
      derivative_(type == ExprType::Nothing ? this : nullptr) {}

void Expr::Ref::destroy(Expr* node) noexcept {
    // A node releases its operands while it dies: they queue up here instead of dying inside each other.
    static thread_local Expr* queue = nullptr;
    static thread_local bool draining = false;
    node->nextDead_ = queue;
    queue = node;
    if (draining) return;
    draining = true;
    while (queue != nullptr) {
        Expr* dead = queue;
        queue = dead->nextDead_;
        delete dead;
    }
    draining = false;
}

Expr* Expr::operand(int) const { return nullptr; }

real& Expr::termSlot(int k) {
    const auto index = static_cast<std::size_t>(k);
    if (index >= terms_.size()) growTerms(index + 1);
    return terms_[index];
}

void Expr::growTerms(std::size_t size) {
    // Two steps where few can come: what doubling leaves behind would be half the memory of large systems.
    constexpr std::size_t atFirst = 8;
    constexpr std::size_t few = 128;
    const auto most = static_cast<std::size_t>(Calculus::current().limits.maxOrder) + 1;
    if (size > terms_.capacity() && size > 1 && size <= most && most <= few) {
        terms_.reserve(size <= atFirst ? std::min(atFirst, most) : most);
    }
    terms_.resize(size);
}

void Expr::dropTerms() {
    constexpr std::size_t worthIt = 16;
    if (terms_.size() < worthIt) return;
    terms_.resize(1);
    terms_.shrink_to_fit();
}

void Expr::BeginStep() {
    const int stamp = Calculus::current().stepStamp;
    if (termStamp_ == stamp) return;
    termStamp_ = stamp;
    highest_ = -1;
}

// Taylor terms ------------------------------------------------------------------------------------------------------

struct TermTask {
    Expr* node = nullptr;
    int k = 0;
    int at = 0;

    bool enter() { return node->enterTerm(k); }
    bool next(TermTask& dependency) {
        Expr* source = node->termSource(at++);
        if (source == nullptr) return false;
        const int order = node->type() == ExprType::Differential ? k - 1 : k;
        dependency = {source, order, 0};
        return true;
    }
    void leave() { node->leaveTerm(k); }
};

bool Expr::enterTerm(int k) {
    if (type_ == ExprType::Number || type_ == ExprType::Time || type_ == ExprType::Algebraic) return false;
    BeginStep();
    if (k > Calculus::current().limits.maxOrder) throw std::overflow_error("Order overflow");
    return k > highest_;
}

void Expr::leaveTerm(int k) {
    GetDY(k, termSlot(k));
    highest_ = k;
}

void Expr::DY(int k, real& out) {
    BeginStep();
    if (k > Calculus::current().limits.maxOrder) throw std::overflow_error("Order overflow");
    if (k > highest_) {
        if (Nesting::tooDeep()) {
            walk(TermTask{this, k, 0});
        } else {
            const Nesting nesting;
            leaveTerm(k);
        }
    }
    // Only term k was computed: a lower one that nobody asked for is whatever the slot holds.
    out = termSlot(k);
}

// End-of-step value -------------------------------------------------------------------------------------------------

struct ValueTask {
    Expr* node = nullptr;
    int at = 0;

    bool enter() { return node->enterValue(); }
    bool next(ValueTask& dependency) {
        dependency = {node->source(at++), 0};
        return dependency.node != nullptr;
    }
    void leave() { node->leaveValue(); }
};

bool Expr::enterValue() {
    BeginStep();
    Calculus& calculus = Calculus::current();
    if (resultStamp_ == calculus.stepStamp && !calculus.forceRecompute) return false;
    // Stamped before it is computed: a loop of algebraic equations reads the value of the step before.
    resultStamp_ = calculus.stepStamp;
    calculus.forceRecompute = false;
    return true;
}

void Expr::leaveValue() {
    real value = 0;
    Result(value, true);
    result_ = value;
    noteSteadiness();
}

void Expr::noteSteadiness() {
    const Calculus& calculus = Calculus::current();
    steady_ = calculus.limits.steadyStop != 0 && calculus.limits.accuracy > std::fabs(start_ - result_);
}

void Expr::Value(real& out) {
    if (Nesting::tooDeep()) {
        walk(ValueTask{this, 0});
    } else if (enterValue()) {
        const Nesting nesting;
        leaveValue();
    }
    out = result_;
}

// Initial value and derivative --------------------------------------------------------------------------------------

namespace {

[[noreturn]] void failLoop() {
    throw Error("#(ERR) Algebraic equations inside a function refer to each other in a loop\n", 1);
}

}  // namespace

struct InitialTask {
    Expr* node = nullptr;
    int at = 0;

    bool enter() {
        if (node->knowsInitialValue()) return false;
        if (node->inProgress_) failLoop();
        node->inProgress_ = true;
        return true;
    }
    bool next(InitialTask& dependency) {
        dependency = {node->source(at++), 0};
        return dependency.node != nullptr;
    }
    void leave() {
        node->inProgress_ = false;
        node->InitValue(node->initial_);
        node->initialStamp_ = Calculus::current().initialStamp;
    }
};

void Expr::InitialValue(real& out) {
    walk(InitialTask{this, 0});
    out = initial_;
}

bool Expr::knowsInitialValue() const { return initialStamp_ == Calculus::current().initialStamp; }

struct DerivativeTask {
    Expr* node = nullptr;
    int at = 0;

    bool enter() {
        if (node->derivative_->type() != ExprType::Nothing) return false;
        if (node->inProgress_) failLoop();
        node->inProgress_ = true;
        return true;
    }
    bool next(DerivativeTask& dependency) {
        dependency = {node->derivativeSource(at++), 0};
        return dependency.node != nullptr;
    }
    void leave() {
        node->inProgress_ = false;
        node->MakeDerivative();
    }
};

const Expr::Ref& Expr::Derivative() {
    walk(DerivativeTask{this, 0});
    return derivative_;
}

// Expansion and printing --------------------------------------------------------------------------------------------

Expr::Ref Expr::Converted() {
    struct Frame {
        Expr* node;
        int pending;
    };
    const auto frameOf = [](Expr* node) {
        node->requireExpansion();
        int operands = 0;
        while (node->operand(operands) != nullptr) ++operands;
        return Frame{node, operands};
    };
    std::vector<Frame> stack{frameOf(this)};
    std::vector<Ref> results;
    std::vector<Ref> operands;
    while (!stack.empty()) {
        Frame& top = stack.back();
        if (top.pending > 0) {
            stack.push_back(frameOf(top.node->operand(--top.pending)));
            continue;
        }
        Expr* node = top.node;
        stack.pop_back();
        std::size_t count = 0;
        while (node->operand(static_cast<int>(count)) != nullptr) ++count;
        const auto first = results.end() - static_cast<std::ptrdiff_t>(count);
        operands.assign(first, results.end());
        results.erase(first, results.end());
        results.push_back(node->ConvertExpr(operands));
    }
    return results.back();
}

void Expr::Print(std::ostream& out) const {
    struct Frame {
        const Expr* node;
        int at;
    };
    std::vector<Frame> stack{{this, 0}};
    while (!stack.empty()) {
        Frame& top = stack.back();
        top.node->printPart(out, top.at);
        const Expr* operand = top.node->operand(top.at++);
        if (operand != nullptr) {
            stack.push_back({operand, 0});
        } else {
            stack.pop_back();
        }
    }
}

// The empty node ----------------------------------------------------------------------------------------------------

void NothingExpr::GetDY(int, real&) { throw Error("#(ERR) virtual void NothingExpr::GetDY(int, real&) called!\n", 1); }

void NothingExpr::Result(real&, bool) {
    throw Error("#(ERR) virtual void NothingExpr::Result(real&, bool) called!\n", 1);
}

void NothingExpr::InitValue(real&) { throw Error("#(ERR) virtual void NothingExpr::InitValue(real&) called!\n", 1); }

void NothingExpr::printPart(std::ostream& out, int) const { out << "[NULL]"; }

std::ostream& operator<<(std::ostream& out, const Expr::Ref& handle) { return out << handle->useCount(); }

}  // namespace zirk
