// SPDX-License-Identifier: MIT
// Formulas of problems as values and as text, and the errors of texts, for the tests of the language.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formula/functions.hpp"
#include "formula/text.hpp"
#include "lang/problem_content.hpp"
#include "zirk/problem.hpp"

/// Value of a formula at a time, with values for the variables.
inline long double valueOf(const zirk::Expression& expression, long double time = 0,
                           const std::vector<long double>& variables = {}) {
    using zirk::Operation;
    const zirk::FormulaGraph& graph = zirk::ExpressionAccess::graphOf(expression);
    const zirk::NodeIndex root = zirk::ExpressionAccess::rootOf(expression);
    std::vector<long double> values;
    for (zirk::NodeIndex i = 0; i <= root; ++i) {
        const zirk::FormulaGraph::Node& node = graph[i];
        switch (node.operation) {
            case Operation::Number:
                values.push_back(node.number);
                break;
            case Operation::Time:
                values.push_back(time);
                break;
            case Operation::Variable:
                values.push_back(node.left < variables.size() ? variables[node.left] : 0);
                break;
            case Operation::Function:
                values.push_back(zirk::exactValue(node.function, values[node.left]));
                break;
            case Operation::Negate:
                values.push_back(-values[node.left]);
                break;
            default:
                values.push_back(zirk::applyOperation(node.operation, values[node.left], values[node.right]));
        }
    }
    return values[root];
}

/// "LINE:COLUMN: message [token]" of the error that a text ends with.
inline std::string errorOf(const std::string& text, const zirk::ProblemOptions& options = {}) {
    try {
        zirk::Problem::fromText(text, options);
    } catch (const zirk::ParseError& error) {
        EXPECT_EQ(error.what(), error.text());
        EXPECT_EQ(error.status(), 3);
        return std::to_string(error.line()) + ":" + std::to_string(error.column()) + ": " + error.text() + " [" +
               error.token() + "]";
    }
    return "no error";
}

inline zirk::ProblemOptions withSettings(std::vector<zirk::ProblemOptions::Setting> settings) {
    zirk::ProblemOptions options;
    options.settings = std::move(settings);
    return options;
}

/// What fromText makes of one definition, written out again.
inline std::string rewritten(const std::string& formula) {
    const std::string text = "f = " + formula + "; a' = 1; b' = 1; c' = 1;";
    const std::string all = zirk::Problem::fromText(text).explain();
    const std::size_t begin = all.find("f = ");
    return all.substr(begin + 4, all.find(';', begin) - begin - 4);
}
