// SPDX-License-Identifier: MIT
// Numbers with all 64 bits, into nodes and back into text.
#include <clocale>
#include <cmath>
#include <limits>
#include <random>

#include "tests/unit/problem_fixture.hpp"
#include "zirk/error.hpp"

using namespace zirk;

namespace {

using Limits = std::numeric_limits<long double>;

long double literal(const std::string& text) { return Problem::fromText("k = 1;").constant(text); }

TEST(ProblemLiterals, HaveAllBits) {
    EXPECT_EQ(literal("0.1"), 0.1L);
    EXPECT_NE(literal("0.1"), static_cast<long double>(0.1));
    EXPECT_EQ(literal("1e-4000"), 1e-4000L);
    EXPECT_EQ(literal("3.14159265358979323846264338327950288"), literal("pi"));
    EXPECT_EQ(literal("18446744073709551615"), 18446744073709551615.0L);
    EXPECT_EQ(literal("9223372036854775809"), 9223372036854775809.0L);
    EXPECT_EQ(literal("1.e+2"), 100);
    EXPECT_EQ(literal(".5E-1"), 0.05L);
    EXPECT_EQ(literal("1e4932"), 1e4932L);
}

TEST(ProblemLiterals, MayHaveAnyNumberOfFigures) {
    EXPECT_EQ(literal("0." + std::string(1000000, '3')), 1.0L / 3);
    EXPECT_EQ(literal("1" + std::string(4000, '0') + "e-4000"), 1);
    EXPECT_EQ(literal("0." + std::string(5999, '0') + "1e6000"), 1);
    EXPECT_EQ(literal(std::string(100000, '0') + "7"), 7);
}

TEST(ProblemLiterals, OutsideTheRangeAreErrors) {
    EXPECT_EQ(errorOf("x' = 1e4933;"), "1:6: number \"1e4933\" is too large [1e4933]");
    EXPECT_EQ(errorOf("x' = 2*1e-4960;"), "1:8: number \"1e-4960\" is too small [1e-4960]");
    EXPECT_EQ(errorOf("x' = 1e99999999999999999999;").substr(0, 12), "1:6: number ");
    EXPECT_EQ(literal("0e99999"), 0);
    EXPECT_EQ(literal("0.000e-99999"), 0);
    EXPECT_EQ(literal("3.7e-4951"), Limits::denorm_min());
}

TEST(ProblemLiterals, DoNotDependOnTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) break;
    }
    EXPECT_EQ(literal("1.5"), 1.5L);
    EXPECT_EQ(numberText(1.5L), "1.5");
    std::setlocale(LC_ALL, before.c_str());
}

TEST(ProblemLiterals, AreWrittenWithTheFewestFigures) {
    const std::pair<long double, const char*> numbers[] = {
        {2, "2"},
        {0.1L, "0.1"},
        {1e-18L, "1e-18"},
        {-1.5L, "-1.5"},
        {100000, "100000"},
        {1e6L, "1e6"},
        {1234567, "1234567"},
        {0.001L, "0.001"},
        {1e-4L, "0.0001"},
        {1e-5L, "1e-5"},
        {1.25e-7L, "1.25e-7"},
        {6.02214076e23L, "6.02214076e23"},
        {0, "0"},
        {-0.0L, "-0"},
        {1.0L / 3, "0.33333333333333333334"},
        {0.1, "0.10000000000000000555"},
        {Limits::denorm_min(), "4e-4951"},
        {3.14159265358979323846264338327950288L, "3.1415926535897932385"},
    };
    for (const auto& [number, text] : numbers) EXPECT_EQ(numberText(number), text);
}

TEST(ProblemLiterals, WrittenOutReadBackToTheSameBits) {
    std::mt19937_64 random(13);
    std::vector<long double> numbers = {Limits::max(), Limits::min(), Limits::denorm_min(), 1 + Limits::epsilon(),
                                        1 - Limits::epsilon() / 2};
    for (int exponent = -16444; exponent < 16384; exponent += 61) numbers.push_back(std::ldexp(1.0L, exponent));
    for (int i = 0; i < 2000; ++i) {
        const auto mantissa = static_cast<long double>(random() | 1ULL << 63);
        numbers.push_back(std::ldexp(mantissa, static_cast<int>(random() % 32000) - 16000 - 63));
        numbers.push_back(std::ldexp(mantissa, static_cast<int>(random() % 100) - 50 - 63));
    }
    for (const long double number : numbers) {
        const std::string text = numberText(number);
        EXPECT_LE(text.size(), 30U) << text;
        EXPECT_EQ(literal(text), number) << text;
        EXPECT_EQ(literal("-" + text), -number) << text;
    }
}

}  // namespace
