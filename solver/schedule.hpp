// SPDX-License-Identifier: MIT
// The fast way to sum all variables: the graph flattened once, computed order by order.
#pragma once

#include <unordered_map>
#include <vector>

#include "expr/series_sum.hpp"
#include "lang/equation_table.hpp"

/// Sums every differential variable of a prepared system, to the same bits as the nodes do by themselves.
///
/// Each node has a slot. Operations run in an order in which operands come first; at order k every slot in use gets its
/// term k, then every variable in use gets term k + 1. Terms are kept only where a product or quotient sums over them
/// and for variables.
class Schedule {
public:
    Schedule(Calculus& calculus, const EquationTable& equations);

    /// Sums and hands the results to the variables. False, with no variable touched, when it has to be left to the
    /// nodes: at the first point, for limits that need no terms, and for terms that are not finite where a shortcut
    /// needs them to be.
    bool sumAll();

private:
    enum class Kind : unsigned char { Plus, Minus, Multiply, Divide, Negate, Truncate, ScaleLeft, ScaleRight, Ratio };

    struct Operation {
        Kind kind;
        int out;
        int left;
        int right;
    };
    struct Leaf {
        Expr* node;
        int slot;
    };
    struct Variable {
        Differential* node;
        int slot;
        int source;
        bool needed;
        SeriesSum series;
    };

    void build();
    int newSlot(Expr* node);
    void emit(Expr* root);
    Operation operationOf(const Expr& node) const;
    int slotOf(const Expr* node) const { return slots_.at(node); }
    void giveArray(int slot);

    void begin();
    void setLeaves(int k);
    bool runOperations(int k);
    void advanceVariables(int k);
    /// Number of variables whose own sum goes on.
    std::size_t countWanting() const;
    void markNeeded();
    void spreadHighest();
    /// Raises the highest term of everything that `slot` is made from, up to variables, which join their level.
    void raise(int slot, int highest);
    void reserveTerms(int k);
    void keep(int slot, int k);

    static std::size_t at(int slot) { return static_cast<std::size_t>(slot); }
    real* history(int slot) { return &terms_[static_cast<std::size_t>(array_[at(slot)]) * stride_]; }
    real& now(int slot) { return now_[at(slot)]; }

    Calculus& calculus_;
    const EquationTable& equations_;
    bool built_ = false;
    std::unordered_map<const Expr*, int> slots_;
    std::vector<Operation> all_;
    std::vector<Operation> active_;
    std::vector<Leaf> leaves_;
    std::vector<Variable> variables_;
    // Per slot: the term of the present order; term 0 of a constant; the index of its term array, -1 for none; whether
    // a wanted sum reaches it; the highest term that the nodes would have computed.
    std::vector<real> now_;
    std::vector<real> constant_;
    std::vector<int> array_;
    std::vector<char> needed_;
    std::vector<int> highest_;
    // Per slot: the operation that makes it, or the variable that it belongs to; -1 for none.
    std::vector<int> operationAt_;
    std::vector<int> variableAt_;
    std::vector<int> pending_;
    std::vector<std::vector<int>> levels_;
    std::size_t arrays_ = 0;
    std::size_t stride_ = 40;
    std::vector<real> terms_;
};
