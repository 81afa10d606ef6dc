// SPDX-License-Identifier: MIT
// The chains that systems compile to, written out.
#include "series/program.hpp"

#include <sstream>

#include "series/congruence.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class ProgramText : public NodeTest {
protected:
    /// One line per chain; variables as their names, other slots as s, term arrays as numbers.
    std::string of(const std::string& text) {
        prepareText(*this, text);
        const DistinctTerms terms(TermGraph(system.equations));
        std::ostringstream out;
        write(terms.graph, Programs(terms.graph).varying, out);
        return out.str();
    }

private:
    static std::string nameOf(const TermGraph& graph, SlotIndex variable) {
        return static_cast<const Differential*>(graph[variable].node)->name();
    }

    /// What one instruction does: a load, an operation, a result.
    static std::vector<std::string> parts(const TermGraph& graph, const Program::Instruction& instruction) {
        static const char* const codes[] = {
            "",      "Plus",    "Minus",       "MinusFrom",    "Negate",  "Truncate", "Scale", "ScaleByDouble",
            "Ratio", "Product", "PlusProduct", "MinusProduct", "Quotient"};
        static const char* const results[] = {"", "Store", "Keep", "Next", "NextKept"};
        const auto operand = [&](SlotIndex of) {
            return graph.isVariable(of) ? ' ' + nameOf(graph, of) : std::string();
        };
        std::vector<std::string> parts;
        if (instruction.load != TermGraph::none) parts.push_back("Load" + operand(instruction.load));
        if (instruction.code >= Program::Code::Product) {
            parts.push_back(codes[static_cast<int>(instruction.code)] + (' ' + std::to_string(instruction.a)) + ' ' +
                            std::to_string(instruction.b));
        } else if (instruction.code != Program::Code::Nothing) {
            parts.push_back(codes[static_cast<int>(instruction.code)] + operand(instruction.a));
        }
        if (instruction.result == Program::Result::Nothing) return parts;
        std::string result = results[static_cast<int>(instruction.result)];
        if (instruction.result >= Program::Result::Next) result += ' ' + nameOf(graph, instruction.target);
        if (instruction.array != TermGraph::none) result += ' ' + std::to_string(instruction.array);
        parts.push_back(result);
        return parts;
    }

    static void write(const TermGraph& graph, const Program& program, std::ostream& out) {
        std::size_t next = 0;
        for (const Program::Chain& chain : program.chains) {
            const char* separator = "";
            for (std::uint32_t i = 0; i < chain.length; ++i, ++next) {
                for (const std::string& part : parts(graph, program.instructions[next])) {
                    out << separator << part;
                    separator = ", ";
                }
            }
            out << '\n';
        }
        EXPECT_EQ(next, program.instructions.size());
    }
};

TEST_F(ProgramText, TakesVariablesAsTheyAre) {
    EXPECT_EQ(of("x' = v & 1; v' = -x & 0;"),
              "Load v, Next x\n"
              "Load x, Negate, Next v\n");
}

TEST_F(ProgramText, KeepsAHeatRodInTheAccumulator) {
    EXPECT_EQ(of("a' = 0.5*(a - 2*b + c) & 1; b' = a & 0; c' = b & 2;"),
              "Load a, Next b\n"
              "Load b, Next c\n"
              "Load b, ScaleByDouble, MinusFrom a, Plus c, ScaleByDouble, Next a\n");
}

TEST_F(ProgramText, SumsOverVariablesAndKeptValues) {
    // Arrays in the order of the slots that need them: x twice for x*x; then 2*x and y.
    EXPECT_EQ(of("x' = -y - x*x & 1; y' = 2*x*y & 3;"),
              "Load y, Negate, MinusProduct 0 0, NextKept x 0\n"
              "Load x, ScaleByDouble, Keep 1\n"
              "Product 1 2, NextKept y 2\n");
}

TEST_F(ProgramText, StoresWhatTwoNeed) {
    EXPECT_EQ(of("x' = (x + y) - 1/(x + y) & 1; y' = x & 2;"),
              "Load x, Next y\n"
              "Load x, Plus y, Keep 0\n"
              "Load, Quotient 1 0, Keep 1, MinusFrom, Next x\n");
}

TEST_F(ProgramText, StoresTheSecondOfTwoLongOperands) {
    EXPECT_EQ(of("x' = (x - y) + (y - 2*x) & 1; y' = 0 & 2;"),
              "Load x, ScaleByDouble, MinusFrom y, Store\n"
              "Load x, Minus y, Plus, Next x\n"
              "Load, Next y\n");
}

TEST_F(ProgramText, ComputesConstantsElsewhere) {
    EXPECT_EQ(of("x' = (g/l)*x & 1; g = 10; l = 4;"), "Load x, Scale, Next x\n");
}

TEST_F(ProgramText, LetsCongruentVariablesShare) {
    EXPECT_EQ(of("a' = -a & 1; b' = -b & 1;"), "Load a, Negate, Next a\n");
}

TEST_F(ProgramText, LeavesOutWhatIsNotNeeded) {
    prepareText(*this, "a' = -a & 1; b' = -b & 2;");
    const TermGraph graph(system.equations);
    std::vector<char> needed(graph.slots.size(), 0);
    needed[graph[1].left] = 1;
    const Program part = Programs(graph).varying.needing(needed);
    ASSERT_EQ(part.chains.size(), 1u);
    EXPECT_EQ(part.chains[0].owner, graph[1].left);
    EXPECT_EQ(part.instructions.size(), 1u);
}

}  // namespace
