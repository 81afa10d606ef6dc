// SPDX-License-Identifier: MIT
// An initial-value problem, from its text read as mathematics.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "zirk/error.hpp"
#include "zirk/real.hpp"

namespace zirk {

struct ProblemContent;
class FormulaGraph;

/// A formula in the names of a problem. Copies share what they hold.
class [[gnu::visibility("default")]] Expression {
public:
    /// As it was written.
    const std::string& text() const { return text_; }

private:
    friend class Problem;
    friend struct ExpressionAccess;

    Expression(std::string text, std::shared_ptr<const FormulaGraph> graph, unsigned root)
        : text_(std::move(text)), graph_(std::move(graph)), root_(root) {}

    std::string text_;
    std::shared_ptr<const FormulaGraph> graph_;
    unsigned root_;
};

/// What a text leaves open.
struct ProblemOptions {
    /// Replaces what the text says of a name, "k" or "x'": the definition or the start value, by a formula of
    /// constants.
    struct Setting {
        std::string name;
        std::string value;
    };

    /// The time of the start values.
    real start = 0;
    std::vector<Setting> settings;
};

/// Equations with their start values. Does not change while it is solved; copies share what they hold, and any number
/// of integrators on any threads may use one problem at the same time.
///
/// Every name means what it says: `t` is the time, a definition holds at every moment, every function is itself on its
/// whole domain. Literals have 64 bits.
class [[gnu::visibility("default")]] Problem {
public:
    /// Reads "x'' = -x & 1;". Throws ParseError where the text is not of the language, where a name is not defined,
    /// where definitions refer to each other in a loop, and for start values that belong to nothing; its line is 0 when
    /// a setting is to blame, and its text names the setting then.
    static Problem fromText(std::string_view text, const ProblemOptions& options = {});

    /// Everything that the text names, in its order, as it is written: variables with those of their derivatives that
    /// are variables too, "x", "x'", and definitions.
    const std::vector<std::string>& names() const;

    /// A name, a derivative as "x'" (the highest one too), or any formula of these and t. Throws ParseError, with
    /// columns counted in this text.
    Expression expression(std::string_view text) const;

    /// Value of a formula of constants and of names that stand for constants. Throws ParseError.
    real constant(std::string_view text) const;

    /// The time of the start values.
    real start() const;

    /// The system as it is solved, with constants folded and settings applied: equations with all start values, then
    /// definitions, one line each. It reads back by fromText with the same start.
    std::string explain() const;

private:
    friend struct ProblemAccess;

    explicit Problem(std::shared_ptr<const ProblemContent> content) : content_(std::move(content)) {}

    std::shared_ptr<const ProblemContent> content_;
};

}  // namespace zirk
