// SPDX-License-Identifier: MIT
// What tests of nodes and of the preparation share: settings in force, builders of leaves, and readers of nodes.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "expand/expansion.hpp"
#include "expr/leaves.hpp"
#include "lang/compiler.hpp"
#include "lang/model_content.hpp"
#include "zirk/error.hpp"

using namespace zirk;

using Ref = Expr::Ref;

/// A system of its own, in force as long as it lives, with the limits that a run starts from.
struct Workbench : CompiledSystem {
    Workbench() : CompiledSystem(SeriesLimits(), real{0.1}) {}

    Calculus::Scope scope{calculus};
};

/// A workbench for every test.
class NodeTest : public ::testing::Test, protected Workbench {
protected:
    /// The next point follows an accepted one.
    void nextStep() {
        calculus.prevStepStamp = calculus.stepStamp;
        ++calculus.stepStamp;
    }

    /// The same point is done again.
    void repeatStep() {
        ++calculus.stepStamp;
        calculus.prevStepStamp = calculus.stepStamp;
    }
};

/// A node with prescribed terms; the value and the initial value are given beside them.
class Series : public Expr {
public:
    explicit Series(std::vector<real> terms, real value = 0, real initial = 0)
        : Expr(ExprType::Plus), given_(std::move(terms)), value_(value), initialValue_(initial) {}

    void GetDY(int k, real& out) override {
        const auto index = static_cast<std::size_t>(k);
        out = index < given_.size() ? given_[index] : 0;
    }
    void Result(real& out, bool) override { out = value_; }
    void MakeDerivative() override { derivative_ = Ref(new Number(0)); }
    void InitValue(real& out) override { out = initialValue_; }
    Ref ConvertExpr(const std::vector<Ref>&) override { return this; }
    void printPart(std::ostream& out, int) const override { out << "series"; }

private:
    std::vector<real> given_;
    real value_;
    real initialValue_;
};

inline Ref number(real x) { return new Number(x); }

inline Differential* differential(const std::string& name, const Ref& rightHandSide = Ref(), real start = 0) {
    return new Differential(name, rightHandSide, start);
}

inline real termOf(const Ref& node, int k) {
    real out = 0;
    node->DY(k, out);
    return out;
}

/// Terms 0 to n - 1, asked for in rising order.
inline std::vector<real> terms(const Ref& node, int n) {
    std::vector<real> result;
    for (int k = 0; k < n; ++k) result.push_back(termOf(node, k));
    return result;
}

inline real valueOf(const Ref& node) {
    real out = 0;
    node->Value(out);
    return out;
}

inline real initialOf(const Ref& node) {
    real out = 0;
    node->InitialValue(out);
    return out;
}

inline std::string printed(const Ref& node) {
    std::ostringstream out;
    node->Print(out);
    return out.str();
}

/// A number that the compiler does not know, so that the C library computes with it at run time.
inline real unknown(real x) {
    volatile real hidden = x;
    return hidden;
}

/// |a - b| within the tolerance, in extended precision.
inline ::testing::AssertionResult isNear(real a, real b, real tolerance) {
    if (std::fabs(a - b) <= tolerance) return ::testing::AssertionSuccess();
    std::ostringstream out;
    out.precision(22);
    out << a << " and " << b << " differ by " << a - b;
    return ::testing::AssertionFailure() << out.str();
}

/// Message and status of the failure that an action ends with.
struct Ending {
    std::string text;
    int status = 0;
    bool operator==(const Ending& other) const { return text == other.text && status == other.status; }
};

inline std::ostream& operator<<(std::ostream& out, const Ending& ending) {
    return out << '"' << ending.text << "\", status " << ending.status;
}

template <class Action>
Ending endingOf(Action action) {
    try {
        action();
    } catch (const Error& error) {
        return {error.text(), error.status()};
    }
    return {};
}

/// Asks for as much of a text as there is.
inline Compiler::Source sourceOf(const std::string& text) {
    return [text, at = std::size_t{0}](char* buffer, std::size_t size) mutable {
        const std::size_t count = text.copy(buffer, size, at);
        at += count;
        return count;
    };
}

/// Compiles and prepares a text.
inline void prepareText(CompiledSystem& bench, const std::string& text) {
    Compiler(sourceOf(text), bench.system).compile();
    Expansion(bench.calculus, bench.system).prepare();
}

/// The dump lines of all variables without the words that every line begins with.
inline std::string dumpOf(const EquationTable& equations) {
    const std::string lead = "#(TREEDUMP) ";
    std::string result;
    for (const Differential& variable : equations) {
        std::ostringstream line;
        variable.TreeDump(line);
        EXPECT_EQ(line.str().compare(0, lead.size(), lead), 0) << line.str();
        result += line.str().substr(lead.size());
    }
    return result;
}
