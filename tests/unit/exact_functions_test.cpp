// SPDX-License-Identifier: MIT
// Functions and powers are themselves on their whole domain, with 64 bits.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "formula/functions.hpp"

using namespace zirk;

namespace {

constexpr real infinite = std::numeric_limits<real>::infinity();

/// Values by mpmath with 60 digits.
const struct {
    ExprType function;
    real x;
    real value;
} values[] = {
    {ExprType::Sin, 0.75L, 0.681638760023334166733242L},
    {ExprType::Sin, 100, -0.5063656411097587936565576L},
    {ExprType::Sin, 10000000000.0L, -0.4875060250875106915277943L},
    {ExprType::Cos, 0.75L, 0.7316888688738208863118388L},
    {ExprType::Cos, -100, 0.8623188722876839341019385L},
    {ExprType::Cos, 10000000000.0L, 0.8731196226768560011761913L},
    {ExprType::Tan, 0.75L, 0.9315964599440724611652028L},
    {ExprType::Tan, -2, 2.185039863261518991643306L},
    {ExprType::Tan, 100, -0.5872139151569290766778096L},
    {ExprType::Cotan, 0.75L, 1.073426148549377358743165L},
    {ExprType::Cotan, -2, 0.4576575543602857637502774L},
    {ExprType::Cotan, 100, -1.702956919426469216098731L},
    {ExprType::ASin, 0.75L, 0.8480620789814810080529443L},
    {ExprType::ASin, -1, -1.570796326794896619231322L},
    {ExprType::ASin, 0x1p-40L, 9.094947017729282379150392e-13L},
    {ExprType::ACos, 0.75L, 0.7227342478134156111783774L},
    {ExprType::ACos, -1, 3.141592653589793238462643L},
    {ExprType::ACos, -0.5L, 2.094395102393195492308429L},
    {ExprType::ATan, 0.75L, 0.6435011087932843868028092L},
    {ExprType::ATan, -100000.0L, -1.570786326794896952564655L},
    {ExprType::ATan, 0x1p-40L, 9.094947017729282379150388e-13L},
    {ExprType::ACotan, 0.75L, 0.9272952180016122324285125L},
    {ExprType::ACotan, -0.75L, -0.9272952180016122324285125L},
    {ExprType::ACotan, 100000.0L, 0.000009999999999666666666686667L},
    {ExprType::Sinh, 0.75L, 0.8223167319358299807036616L},
    {ExprType::Sinh, -11, -29937.07084924805883254041L},
    {ExprType::Sinh, 0x1p-40L, 9.094947017729282379150392e-13L},
    {ExprType::Cosh, 0.75L, 1.294683284676844687841708L},
    {ExprType::Cosh, -11, 29937.07086594975962278607L},
    {ExprType::Cosh, 1000, 9.850355570085234969444397e+433L},
    {ExprType::Tanh, 0.75L, 0.6351489523872873192144344L},
    {ExprType::Tanh, -3, -0.9950547536867304513318802L},
    {ExprType::Tanh, 0x1p-40L, 9.094947017729282379150388e-13L},
    {ExprType::Cotanh, 0.75L, 1.574433833577736488673563L},
    {ExprType::Cotanh, -3, -1.004969823313689171093151L},
    {ExprType::Cotanh, 0x1p-40L, 1099511627776.0L},
    {ExprType::ASinh, 0.75L, 0.6931471805599453094172321L},
    {ExprType::ASinh, -100000.0L, -12.20607264555517372950625L},
    {ExprType::ASinh, 0x1p-40L, 9.094947017729282379150389e-13L},
    {ExprType::ACosh, 1, 0.0L},
    {ExprType::ACosh, 1.5L, 0.9624236501192068949955178L},
    {ExprType::ACosh, 100000.0L, 12.20607264550517372950625L},
    {ExprType::ATanh, 0.75L, 0.9729550745276566525526764L},
    {ExprType::ATanh, -0.5L, -0.5493061443340548456976226L},
    {ExprType::ATanh, 0x1p-40L, 9.094947017729282379150393e-13L},
    {ExprType::ACotanh, 1.5L, 0.8047189562170501873003797L},
    {ExprType::ACotanh, -3, -0.3465735902799726547086161L},
    {ExprType::ACotanh, 100000.0L, 0.00001000000000033333333335333L},
    {ExprType::Sqrt, 2, 1.414213562373095048801689L},
    {ExprType::Sqrt, 0.75L, 0.8660254037844386467637232L},
    {ExprType::Sqrt, 10000000000.0L, 100000.0L},
    {ExprType::Exp, 0.75L, 2.11700001661267466854537L},
    {ExprType::Exp, -100, 3.720075976020835962959696e-44L},
    {ExprType::Exp, 11000, 1.735005819277738509638425e+4777L},
    {ExprType::Ln, 0.75L, -0.287682072451780927439219L},
    {ExprType::Ln, 0x1p-40L, -27.72588722239781237668928L},
    {ExprType::Ln, 10000000000.0L, 23.02585092994045684017991L},
};

TEST(ExactFunctions, HaveTheirValues) {
    for (const auto& c : values) {
        const real value = exactValue(c.function, c.x);
        EXPECT_LE(std::fabs(value - c.value), std::fabs(c.value) * 0x1p-62L)
            << static_cast<int>(c.function) << " of " << static_cast<double>(c.x);
    }
}

TEST(ExactFunctions, TruncateTowardsZero) {
    EXPECT_EQ(exactValue(ExprType::Trunc, 2.75L), 2);
    EXPECT_EQ(exactValue(ExprType::Trunc, -2.75L), -2);
    EXPECT_EQ(exactValue(ExprType::Trunc, 1e4000L), 1e4000L);
}

TEST(ExactFunctions, AreNoNumbersOutsideTheirDomain) {
    EXPECT_TRUE(std::isnan(exactValue(ExprType::ASin, 1.5L)));
    EXPECT_TRUE(std::isnan(exactValue(ExprType::ACos, -1.5L)));
    EXPECT_TRUE(std::isnan(exactValue(ExprType::ACosh, 0.5L)));
    EXPECT_TRUE(std::isnan(exactValue(ExprType::ATanh, 1.5L)));
    EXPECT_TRUE(std::isnan(exactValue(ExprType::ACotanh, 0.5L)));
    EXPECT_TRUE(std::isnan(exactValue(ExprType::Sqrt, -1)));
    EXPECT_TRUE(std::isnan(exactValue(ExprType::Ln, -1)));
}

TEST(ExactFunctions, AreInfiniteAtPoles) {
    EXPECT_EQ(exactValue(ExprType::Cotan, 0), infinite);
    EXPECT_EQ(exactValue(ExprType::Cotanh, 0), infinite);
    EXPECT_EQ(exactValue(ExprType::ATanh, -1), -infinite);
    EXPECT_EQ(exactValue(ExprType::ACotanh, 1), infinite);
    EXPECT_EQ(exactValue(ExprType::Ln, 0), -infinite);
}

TEST(ExactFunctions, PutTheInverseCotangentsJumpAtZero) {
    const real quarter = 1.570796326794896619231321691639751442L;
    EXPECT_EQ(exactValue(ExprType::ACotan, 0), quarter);
    EXPECT_EQ(exactValue(ExprType::ACotan, 0x1p-70L), quarter);
    EXPECT_EQ(exactValue(ExprType::ACotan, -0x1p-70L), -quarter);
}

TEST(ExactPowers, OfWholeExponentsAreProducts) {
    EXPECT_EQ(exactPower(-2, 3), -8);
    EXPECT_EQ(exactPower(-2, -3), -0.125L);
    EXPECT_EQ(exactPower(3, 40), 12157665459056928801.0L);
    EXPECT_EQ(exactPower(0, 5), 0);
    EXPECT_EQ(exactPower(0, 0), 1);
    EXPECT_EQ(exactPower(-1, 1048575), -1);
    EXPECT_EQ(exactPower(-1, -1048576), 1);
}

TEST(ExactPowers, OfOtherExponentsNeedAPositiveBase) {
    EXPECT_EQ(exactPower(4, 1.5L), 8);
    // 2^0.3 by mpmath with 60 digits.
    EXPECT_NEAR(static_cast<double>(exactPower(2, 0.3L) / 1.231144413344916284499393L - 1), 0, 3e-19);
    EXPECT_TRUE(std::isnan(exactPower(-2, 0.5L)));
    EXPECT_EQ(exactPower(0, 0.5L), 0);
}

TEST(ExactPowers, BeyondTheRangeAreInfiniteOrZero) {
    EXPECT_EQ(exactPower(10, 5000), infinite);
    EXPECT_EQ(exactPower(10, -5000), 0);
}

}  // namespace
