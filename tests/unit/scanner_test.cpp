// SPDX-License-Identifier: MIT
// Text into tokens: written forms, numbers, comments, line counting, longest match.
#include "lang/scanner.hpp"

#include <limits>

#include "lang/grammar.hpp"
#include "lang/keywords.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

/// Everything that a text is made of.
struct Tokens {
    explicit Tokens(const std::string& text) {
        EquationSystem unused;
        Compiler compiler(sourceOf(text), unused);
        const Scanner scanner(compiler);
        for (Semantic value; (codes.push_back(yylex(&value, scanner.handle())), codes.back() != 0);) {
            values.push_back(value);
        }
        codes.pop_back();
        compiler.error("end");
        end = compiler.messages();
    }

    std::vector<int> codes;
    std::vector<Semantic> values;
    /// Error line for the end of the input; it shows the line number.
    std::string end;
};

using Codes = std::vector<int>;

std::string endAtLine(int line) { return "#(ERR) ERROR: end \"\" at line #" + std::to_string(line) + "\n"; }

TEST(Scanner, KnowsEveryWrittenFormOfAKeyword) {
    const std::pair<int, std::vector<std::string>> forms[] = {
        {263, {"sin"}},
        {264, {"cos"}},
        {265, {"tg", "tan"}},
        {266, {"cotg", "cotan"}},
        {267, {"arcsin", "asin"}},
        {268, {"arccos", "acos"}},
        {269, {"arctg", "arctan", "atg", "atan"}},
        {270, {"arccotg", "arccotan", "acotg", "acotan"}},
        {271, {"sinh"}},
        {272, {"cosh"}},
        {273, {"tgh", "tanh"}},
        {274, {"cotgh", "cotanh"}},
        {275, {"argsinh", "asinh"}},
        {276, {"argcosh", "acosh"}},
        {277, {"argtgh", "argtanh", "atgh", "atanh"}},
        {278, {"argcotgh", "argcotanh"}},
        {279, {"exp"}},
        {280, {"ln"}},
        {261, {"pi"}},
        {262, {"t"}},
        {281, {"sqrt"}},
        {282, {"trunc"}},
    };
    for (const auto& [code, words] : forms) {
        for (const std::string& word : words) {
            EXPECT_EQ(Tokens(word).codes, Codes{code}) << word;
            EXPECT_EQ(keywordToken(word), code) << word;
        }
    }
}

TEST(Scanner, TakesEveryOtherWordAsAName) {
    for (const char* word :
         {"TAN", "Sin", "pi2", "sinx", "log", "abs",    "pow",   "acotgh", "acotanh", "tgsinh",   "T",
          "PI",  "_",   "_1",  "x_y9", "t_",  "arctgh", "asin2", "e",      "E5",      "argacosh", "cotanhh"}) {
        const Tokens tokens(word);
        EXPECT_EQ(tokens.codes, Codes{257}) << word;
        EXPECT_EQ(tokens.values[0].name, word);
        EXPECT_EQ(keywordToken(word), 257) << word;
    }
    EXPECT_EQ(keywordToken(""), 257);
}

TEST(Scanner, ReadsIntegersAndSaturatesThem) {
    const std::pair<const char*, int> cases[] = {{"0", 0},
                                                 {"007", 7},
                                                 {"2147483647", 2147483647},
                                                 {"2147483648", 2147483647},
                                                 {"99999999999999999999999", 2147483647}};
    for (const auto& [text, value] : cases) {
        const Tokens tokens(text);
        EXPECT_EQ(tokens.codes, Codes{258}) << text;
        EXPECT_EQ(tokens.values[0].integer, value) << text;
    }
}

TEST(Scanner, ReadsRealsAtDoublePrecision) {
    const std::pair<const char*, double> cases[] = {{"0.1", 0.1},   {"1.", 1},           {".5", 0.5}, {"1e5", 1e5},
                                                    {"1E+5", 1e5},  {"1.e-2", 0.01},     {".5e1", 5}, {"2.5E-1", 0.25},
                                                    {"00.50", 0.5}, {"3000000000.", 3e9}};
    for (const auto& [text, value] : cases) {
        const Tokens tokens(text);
        EXPECT_EQ(tokens.codes, Codes{259}) << text;
        EXPECT_EQ(tokens.values[0].number, static_cast<real>(value)) << text;
    }
    EXPECT_NE(Tokens("0.1").values[0].number, 0.1L);
    EXPECT_EQ(Tokens("1e1000").values[0].number, std::numeric_limits<real>::infinity());
    EXPECT_EQ(Tokens("1e-400").values[0].number, 0);
}

TEST(Scanner, CountsApostrophesOrReadsTheDigitsAfterASingleOne) {
    const std::pair<const char*, int> cases[] = {
        {"'", 1}, {"''", 2}, {"'''''", 5}, {"'3", 3}, {"'0", 0}, {"'012", 12}, {"'99999999999", 2147483647}};
    for (const auto& [text, value] : cases) {
        const Tokens tokens(text);
        EXPECT_EQ(tokens.codes, Codes{260}) << text;
        EXPECT_EQ(tokens.values[0].integer, value) << text;
    }
    const Tokens mixed("''3");
    EXPECT_EQ(mixed.codes, (Codes{260, 258}));
    EXPECT_EQ(mixed.values[0].integer, 2);
    EXPECT_EQ(mixed.values[1].integer, 3);
    EXPECT_EQ(Tokens("' 3").codes, (Codes{260, 258}));
}

