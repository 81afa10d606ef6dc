// SPDX-License-Identifier: MIT
// The common steps of every function's expansion.
#include "expand/expansion.hpp"

#include "expr/arithmetic.hpp"
#include "expr/elementary.hpp"
#include "expr/formula_text.hpp"
#include "zirk/error.hpp"

namespace zirk {

namespace {

const Recipe& recipeOf(ExprType kind) {
    const Recipe& recipe = functionOf(kind).classic;
    if (recipe.variables > 0) return recipe;
    throw Error(std::string("#(ERR) ") + recipe.notImplemented + "::ConvertExpr() is not implemented\n", 1);
}

real initialValueOf(Expr& node) {
    real value = 0;
    node.InitialValue(value);
    return value;
}

}  // namespace

/// One occurrence of a function: its operand, and the variables that replace it.
class Expansion::Site {
public:
    Site(const Recipe& recipe, const Expr::Ref& operand) : recipe_(recipe), operand_(operand) {}

    void add(const Expr::Ref& variable) { variables_[count_++] = variable; }
    Expr* operand() const { return operand_.get(); }

    /// Right-hand sides of all variables of the site, once.
    void build() {
        if (built_) return;
        built_ = true;
        const Recipe::Variables rates = recipe_.rates(operand_, operand_->Derivative(), variables_);
        for (std::size_t i = 0; i < count_; ++i) asVariable(variables_[i].get())->setRightHandSide(rates[i]);
    }

    /// That the variables follow another law than the function.
    void note(const std::string& remark) { remark_ = remark; }
    /// Empty where the operand stands still: all laws hold its value then.
    std::string remark() const { return isWrittenZero(*operand_->Derivative()) ? "" : remark_; }

private:
    const Recipe& recipe_;
    Expr::Ref operand_;
    std::string remark_;
    Recipe::Variables variables_;
    std::size_t count_ = 0;
    bool built_ = false;
};

/// A variable whose right-hand side is built when somebody needs it, and at the latest after the walk.
class Expansion::Temporary final : public Differential {
public:
    Temporary(const std::string& name, real start, Site& site) : Differential(name, Expr::Ref(), start), site_(site) {}

    Expr* derivativeSource(int i) const override {
        const bool built = rightHandSide()->type() != ExprType::Nothing;
        return built || i > 0 ? nullptr : site_.operand();
    }
    void MakeDerivative() override {
        if (rightHandSide()->type() == ExprType::Nothing) site_.build();
        Differential::MakeDerivative();
    }

private:
    // Outlived by the variable; not touched any more once the right-hand side is there.
    Site& site_;
};

Expansion::Expansion(Calculus& calculus, EquationSystem& system) : calculus_(calculus), system_(system) {
    calculus_.expander = this;
}

Expansion::~Expansion() { calculus_.expander = nullptr; }

void Expansion::prepare() {
    // Temporaries sort before every other name: they land behind the walk.
    for (Differential& variable : system_.equations) prepareEquation(variable);
    std::string& remark = calculus_.remarks.function;
    for (const auto& site : sites_) {
        site->build();
        if (remark.empty()) remark = site->remark();
    }
}

void Expansion::prepareEquation(Differential& variable) {
    const bool wasKnown = isAlgebraic(variable) && variable.knowsInitialValue();
    const real before = wasKnown ? initialValueOf(variable) : 0;
    variable.setRightHandSide(variable.rightHandSide()->Converted());
    // An expanded square root starts with more digits than its function gives.
    if (wasKnown && !sameValue(before, initialValueOf(*variable.rightHandSide()))) ++calculus_.initialStamp;
    const auto statement = system_.initialValues.find(variable.name());
    if (statement != system_.initialValues.end()) variable.setInitialValue(statement->second);
}

void Expansion::require(ExprType function) const { recipeOf(function); }

Expr::Ref Expansion::expand(UnOp& function) {
    const Recipe& recipe = recipeOf(function.type());
    const real u0 = initialValueOf(*function.argument());
    const Recipe::Starts starts = recipe.starts(u0);
    sites_.push_back(std::make_unique<Site>(recipe, function.argument()));
    Site& site = *sites_.back();
    const char* instead = recipe.otherLaw != nullptr ? recipe.otherLaw(u0) : nullptr;
    if (instead != nullptr) site.note(formulaText(function) + " is not what its name says: " + instead);
    Expr::Ref result;
    for (int i = 0; i < recipe.variables; ++i) {
        auto* variable = new Temporary("%" + std::to_string(counter_++), starts[static_cast<std::size_t>(i)], site);
        variable->setOrigin(Expr::Ref(&function));
        system_.equations.enter(variable);
        site.add(variable);
        if (i == recipe.result) result = Expr::Ref(variable);
    }
    return result;
}

}  // namespace zirk
