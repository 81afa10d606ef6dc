// SPDX-License-Identifier: MIT
// Statements into a problem: who is defined where, what belongs to whom, and in which order formulas can be made.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "lang/meaning.hpp"
#include "lang/problem_content.hpp"
#include "lang/statements.hpp"

namespace zirk {

/// Resolves one text with its settings. Throws a ParseError for what has no meaning.
class Resolution {
public:
    Resolution(const Statements& text, const ProblemOptions& options);

    std::shared_ptr<const ProblemContent> content() const { return content_; }

private:
    enum class State { Waiting, InProgress, Known };

    /// The formula of an equation, from the text or from a setting.
    struct Source {
        const Statements* text;
        FormulaRange formula;
        Place target;
        bool isSetting = false;
        State state = State::Waiting;
    };
    /// A start value that is given.
    struct Start {
        const Statements* text;
        FormulaRange formula;
        Place place;
    };
    /// A formula in work.
    struct Frame {
        std::uint32_t equation;
        std::size_t at;
    };

    void declare(const Statement& statement);
    void checkNames() const;
    void collectStart(const Statement& statement);
    void apply(const ProblemOptions::Setting& setting);
    void resolve();
    void resolve(std::uint32_t equation);
    void meetName(const Frame& frame, const FormulaItem& item);
    [[noreturn]] void loop(std::uint32_t first, const Statements& text, const FormulaItem& item) const;
    void finish();

    std::string writtenEquation(std::uint32_t equation) const;

    const Statements& text_;
    std::deque<Statements> settings_;
    std::shared_ptr<ProblemContent> content_ = std::make_shared<ProblemContent>();
    std::shared_ptr<FormulaGraph> graph_ = std::make_shared<FormulaGraph>();
    std::vector<Source> sources_;
    /// By variable; in order, so that the first of several errors is always the same.
    std::map<std::uint32_t, Start> starts_;
    /// Times of start values, to be compared when definitions are known.
    std::vector<Statement> times_;
    std::vector<Frame> frames_;
    NodeStack nodes_{*graph_};
};

}  // namespace zirk
