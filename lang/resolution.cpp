// SPDX-License-Identifier: MIT
// Formulas wait for those that they refer to on a stack of their own, so a chain of any length is no matter.
#include "lang/resolution.hpp"

#include <algorithm>
#include <limits>

#include "formula/text.hpp"
#include "lang/problem_reader.hpp"

namespace zirk {

namespace {

/// A chain of derivatives longer than this would fill the memory before anybody could use it.
constexpr std::uint32_t maxDerivative = 1000000;

/// So many members of a loop are named.
constexpr std::size_t mostMembers = 12;

}  // namespace

Resolution::Resolution(const Statements& text, const ProblemOptions& options) : text_(text) {
    content_->start = options.start;
    content_->graph = graph_;
    for (const Statement& statement : text.list) declare(statement);
    checkNames();
    for (const Statement& statement : text.list) collectStart(statement);
    for (const ProblemOptions::Setting& setting : options.settings) apply(setting);
    resolve();
    finish();
}

void Resolution::declare(const Statement& statement) {
    if (statement.kind == Statement::Kind::StartValue) return;
    const Target& target = statement.target;
    const std::string& name = text_.names[target.name];
    const auto id = static_cast<std::uint32_t>(content_->equations.size());
    const auto [known, isNew] = content_->equationOf.emplace(name, id);
    if (!isNew) {
        text_.fail(target.place, quoted(name) + " is defined twice, first in line " +
                                     std::to_string(text_.lineOf(sources_[known->second].target)));
    }
    if (target.primes > maxDerivative) {
        text_.fail(target.place, "derivative " + std::to_string(target.primes) + " is beyond the limit of " +
                                     std::to_string(maxDerivative));
    }
    const auto variable = static_cast<std::uint32_t>(content_->variables.size());
    content_->equations.push_back({name, target.primes, variable});
    sources_.push_back({&text_, statement.formula, target.place});
    for (std::uint32_t k = 0; k < target.primes; ++k) {
        content_->variables.push_back({writtenDerivative(name, k), FormulaGraph::none, 0});
    }
}

void Resolution::checkNames() const {
    for (const FormulaItem& item : text_.items) {
        if (item.operation == Operation::Variable) meaningOf(*content_, text_, item);
    }
}

void Resolution::collectStart(const Statement& statement) {
    if (statement.kind == Statement::Kind::Equation) return;
    const Target& target = statement.target;
    const std::string& name = text_.names[target.name];
    const auto found = content_->equationOf.find(name);
    if (found == content_->equationOf.end()) {
        undefinedName(*content_, text_, {target.place.offset, static_cast<std::uint32_t>(name.size())}, name);
    }
    const ProblemContent::Equation& equation = content_->equations[found->second];
    // Behind "&" stands the value of the name itself.
    const bool isStatement = statement.kind == Statement::Kind::StartValue;
    const std::uint32_t primes = isStatement ? target.primes : 0;
    if (equation.order == 0) {
        text_.fail(statement.startPlace, quoted(name) + " is a definition, and has no start value of its own");
    }
    if (primes >= equation.order) {
        text_.fail(statement.startPlace,
                   quoted(text_.written(target)) + " follows from its equation, and has no start value of its own");
    }
    const auto [known, isNew] =
        starts_.emplace(equation.variable + primes, Start{&text_, statement.start, statement.startPlace});
    if (!isNew) {
        text_.fail(statement.startPlace, "start value of " + quoted(writtenDerivative(name, primes)) +
                                             " is given twice, first in line " +
                                             std::to_string(text_.lineOf(known->second.place)));
    }
    if (isStatement) times_.push_back(statement);
}

void Resolution::apply(const ProblemOptions::Setting& setting) {
    const std::string origin = "setting " + setting.name + "=" + setting.value;
    const Statements named = ProblemReader::read(setting.name, ProblemReader::Kind::Target, origin);
    const Target& target = named.target;
    const std::string& name = named.names[target.name];
    const auto found = content_->equationOf.find(name);
    if (found == content_->equationOf.end()) undefinedName(*content_, named, target.place, name);
    const ProblemContent::Equation& equation = content_->equations[found->second];
    if (target.primes > equation.order || (target.primes == equation.order && equation.order != 0)) {
        named.fail(target.place, quoted(named.written(target)) + " is neither a definition nor has it a start value");
    }
    settings_.push_back(ProblemReader::read(setting.value, ProblemReader::Kind::Formula, origin));
    const Statements& value = settings_.back();
    if (equation.order == 0) {
        Source& source = sources_[found->second];
        source = {&value, value.formula, source.target, true};
    } else {
        starts_[equation.variable + target.primes] = {&value, value.formula, {}};
    }
}

void Resolution::resolve() {
    // Equations first, in the order in which they are explained.
    for (const bool definitions : {false, true}) {
        for (std::uint32_t id = 0; id < sources_.size(); ++id) {
            if ((content_->equations[id].order == 0) == definitions) resolve(id);
        }
    }
}

void Resolution::resolve(std::uint32_t equation) {
    const auto enter = [this](std::uint32_t id) {
        sources_[id].state = State::InProgress;
        frames_.push_back({id, sources_[id].formula.begin});
    };
    if (sources_[equation].state == State::Known) return;
    enter(equation);
    while (!frames_.empty()) {
        Frame& frame = frames_.back();
        Source& source = sources_[frame.equation];
        if (frame.at == source.formula.end) {
            content_->equations[frame.equation].formula = nodes_.pop();
            source.state = State::Known;
            frames_.pop_back();
            continue;
        }
        const FormulaItem& item = source.text->items[frame.at];
        if (item.operation == Operation::Variable) {
            const Meaning meaning = meaningOf(*content_, *source.text, item);
            if (!meaning.isVariable && sources_[meaning.index].state != State::Known) {
                if (sources_[meaning.index].state == State::InProgress) loop(meaning.index, *source.text, item);
                enter(meaning.index);
                continue;
            }
            meetName(frame, item);
        } else {
            if (source.isSetting && item.operation == Operation::Time) notConstant(*source.text, item);
            nodes_.apply(*source.text, item);
        }
        ++frame.at;
    }
}

void Resolution::meetName(const Frame& frame, const FormulaItem& item) {
    const Source& source = sources_[frame.equation];
    const Meaning meaning = meaningOf(*content_, *source.text, item);
    if (meaning.isVariable) {
        if (source.isSetting) notConstant(*source.text, item);
        return nodes_.push(graph_->variable(meaning.index));
    }
    const NodeIndex node = content_->equations[meaning.index].formula;
    if (source.isSetting) requireConstant(*graph_, node, *source.text, item);
    nodes_.push(node);
}

std::string Resolution::writtenEquation(std::uint32_t equation) const {
    const ProblemContent::Equation& known = content_->equations[equation];
    return writtenDerivative(known.name, known.order);
}

void Resolution::loop(std::uint32_t first, const Statements& text, const FormulaItem& item) const {
    auto member = std::find_if(frames_.begin(), frames_.end(), [&](const Frame& f) { return f.equation == first; });
    const std::size_t last = mostMembers - 1;
    std::string members;
    for (std::size_t count = 0; member != frames_.end(); ++member, ++count) {
        if (count == last && frames_.end() - member > 1) {
            members += "... -> ";
            member = frames_.end() - 1;
        }
        members += writtenEquation(member->equation) + " -> ";
    }
    text.fail(item.place, "definitions refer to each other in a loop: " + members + writtenEquation(first));
}

void Resolution::finish() {
    for (const Statement& statement : times_) {
        const real time = constantValue(*content_, *graph_, text_, statement.formula);
        if (time == content_->start) continue;
        text_.fail(statement.formula.place, "start value of " + text_.written(statement.target) +
                                                " is given for t = " + numberText(time) +
                                                ", but the run starts at t = " + numberText(content_->start));
    }
    for (const auto& [variable, start] : starts_) {
        content_->variables[variable].start = constantValue(*content_, *graph_, *start.text, start.formula);
    }
    for (const ProblemContent::Equation& equation : content_->equations) {
        if (equation.order == 0) content_->names.push_back({equation.name, equation.formula});
        for (std::uint32_t k = 0; k < equation.order; ++k) {
            ProblemContent::Variable& variable = content_->variables[equation.variable + k];
            variable.node = graph_->variable(equation.variable + k);
            const bool isHighest = k + 1 == equation.order;
            variable.rate = isHighest ? equation.formula : graph_->variable(equation.variable + k + 1);
            content_->names.push_back({variable.name, variable.node});
        }
    }
    for (const ProblemContent::Name& name : content_->names) content_->writtenNames.push_back(name.written);
}

}  // namespace zirk
