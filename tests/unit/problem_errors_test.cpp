// SPDX-License-Identifier: MIT
// What is said of texts that have no meaning, and where.
#include "tests/unit/problem_fixture.hpp"
#include "zirk/error.hpp"

using namespace zirk;

namespace {

TEST(ProblemErrors, NameWhatCouldNotStandThere) {
    EXPECT_EQ(errorOf(""), "1:1: unexpected end of the text; expected a name []");
    EXPECT_EQ(errorOf("x' = 1 + ;"), "1:10: unexpected \";\"; expected a formula [;]");
    EXPECT_EQ(errorOf("x' = 1\ny' = 2;"), "2:1: unexpected \"y\"; expected an operator, \"&\" or \";\" [y]");
    EXPECT_EQ(errorOf("x' = (1;"), "1:8: unexpected \";\"; expected an operator or \")\" [;]");
    EXPECT_EQ(errorOf("x' = 2x;"), "1:7: unexpected \"x\"; expected an operator, \"&\" or \";\" [x]");
    EXPECT_EQ(errorOf("x' = 1"), "1:7: unexpected end of the text; expected an operator, \"&\" or \";\" []");
    EXPECT_EQ(errorOf("x' 1;"), "1:4: unexpected \"1\"; expected \"=\" or \"(\" [1]");
    EXPECT_EQ(errorOf("x' = 1 & 2 & 3;"), "1:12: unexpected \"&\"; expected an operator or \";\" [&]");
    EXPECT_EQ(errorOf("  = 1;"), "1:3: unexpected \"=\"; expected a name [=]");
    EXPECT_EQ(errorOf("x' = 1;;"), "1:8: unexpected \";\"; expected a name [;]");
}

TEST(ProblemErrors, CountColumnsInBytes) {
    EXPECT_EQ(errorOf("/* \xc3\xa9 */ x' = ;"), "1:15: unexpected \";\"; expected a formula [;]");
    EXPECT_EQ(errorOf("x' = 1;\r\n\ty' = ;"), "2:7: unexpected \";\"; expected a formula [;]");
    EXPECT_EQ(errorOf("/*\n\n*/ x' = ;"), "3:9: unexpected \";\"; expected a formula [;]");
}

TEST(ProblemErrors, ShowBytesThatAreNotOfTheLanguage) {
    EXPECT_EQ(errorOf("x' = \xc3\xa9;"), "1:6: unexpected \"\xc3\xa9\" [\xc3\xa9]");
    EXPECT_EQ(errorOf("x' = 1 \xe2\x88\x92 2;"), "1:8: unexpected \"\xe2\x88\x92\"; write \"-\" [\xe2\x88\x92]");
    EXPECT_EQ(errorOf("x' = \xff;"), "1:6: byte \"\\xff\" is not of a text in UTF-8 [\xff]");
    EXPECT_EQ(errorOf("x' = \xed\xa0\x80;"), "1:6: byte \"\\xed\" is not of a text in UTF-8 [\xed]");
    EXPECT_EQ(errorOf("x' = \xc3"), "1:6: byte \"\\xc3\" is not of a text in UTF-8 [\xc3]");
    EXPECT_EQ(errorOf(std::string("x' = 1;\0y", 9)),
              "1:8: control character \"\\x00\" in the text [" + std::string(1, '\0') + "]");
    EXPECT_EQ(errorOf("x' = \x1b;"), "1:6: control character \"\\x1b\" in the text [\x1b]");
    EXPECT_EQ(errorOf("# x\nx' = 1;"), "1:1: unexpected \"#\"; write \"//\" [#]");
    EXPECT_EQ(errorOf("x' = y$;"), "1:7: unexpected \"$\"; expected an operator, \"&\" or \";\" [$]");
    EXPECT_EQ(errorOf("x' = 1; /* *"), "1:9: this comment is not closed [/*]");
}

TEST(ProblemErrors, PointFromStepConstructsToTrunc) {
    const std::string message = "step constructs have no meaning here; write jumps with trunc [[]";
    EXPECT_EQ(errorOf("x' = [t < 1 : 2; 3];"), "1:6: " + message);
    EXPECT_EQ(errorOf("x' = 2*[y < 1, 2 : 2];"), "1:8: " + message);
    EXPECT_EQ(errorOf("x' = 1 & [t"), "1:10: " + message);
}

TEST(ProblemErrors, SayWhichNameMayHaveBeenMeant) {
    EXPECT_EQ(errorOf("x' = 2*omgea; omega = 1;"), "1:8: undefined name \"omgea\"; did you mean \"omega\"? [omgea]");
    EXPECT_EQ(errorOf("speed' = spede; spread = 1;"),
              "1:10: undefined name \"spede\"; did you mean \"speed\"? [spede]");
    EXPECT_EQ(errorOf("x' = X;"), "1:6: undefined name \"X\"; did you mean \"x\"? [X]");
    EXPECT_EQ(errorOf("x' = Pi;"), "1:6: undefined name \"Pi\"; did you mean \"pi\"? [Pi]");
    EXPECT_EQ(errorOf("x' = T;"), "1:6: undefined name \"T\"; did you mean \"t\"? [T]");
    EXPECT_EQ(errorOf("x' = e^x;"), "1:6: undefined name \"e\"; write exp(1) [e]");
    EXPECT_EQ(errorOf("x' = zeta; alpha = 1;"), "1:6: undefined name \"zeta\" [zeta]");
    EXPECT_EQ(errorOf("x' = y;"), "1:6: undefined name \"y\" [y]") << "one letter is as near to x as to any other";
    EXPECT_EQ(errorOf("x' = 1 & x_0; x0 = 2;"), "1:10: undefined name \"x_0\"; did you mean \"x0\"? [x_0]");
    EXPECT_EQ(errorOf("x' = a'' + b;"), "1:6: undefined name \"a\" [a]");
}

TEST(ProblemErrors, SayWhatToWriteForAFunctionThatIsNotThere) {
    EXPECT_EQ(errorOf("x' = 1 + sinn(x);"), "1:10: unknown function \"sinn\"; did you mean \"sin\"? [sinn]");
    EXPECT_EQ(errorOf("x' = log(x);"), "1:6: there is no function \"log\"; the natural logarithm is ln(u) [log]");
    EXPECT_EQ(errorOf("x' = abs(x);"), "1:6: there is no function \"abs\"; write sqrt(u*u) [abs]");
    EXPECT_EQ(errorOf("x' = pow(x, 2);"), "1:6: there is no function \"pow\"; write u^v [pow]");
    EXPECT_EQ(errorOf("x' = Sin(x);"), "1:6: unknown function \"Sin\"; did you mean \"sin\"? [Sin]");
    EXPECT_EQ(errorOf("x' = y(t - 1);"),
              "1:6: \"y\" is not a function; for a product write \"*\" before the bracket [y]");
    EXPECT_EQ(errorOf("x' = sin x;"), "1:6: function \"sin\" wants its operand in brackets: sin(...) [sin]");
    EXPECT_EQ(errorOf("x' = 2 + sin;"), "1:10: function \"sin\" wants its operand in brackets: sin(...) [sin]");
}

TEST(ProblemErrors, NameTheMembersOfALoopInOrder) {
    const std::string loop = "definitions refer to each other in a loop: ";
    EXPECT_EQ(errorOf("a = b;\nb = a;"), "2:5: " + loop + "a -> b -> a [a]");
    EXPECT_EQ(errorOf("a = 2*a;"), "1:7: " + loop + "a -> a [a]");
    EXPECT_EQ(errorOf("s = 1 + p; p = q; q = r; r = p;"), "1:30: " + loop + "p -> q -> r -> p [p]");
    EXPECT_EQ(errorOf("x' = x' + 1;"), "1:6: " + loop + "x' -> x' [x']");
    EXPECT_EQ(errorOf("x'' = k; k = y'; y' = x'';"), "1:23: " + loop + "x'' -> k -> y' -> x'' [x'']");
    EXPECT_EQ(errorOf("x' = k; k = 1;", withSettings({{"k", "2*k"}})), "0:3: setting k=2*k: " + loop + "k -> k [k]");
    std::string chain;
    for (int i = 0; i < 1000; ++i) chain += "d" + std::to_string(i) + " = d" + std::to_string((i + 1) % 1000) + ";";
    EXPECT_NE(errorOf(chain).find(loop + "d0 -> d1 -> "), std::string::npos);
    EXPECT_NE(errorOf(chain).find("d10 -> ... -> d999 -> d0 [d0]"), std::string::npos) << errorOf(chain);
}

TEST(ProblemErrors, NameTheFirstOfTwoDefinitions) {
    EXPECT_EQ(errorOf("x' = 1;\n\nx = 2;"), "3:1: \"x\" is defined twice, first in line 1 [x]");
    EXPECT_EQ(errorOf("y' = 1; y'' = 1;"), "1:9: \"y\" is defined twice, first in line 1 [y'']");
    EXPECT_EQ(errorOf("k = 1; k = 1;"), "1:8: \"k\" is defined twice, first in line 1 [k]");
}

TEST(ProblemErrors, KeepTheMeaningOfWordsThatAreTaken) {
    EXPECT_EQ(errorOf("t = 1;"), "1:1: \"t\" is the time and cannot be given another meaning [t]");
    EXPECT_EQ(errorOf("a = 1; pi = 3;"), "1:8: \"pi\" is a number and cannot be given another meaning [pi]");
    EXPECT_EQ(errorOf("sin' = 1;"), "1:1: \"sin\" is a function and cannot be given another meaning [sin]");
    EXPECT_EQ(errorOf("t(0) = 1;"), "1:1: \"t\" is the time and cannot be given another meaning [t]");
}

TEST(ProblemErrors, KnowDerivativesOfVariablesUpToTheirEquationOnly) {
    EXPECT_EQ(errorOf("k = t; x' = k';"),
              "1:13: \"k\" is a definition, and derivatives are known of variables only [k']");
    EXPECT_EQ(errorOf("x' = x''';"), "1:6: \"x'''\" is not known: the equation of \"x\" ends at \"x'\" [x''']");
    EXPECT_EQ(errorOf("x'1000001 = 1;"), "1:1: derivative 1000001 is beyond the limit of 1000000 [x'1000001]");
    EXPECT_EQ(errorOf("x'99999999999999999999 = 1;").substr(0, 26), "1:1: derivative 4294967295");
}

TEST(ProblemErrors, TellStartValuesThatBelongToNothing) {
    EXPECT_EQ(errorOf("x' = 1;\nz(0) = 1;"), "2:1: undefined name \"z\" [z]");
    EXPECT_EQ(errorOf("speed' = 1; sped(0) = 1;"), "1:13: undefined name \"sped\"; did you mean \"speed\"? [sped]");
    EXPECT_EQ(errorOf("x = 2*t & 1;"), "1:9: \"x\" is a definition, and has no start value of its own [&]");
    EXPECT_EQ(errorOf("x = 2*t; x(0) = 1;"), "1:10: \"x\" is a definition, and has no start value of its own [x]");
    EXPECT_EQ(errorOf("x' = 1; x'(0) = 1;"),
              "1:9: \"x'\" follows from its equation, and has no start value of its own [x']");
    EXPECT_EQ(errorOf("x' = 1 & 2;\nx(0) = 3;"), "2:1: start value of \"x\" is given twice, first in line 1 [x]");
    EXPECT_EQ(errorOf("x'' = 1; x'(0) = 3; x'(0) = 3;"),
              "1:21: start value of \"x'\" is given twice, first in line 1 [x']");
}

TEST(ProblemErrors, TellStartValuesThatAreNotConstant) {
    const std::string only = "; only constants can stand here";
    EXPECT_EQ(errorOf("x' = 1 & t;"), "1:10: \"t\" is the time" + only + " [t]");
    EXPECT_EQ(errorOf("x' = 1 & y; y' = 1 & 2;"), "1:10: \"y\" is a variable" + only + " [y]");
    EXPECT_EQ(errorOf("x' = 1 & 2*k; k = l; l = x;"), "1:12: \"k\" changes with time" + only + " [k]");
    EXPECT_EQ(errorOf("x' = t; y' = 1 & x';"), "1:18: \"x'\" changes with time" + only + " [x']");
    EXPECT_EQ(errorOf("a' = 1 & t; b' = 1 & a; c' = 1 & a; d' = 1 & a;"), "1:10: \"t\" is the time" + only + " [t]");
    EXPECT_EQ(errorOf("x' = t; x(k) = 1; k = x;"), "1:11: \"k\" changes with time" + only + " [k]");
}

TEST(ProblemErrors, TellConstantsThatAreNotFinite) {
    EXPECT_EQ(errorOf("x' = 1/0;"), "1:7: division by 0 [/]");
    EXPECT_EQ(errorOf("x' = x/(1 - 1);"), "1:7: division by 0 [/]");
    EXPECT_EQ(errorOf("x' = 1; y = 2 + ln(-1);"), "1:17: constant ln(-1) is not a number [ln]");
    EXPECT_EQ(errorOf("x' = 0*exp(1e9);"), "1:8: constant exp(1e9) is not finite [exp]");
    EXPECT_EQ(errorOf("x' = k^0.5; k = 1 - 3;"), "1:7: constant (-2)^0.5 is not a number [^]");
    EXPECT_EQ(errorOf("x' = 1 & acos(2);"), "1:10: constant acos(2) is not a number [acos]");
    EXPECT_EQ(errorOf("x' = 1e4000*-1e4000;"), "1:12: constant 1e4000*-1e4000 is not finite [*]");
}

TEST(ProblemErrors, OfSettingsNameTheSetting) {
    const std::string text = "x'' = -k*x & 1; k = 2; l = t;";
    const auto blamed = [&](const char* name, const char* value) {
        return errorOf(text, withSettings({{name, value}}));
    };
    EXPECT_EQ(blamed("kk", "1"), "0:1: setting kk=1: undefined name \"kk\"; did you mean \"k\"? [kk]");
    EXPECT_EQ(blamed("k", "2*x"), "0:3: setting k=2*x: \"x\" is a variable; only constants can stand here [x]");
    EXPECT_EQ(blamed("k", "l"), "0:1: setting k=l: \"l\" changes with time; only constants can stand here [l]");
    EXPECT_EQ(blamed("k", "t"), "0:1: setting k=t: \"t\" is the time; only constants can stand here [t]");
    EXPECT_EQ(blamed("x'", "q"), "0:1: setting x'=q: undefined name \"q\" [q]");
    EXPECT_EQ(blamed("x''", "1"), "0:1: setting x''=1: \"x''\" is neither a definition nor has it a start value [x'']");
    EXPECT_EQ(blamed("k'", "1"), "0:1: setting k'=1: \"k'\" is neither a definition nor has it a start value [k']");
    EXPECT_EQ(blamed("t", "1"), "0:1: setting t=1: \"t\" is the time and cannot be given another meaning [t]");
    EXPECT_EQ(blamed("k", ""), "0:1: setting k=: unexpected end of the formula; expected a formula []");
    EXPECT_EQ(blamed("k", "1 +"), "0:4: setting k=1 +: unexpected end of the formula; expected a formula []");
    EXPECT_EQ(blamed("", "1"), "0:1: setting =1: unexpected end; expected a name []");
    EXPECT_EQ(blamed("k l", "1"), "0:3: setting k l=1: unexpected \"l\"; expected the end [l]");
    EXPECT_EQ(blamed("k", "1/0"), "0:2: setting k=1/0: division by 0 [/]");
}

TEST(ProblemErrors, OfFormulasCountColumnsInTheFormula) {
    const Problem problem = Problem::fromText("\n\nomega = 1; x' = omega;");
    try {
        problem.expression("2*omgea");
        FAIL();
    } catch (const ParseError& error) {
        EXPECT_EQ(error.text(), "undefined name \"omgea\"; did you mean \"omega\"?");
        EXPECT_EQ(error.line(), 1);
        EXPECT_EQ(error.column(), 3);
        EXPECT_EQ(error.token(), "omgea");
    }
    for (const char* formula : {"", "x;", "x = 1", "x x", "1/0", "x''", "sin x"}) {
        EXPECT_THROW(problem.expression(formula), ParseError) << formula;
    }
}

TEST(ProblemErrors, ShowLongWordsCutShort) {
    const std::string message = errorOf("x' = " + std::string(1000, 'y') + ";");
    EXPECT_LT(message.find("y...\""), 100U) << message.substr(0, 200);
}

}  // namespace
