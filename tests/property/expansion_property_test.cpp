// SPDX-License-Identifier: MIT
// Random systems: the equations of every temporary are the derivative of the function that it replaces.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "expr/elementary.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

/// Time and the two variables of a system.
struct Point {
    real t, a, b;
};

/// A formula of the test's own, with a text and a value. Kinds are those of nodes.
struct Formula {
    ExprType kind = ExprType::Nothing;
    std::string leaf;
    std::shared_ptr<Formula> left;
    std::shared_ptr<Formula> right;

    std::string text() const {
        switch (kind) {
            case ExprType::Nothing:
                return leaf;
            case ExprType::Plus:
                return "(" + left->text() + "+" + right->text() + ")";
            case ExprType::Minus:
                return "(" + left->text() + "-" + right->text() + ")";
            case ExprType::Multiply:
                return "(" + left->text() + "*" + right->text() + ")";
            case ExprType::Divide:
                return "(" + left->text() + "/" + right->text() + ")";
            case ExprType::UnMinus:
                return "(-" + left->text() + ")";
            case ExprType::ACotanh:
                // Printed and read under different names.
                return "argcotanh(" + left->text() + ")";
            default:
                return std::string(functionName(kind)) + "(" + left->text() + ")";
        }
    }

    /// By the C library alone.
    real at(const Point& p) const {
        if (kind == ExprType::Nothing)
            return leaf == "t" ? p.t : leaf == "a" ? p.a : leaf == "b" ? p.b : std::stod(leaf);
        const real x = left->at(p);
        const real y = right ? right->at(p) : 0;
        switch (kind) {
            case ExprType::Plus:
                return x + y;
            case ExprType::Minus:
                return x - y;
            case ExprType::Multiply:
                return x * y;
            case ExprType::Divide:
                return x / y;
            case ExprType::UnMinus:
                return -x;
            case ExprType::Sin:
                return sinl(x);
            case ExprType::Tan:
                return tanl(x);
            case ExprType::Cotan:
                return 1 / tanl(x);
            case ExprType::ASin:
                return asinl(x);
            case ExprType::ATan:
                return atanl(x);
            case ExprType::ACotan:
                return atanl(1 / x);
            case ExprType::Sinh:
                return sinhl(x);
            case ExprType::Cosh:
                return coshl(x);
            case ExprType::Tanh:
                return tanhl(x);
            case ExprType::Cotanh:
                return 1 / tanhl(x);
            case ExprType::ATanh:
                return atanhl(x);
            case ExprType::ACotanh:
                return atanhl(1 / x);
            case ExprType::Sqrt:
                return sqrtl(x);
            case ExprType::Exp:
                return expl(x);
            default:
                return std::nanl("");
        }
    }

    /// Arguments well inside the domains, values of moderate size.
    bool isTame(const Point& p) const {
        if (kind == ExprType::Nothing) return true;
        if (!left->isTame(p) || (right && !right->isTame(p)) || std::fabs(at(p)) > 20) return false;
        const real x = std::fabs(left->at(p));
        switch (kind) {
            case ExprType::Divide:
                return std::fabs(right->at(p)) > 0.3L;
            case ExprType::Tan:
                return x < 1.2L;
            case ExprType::Cotan:
                return x > 0.4L && x < 2.5L;
            case ExprType::ASin:
                return x < 0.8L;
            case ExprType::ACotan:
            case ExprType::Cotanh:
                return x > 0.4L;
            case ExprType::ATanh:
                return left->at(p) > 0.01L && x < 0.8L;
            case ExprType::ACotanh:
                return left->at(p) > 1.3L;
            case ExprType::Sqrt:
                return left->at(p) > 0.2L;
            default:
                return true;
        }
    }
};

using FormulaRef = std::shared_ptr<Formula>;
using Rate = std::function<real(const Point&)>;

/// What each temporary stands for, in the order of their numbers.
void listTemporaries(const FormulaRef& f, std::vector<Rate>& list) {
    if (f->right) listTemporaries(f->right, list);
    if (f->left) listTemporaries(f->left, list);
    const FormulaRef u = f->left;
    const Rate itself = [f](const Point& p) { return f->at(p); };
    const auto square = [u](const Point& p) { return u->at(p) * u->at(p); };
    switch (f->kind) {
        case ExprType::Sin:
            list.insert(list.end(), {itself, [u](const Point& p) { return cosl(u->at(p)); }});
            break;
        case ExprType::Sinh:
            list.insert(list.end(), {itself, [u](const Point& p) { return coshl(u->at(p)); }});
            break;
        case ExprType::Cosh:
            list.insert(list.end(), {itself, [u](const Point& p) { return sinhl(u->at(p)); }});
            break;
        case ExprType::ASin:
            list.insert(list.end(), {itself, [square](const Point& p) { return sqrtl(1 - square(p)); }});
            break;
        case ExprType::ATan:
        case ExprType::ACotan:
            list.insert(list.end(), {[u](const Point& p) { return 2 * u->at(p); },
                                     [square](const Point& p) { return 1 + square(p); }, itself});
            break;
        case ExprType::ATanh:
        case ExprType::ACotanh:
            list.insert(list.end(), {[u](const Point& p) { return -2 * u->at(p); },
                                     [square](const Point& p) { return 1 - square(p); }, itself});
            break;
        default:
            if (f->kind >= ExprType::Sin) list.push_back(itself);
    }
}

