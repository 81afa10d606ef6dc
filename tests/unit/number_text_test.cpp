// SPDX-License-Identifier: MIT
// Numbers to text, against the stream that they stand for.
#include "text/number_text.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>
#include <vector>

using namespace zirk;

namespace {

using Limits = std::numeric_limits<real>;

std::string byStream(real x, int precision) {
    std::ostringstream out;
    out << std::scientific << std::setprecision(precision) << x;
    return out.str();
}

std::string scientific(real x, int precision) {
    std::string text;
    appendScientific(text, x, precision);
    return text;
}

std::string general(real x) {
    std::string text;
    appendGeneral(text, x);
    return text;
}

const std::vector<real> notable = {0.0L,
                                   -0.0L,
                                   1,
                                   -1,
                                   9.5L,
                                   0.5L,
                                   99999.95L,
                                   999999.5L,
                                   1e-5L,
                                   -1.0L / 3,
                                   Limits::max(),
                                   Limits::min(),
                                   Limits::denorm_min(),
                                   -Limits::denorm_min(),
                                   Limits::infinity(),
                                   -Limits::infinity(),
                                   Limits::quiet_NaN(),
                                   -Limits::quiet_NaN()};

TEST(NumberText, InScientificNotationIsThatOfAStream) {
    for (const real x : notable) {
        for (const int precision :
             {-5, -1, 0, 1, 2, 6, 11, 18, 19, 20, 63, 100, 120, 5000, 16445, 16500, 16501, 20000}) {
            ASSERT_EQ(scientific(x, precision), byStream(x, precision)) << "precision " << precision;
        }
    }
}

TEST(NumberText, InScientificNotationIsThatOfAStreamForNumbersOfEverySize) {
    std::mt19937_64 random(20240229);
    std::uniform_int_distribution<int> exponent(-16445, 16320);
    std::uniform_int_distribution<int> precision(-1, 40);
    for (int i = 0; i < 20000; ++i) {
        const real x = std::ldexp(static_cast<real>(random()), exponent(random)) * (i % 2 == 0 ? 1 : -1);
        const int digits = precision(random);
        ASSERT_EQ(scientific(x, digits), byStream(x, digits));
    }
}

TEST(NumberText, InGeneralNotationIsThatOfAFreshStream) {
    std::mt19937_64 random(5);
    std::uniform_int_distribution<int> exponent(-120, 20);
    std::vector<real> values = notable;
    for (int i = 0; i < 5000; ++i) values.push_back(std::ldexp(static_cast<real>(random()), exponent(random)));
    for (const real x : values) {
        std::ostringstream out;
        out << x;
        ASSERT_EQ(general(x), out.str());
    }
}

TEST(NumberText, RoundsTheExactBinaryValueHalfToEven) {
    EXPECT_EQ(scientific(2.5L, 0), "2e+00");
    EXPECT_EQ(scientific(3.5L, 0), "4e+00");
    EXPECT_EQ(scientific(0.1, 25), "1.0000000000000000555111512e-01");
    EXPECT_EQ(scientific(9.96L, 1), "1.0e+01");
}

TEST(NumberText, IsAppendedToWhatIsThere) {
    std::string text = "e ";
    appendScientific(text, 1, 20000);
    EXPECT_EQ(text.substr(0, 6), "e 1.00");
    EXPECT_EQ(text.size(), 2 + 2 + 20000 + 4u);
    EXPECT_EQ(text.substr(text.size() - 6), "00e+00");
}

TEST(NumberText, IsPaddedOnTheLeftUpToTheWidthOnly) {
    std::string text = "ab";
    padLeft(text, 1, 4);
    EXPECT_EQ(text, "a   b");
    padLeft(text, 0, 5);
    EXPECT_EQ(text, "a   b");
    padLeft(text, 0, -9);
    EXPECT_EQ(text, "a   b");
}

}  // namespace
