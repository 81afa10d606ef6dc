// SPDX-License-Identifier: MIT
// Problems as programs use them. What a text gave never changes again, so threads may share it.
#include "zirk/problem.hpp"

#include "lang/meaning.hpp"
#include "lang/problem_content.hpp"
#include "lang/problem_reader.hpp"
#include "lang/resolution.hpp"

namespace zirk {

Problem Problem::fromText(std::string_view text, const ProblemOptions& options) {
    const Statements statements = ProblemReader::read(text, ProblemReader::Kind::Problem);
    return Problem(Resolution(statements, options).content());
}

const std::vector<std::string>& Problem::names() const { return content_->writtenNames; }

Expression Problem::expression(std::string_view text) const {
    const Statements read = ProblemReader::read(text, ProblemReader::Kind::Formula);
    const FormulaGraph& graph = *content_->graph;
    if (read.items.size() == 1 && read.items[0].operation == Operation::Variable) {
        const Meaning meaning = meaningOf(*content_, read, read.items[0]);
        const NodeIndex root =
            meaning.isVariable ? content_->variables[meaning.index].node : content_->equations[meaning.index].formula;
        return Expression(std::string(text), content_->graph, root);
    }
    const auto own = std::make_shared<FormulaGraph>();
    FormulaImport import(graph, *own);
    NodeStack nodes(*own);
    for (const FormulaItem& item : read.items) {
        if (item.operation != Operation::Variable) {
            nodes.apply(read, item);
            continue;
        }
        const Meaning meaning = meaningOf(*content_, read, item);
        nodes.push(meaning.isVariable ? own->variable(meaning.index)
                                      : import(content_->equations[meaning.index].formula));
    }
    const NodeIndex root = nodes.pop();
    return Expression(std::string(text), own, root);
}

real Problem::constant(std::string_view text) const {
    const Statements read = ProblemReader::read(text, ProblemReader::Kind::Formula);
    return constantValue(*content_, *content_->graph, read, read.formula);
}

real Problem::start() const { return content_->start; }

}  // namespace zirk
