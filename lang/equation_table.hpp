// SPDX-License-Identifier: MIT
// The tables that the input fills, and the placeholder for a variable that is known only by name.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "expr/leaves.hpp"

namespace zirk {

/// Variables by name, in bytewise order: y, y%1, y%2, ya. The k-th derivative of y is the variable "y%k"; temporary
/// variables are "%0", "%1", ... and come first.
class EquationTable {
public:
    using Map = std::map<std::string, Expr::Ref>;

    EquationTable() = default;
    EquationTable(const EquationTable&) = delete;
    EquationTable& operator=(const EquationTable&) = delete;
    ~EquationTable();

    /// Enters a variable under its name; a later one replaces an earlier one.
    void enter(Differential* variable);

    /// Null when the name is not defined.
    Differential* find(const std::string& name) const;

    /// As find; Error for an undefined name.
    Differential* resolve(const std::string& name) const;

    /// Re-points a handle at the variable of that name. Error, with a text of its own, for an undefined name.
    void redirect(Expr::Ref& handle, const std::string& name) const;

    std::size_t size() const { return map_.size(); }

    /// Walks see the variables in the order of their names.
    class Iterator {
    public:
        explicit Iterator(Map::const_iterator at) : at_(at) {}
        Differential& operator*() const { return *asVariable(at_->second.get()); }
        Iterator& operator++() {
            ++at_;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return at_ != other.at_; }

    private:
        Map::const_iterator at_;
    };
    Iterator begin() const { return Iterator(map_.begin()); }
    Iterator end() const { return Iterator(map_.end()); }

    /// The same variables as a list, for loops at every point; good until the next one is entered.
    const std::vector<Differential*>& list() const {
        if (list_.empty()) fillList();
        return list_;
    }

private:
    void fillList() const;

    Map map_;
    mutable std::vector<Differential*> list_;
};

/// What an input text defines.
struct EquationSystem {
    EquationTable equations;
    std::map<std::string, real> initialValues;
    /// Some start value was written for another time than 0.
    bool hasOtherStartTime = false;
};

/// Name of the k-th derivative of a variable; the variable itself for k = 0.
std::string derivativeName(const std::string& name, int k);

/// A use of a variable by name, resolved by the expansion.
class Equation final : public Expr {
public:
    Equation(const std::string& name, const EquationTable& table)
        : Expr(ExprType::Equation), name_(name), table_(table) {}

    void GetDY(int, real&) override {}
    void Result(real&, bool) override {}
    void MakeDerivative() override {}
    /// The initial value of the variable that it names.
    void InitValue(real& out) override;
    Expr* source(int i) const override;
    Ref ConvertExpr(const std::vector<Ref>& expanded) override;
    void printPart(std::ostream& out, int i) const override;

private:
    std::string name_;
    const EquationTable& table_;
};

}  // namespace zirk
