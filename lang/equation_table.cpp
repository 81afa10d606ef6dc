// SPDX-License-Identifier: MIT
// Names to variables.
#include "lang/equation_table.hpp"

#include <ostream>

#include "zirk/error.hpp"

namespace zirk {

EquationTable::~EquationTable() {
    // Equations refer to each other in cycles.
    for (Differential& variable : *this) variable.detach();
}

void EquationTable::enter(Differential* variable) {
    Expr::Ref& place = map_[variable->name()];
    // Before equations are prepared others know a variable by its name only: what it refers to goes with it.
    Differential* replaced = asVariable(place.get());
    if (replaced != nullptr && replaced != variable) replaced->detach();
    place = Expr::Ref(variable);
    list_.clear();
}

void EquationTable::fillList() const {
    list_.reserve(size());
    for (Differential& variable : *this) list_.push_back(&variable);
}

Differential* EquationTable::find(const std::string& name) const {
    const auto found = map_.find(name);
    return found == map_.end() ? nullptr : asVariable(found->second.get());
}

Differential* EquationTable::resolve(const std::string& name) const {
    Differential* variable = find(name);
    if (variable == nullptr) throw Error("\n#(ERR) Reference to undefined equation \"" + name + "\"\n", 1);
    return variable;
}

void EquationTable::redirect(Expr::Ref& handle, const std::string& name) const {
    Differential* variable = find(name);
    if (variable == nullptr) throw Error("#(ERR) Undefined reference to " + name + " equation\n", 1);
    handle = Expr::Ref(variable);
}

std::string derivativeName(const std::string& name, int k) { return k == 0 ? name : name + "%" + std::to_string(k); }

void Equation::InitValue(real& out) { table_.resolve(name_)->InitialValue(out); }

Expr* Equation::source(int i) const { return i == 0 ? table_.resolve(name_) : nullptr; }

Expr::Ref Equation::ConvertExpr(const std::vector<Ref>&) { return table_.resolve(name_); }

void Equation::printPart(std::ostream& out, int) const { out << name_; }

}  // namespace zirk
