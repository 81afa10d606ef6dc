// SPDX-License-Identifier: MIT
// Preparation: every equation expanded, every function replaced by temporary variables.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "expr/calculus.hpp"
#include "expr/function.hpp"
#include "lang/equation_table.hpp"

namespace zirk {

/// One walk over the equation table in the order of names.
///
/// The walk expands right-hand sides, names temporaries and takes their start values; start values from statements are
/// applied as their variable is reached. The right-hand sides of temporaries are built when the walk is done, from
/// expanded forms only; one that another's derivative needs is built first.
class Expansion final : public FunctionExpander {
public:
    Expansion(Calculus& calculus, EquationSystem& system);
    ~Expansion() override;
    Expansion(const Expansion&) = delete;
    Expansion& operator=(const Expansion&) = delete;

    /// Error for undefined names, for functions without an expansion and for algebraic loops inside functions.
    void prepare();

    void require(ExprType function) const override;
    Expr::Ref expand(UnOp& function) override;

private:
    class Site;
    class Temporary;

    void prepareEquation(Differential& variable);

    Calculus& calculus_;
    EquationSystem& system_;
    int counter_ = 0;
    std::vector<std::unique_ptr<Site>> sites_;
};

}  // namespace zirk