class Generator {
public:
    explicit Generator(unsigned seed) : random_(seed) {}

    FormulaRef tame(const Point& p) {
        for (;;) {
            FormulaRef f = formula(4);
            if (f->isTame(p)) return f;
        }
    }
    real start() { return (1 + below(15)) / real{16}; }

private:
    int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }

    FormulaRef variable() {
        auto f = std::make_shared<Formula>();
        f->leaf = std::string(1, "abt"[below(3)]);
        return f;
    }
    FormulaRef leaf() {
        if (below(3) != 0) return variable();
        auto f = std::make_shared<Formula>();
        f->leaf = std::to_string(2 + below(9)) + ".5";
        return f;
    }
    FormulaRef formula(int depth) {
        if (depth == 0) return leaf();
        auto f = std::make_shared<Formula>();
        static constexpr ExprType functions[] = {ExprType::Sin,  ExprType::Tan,    ExprType::Cotan, ExprType::ASin,
                                                 ExprType::ATan, ExprType::ACotan, ExprType::Sinh,  ExprType::Cosh,
                                                 ExprType::Tanh, ExprType::Cotanh, ExprType::ATanh, ExprType::ACotanh,
                                                 ExprType::Sqrt, ExprType::Exp};
        const int choice = below(10);
        if (choice < 4) {
            f->kind = functions[below(14)];
            f->left = varying(depth - 1);
        } else if (choice == 4) {
            f->kind = ExprType::UnMinus;
            f->left = formula(depth - 1);
        } else {
            static constexpr ExprType operators[] = {ExprType::Plus, ExprType::Minus, ExprType::Multiply,
                                                     ExprType::Divide};
            f->kind = operators[below(4)];
            // Two constants would be folded, perhaps to a zero that annihilates functions.
            f->left = varying(depth - 1);
            f->right = formula(depth - 1);
            if (below(2) == 0) std::swap(f->left, f->right);
        }
        return f;
    }
    /// Not a constant, which would be folded.
    FormulaRef varying(int depth) {
        for (;;) {
            FormulaRef f = depth == 0 ? variable() : formula(depth);
            if (f->text().find_first_of("abt") == std::string::npos) continue;
            if (names(*f) > 0) return f;
        }
    }
    static int names(const Formula& f) {
        if (f.kind == ExprType::Nothing) return f.leaf.find_first_of("abt") == std::string::npos ? 0 : 1;
        return names(*f.left) + (f.right ? names(*f.right) : 0);
    }

    std::mt19937 random_;
};

/// Fourth-order central difference of g along the flow through the start.
real rateAlong(const Rate& g, const Point& p, real da, real db) {
    const auto at = [&](real s) { return g({p.t + s, p.a + s * da, p.b + s * db}); };
    const real s = 1e-4L;
    return (8 * (at(s) - at(-s)) - (at(2 * s) - at(-2 * s))) / (12 * s);
}

TEST(ExpandedSystems, HaveTheTrueDerivativesAsRightHandSides) {
    Generator generator(20240607);
    std::size_t checked = 0;
    for (int round = 0; round < 400; ++round) {
        const Point p{0, generator.start(), generator.start()};
        const FormulaRef fa = generator.tame(p);
        const FormulaRef fb = generator.tame(p);
        const FormulaRef fc = generator.tame(p);
        std::ostringstream text;
        text << "a'=" << fa->text() << "&" << p.a << "; b'=" << fb->text() << "&" << p.b << "; c'=" << fc->text()
             << ";";
        SCOPED_TRACE(text.str());

        std::vector<Rate> temporaries;
        for (const FormulaRef& f : {fa, fb, fc}) listTemporaries(f, temporaries);
        const real da = fa->at(p);
        const real db = fb->at(p);

        Workbench bench;
        bench.limits.accuracy = 1e-21L;
        prepareText(bench, text.str());
        const EquationTable& equations = bench.system.equations;
        ASSERT_EQ(equations.size(), temporaries.size() + 3);
        for (std::size_t i = 0; i < temporaries.size(); ++i) {
            const Differential& made = *equations.resolve("%" + std::to_string(i));
            const real start = temporaries[i](p);
            EXPECT_TRUE(isNear(made.startValue(), start, 1e-14L * (1 + std::fabs(start)))) << made.name();
            const real expected = rateAlong(temporaries[i], p, da, db);
            EXPECT_TRUE(isNear(initialOf(made.rightHandSide()), expected, 1e-7L * (1 + std::fabs(expected))))
                << made.name() << "' = " << printed(made.rightHandSide());
            ++checked;
        }
        if (::testing::Test::HasFailure()) return;
    }
    EXPECT_GT(checked, 1000u);
}

}  // namespace