TEST(Scanner, TakesTheLongestMatch) {
    EXPECT_EQ(Tokens("1e").codes, (Codes{258, 257}));
    EXPECT_EQ(Tokens("1e+x").codes, (Codes{258, 257, '+', 257}));
    EXPECT_EQ(Tokens("1e+").codes, (Codes{258, 257, '+'}));
    EXPECT_EQ(Tokens("1.e+").codes, (Codes{259, 257, '+'}));
    EXPECT_EQ(Tokens("1..5").codes, (Codes{259, 259}));
    EXPECT_EQ(Tokens(". 5").codes, (Codes{'.', 258}));
    EXPECT_EQ(Tokens("2x").codes, (Codes{258, 257}));
    EXPECT_EQ(Tokens("2t").codes, (Codes{258, 262}));
    EXPECT_EQ(Tokens("1e5e").codes, (Codes{259, 257}));
    EXPECT_EQ(Tokens("sin x").codes, (Codes{263, 257}));
    EXPECT_EQ(Tokens("a/b/ /c").codes, (Codes{257, '/', 257, '/', '/', 257}));
    EXPECT_EQ(Tokens("-1").codes, (Codes{'-', 258}));
}

TEST(Scanner, ReturnsOtherCharactersAsTheirUnsignedCodes) {
    EXPECT_EQ(Tokens("+-*/^()=;&[<]:,").codes,
              (Codes{'+', '-', '*', '/', '^', '(', ')', '=', ';', '&', '[', '<', ']', ':', ','}));
    EXPECT_EQ(Tokens("%\x01\x7f\x80\xff").codes, (Codes{'%', 1, 127, 128, 255}));
    EXPECT_EQ(Tokens("y\xc3\xa9").codes, (Codes{257, 0xc3, 0xa9}));
}

TEST(Scanner, SkipsBlanksTabsFormFeedsAndCarriageReturns) {
    const Tokens tokens(" \t\v\f\r1\r\n\r\n2");
    EXPECT_EQ(tokens.codes, (Codes{258, 258}));
    EXPECT_EQ(tokens.end, endAtLine(3));
}

TEST(Scanner, SkipsCommentsAndCountsTheirLines) {
    const std::pair<const char*, int> cases[] = {
        {"1 2", 1},
        {"1\n2\n", 3},
        {"1 // x\n2", 2},
        {"1 2 // x", 2},
        {"1 2 //", 2},
        {"1 /* a\nb */ 2", 2},
        {"1 /**/ 2", 1},
        {"1 /***/ 2", 1},
        {"1 /* * / // \n ** /*\n**/ 2", 3},
        {"1 2 /* never\nended\n", 3},
        {"1 2 /*/ not ended", 1},
        {"1 2 /* *", 1},
        {"1 // /*\n2", 2},
        {"1 /* // */ 2", 1},
        {"1 // \\\n2", 2},
    };
    for (const auto& [text, line] : cases) {
        const Tokens tokens(text);
        EXPECT_EQ(tokens.codes, (Codes{258, 258})) << text;
        EXPECT_EQ(tokens.end, endAtLine(line)) << text;
    }
}

TEST(Scanner, EndsAtANulByte) {
    using namespace std::string_literals;
    EXPECT_EQ(Tokens("1 2\0 3"s).codes, (Codes{258, 258}));
    EXPECT_EQ(Tokens("\0 3"s).codes, Codes{});
    EXPECT_EQ(Tokens("1 // a\0\n3"s).codes, Codes{258});
    EXPECT_EQ(Tokens("1 /* a\0 */ 3"s).codes, Codes{258});
    EXPECT_EQ(Tokens("12\0"
                     "3"s)
                  .values[0]
                  .integer,
              12);
}

TEST(Scanner, EndsAtANulByteInAnyBlock) {
    const std::string nul(1, '\0');
    // More behind the NUL byte than one read takes: nobody may ask for it either.
    std::string rest;
    for (int i = 0; i < 30000; ++i) rest += " 3";
    for (const std::size_t before : {16382, 16383, 16384, 16385, 32766, 32767, 32768, 100000}) {
        const Tokens blanks("1" + std::string(before - 1, ' ') + nul + rest);
        EXPECT_EQ(blanks.codes, Codes{258}) << before;
        const Tokens name(std::string(before, 'x') + nul + "y" + rest);
        ASSERT_EQ(name.codes, Codes{257}) << before;
        EXPECT_EQ(name.values[0].name.size(), before);
        // In a comment, where any other byte is skipped.
        EXPECT_EQ(Tokens("1 //" + std::string(before - 4, 'x') + nul + "\n" + rest).codes, Codes{258}) << before;
        EXPECT_EQ(Tokens("1 /*" + std::string(before - 4, 'x') + nul + "*/" + rest).codes, Codes{258}) << before;
    }
}

TEST(Scanner, ReadsTokensLongerThanItsBuffer) {
    const std::string name(100000, 'x');
    const Tokens tokens(name + " /*" + std::string(50000, '*') + "*/ " + std::string(40000, '0') + "7" +
                        std::string(70000, '\''));
    EXPECT_EQ(tokens.codes, (Codes{257, 258, 260}));
    EXPECT_EQ(tokens.values[0].name, name);
    EXPECT_EQ(tokens.values[1].integer, 7);
    EXPECT_EQ(tokens.values[2].integer, 70000);
    // A token across the end of every block.
    std::string text;
    for (int i = 0; i < 9000; ++i) text += "ab ";
    EXPECT_EQ(Tokens(text).codes, Codes(9000, 257));
}

}  // namespace
