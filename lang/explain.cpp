// SPDX-License-Identifier: MIT
// A problem as text again: what is solved, with every name and number resolved.
#include "formula/text.hpp"
#include "lang/problem_content.hpp"
#include "lang/statements.hpp"
#include "zirk/problem.hpp"

namespace zirk {

namespace {

bool isLeaf(const FormulaGraph::Node& node) {
    return node.operation == Operation::Number || node.operation == Operation::Time ||
           node.operation == Operation::Variable;
}

}  // namespace

FormulaNames namesOf(const ProblemContent& content) {
    FormulaNames names;
    for (const ProblemContent::Variable& variable : content.variables) names.variables.push_back(variable.name);
    // A definition rather than a derivative, and the first of two that say the same.
    for (const bool definitions : {true, false}) {
        for (const ProblemContent::Equation& equation : content.equations) {
            if ((equation.order == 0) != definitions || isLeaf((*content.graph)[equation.formula])) continue;
            names.formulas.emplace(equation.formula, writtenDerivative(equation.name, equation.order));
        }
    }
    return names;
}

std::string Problem::explain() const {
    const ProblemContent& content = *content_;
    const FormulaNames names = namesOf(content);
    const auto rightHandSide = [&](const ProblemContent::Equation& equation, const std::string& written) {
        const auto named = names.formulas.find(equation.formula);
        const bool isNamedElsewhere = named != names.formulas.end() && named->second != written;
        return isNamedElsewhere ? named->second : formulaText(*content.graph, equation.formula, names);
    };
    std::string text;
    for (const bool definitions : {false, true}) {
        for (const ProblemContent::Equation& equation : content.equations) {
            if ((equation.order == 0) != definitions) continue;
            const std::string written = writtenDerivative(equation.name, equation.order);
            text += written + " = " + rightHandSide(equation, written);
            if (!definitions) text += " & " + numberText(content.variables[equation.variable].start);
            text += ";\n";
            for (std::uint32_t k = 1; k < equation.order; ++k) {
                const ProblemContent::Variable& variable = content.variables[equation.variable + k];
                text += variable.name + "(" + numberText(content.start) + ") = " + numberText(variable.start) + ";\n";
            }
        }
    }
    return text;
}

}  // namespace zirk
