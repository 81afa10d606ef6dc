// SPDX-License-Identifier: MIT
// Numbers from text, and the comparison that tells zeros apart.
#include "expr/real.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "text/from_text.hpp"

using namespace zirk;

namespace {

constexpr real kNaN = std::numeric_limits<real>::quiet_NaN();
constexpr int kLargest = std::numeric_limits<int>::max();
constexpr int kSmallest = std::numeric_limits<int>::min();

TEST(Real, FromTextCarriesDoublePrecisionOnly) {
    EXPECT_EQ(realFromText("0.1"), static_cast<real>(0.1));
    EXPECT_NE(realFromText("0.1"), 0.1L);
    EXPECT_EQ(realFromText("1e-10x"), static_cast<real>(1e-10));
}

TEST(Real, FromTextThatIsNotANumberIsZero) {
    EXPECT_EQ(realFromText(""), 0);
    EXPECT_EQ(realFromText("abc"), 0);
}

TEST(Int, FromTextReadsLeadingDigitsAndSaturates) {
    EXPECT_EQ(intFromText("-12;3"), -12);
    EXPECT_EQ(intFromText("x"), 0);
    EXPECT_EQ(intFromText("99999999999999999999"), kLargest);
    EXPECT_EQ(intFromText("-2147483649"), kSmallest);
}

TEST(Flag, IsTrueExactlyForOne) {
    EXPECT_TRUE(flagFromText("1"));
    EXPECT_TRUE(flagFromText("01 "));
    EXPECT_FALSE(flagFromText("2"));
    EXPECT_FALSE(flagFromText("true"));
}

TEST(Pi, IsTheNearestExtendedNumber) { EXPECT_EQ(pi, 0xc.90fdaa22168c235p-2L); }

TEST(SameValue, TellsZerosApartAndTakesNotANumbersTogether) {
    EXPECT_TRUE(sameValue(0.0L, 0.0L));
    EXPECT_FALSE(sameValue(0.0L, -0.0L));
    EXPECT_TRUE(sameValue(kNaN, -kNaN));
    EXPECT_FALSE(sameValue(kNaN, 1));
}

TEST(SaturatingSum, StaysAtTheEndsOfTheRange) {
    EXPECT_EQ(saturatingSum(kLargest, 1), kLargest);
    EXPECT_EQ(saturatingSum(kSmallest, -1), kSmallest);
    EXPECT_EQ(saturatingSum(kLargest, kSmallest), -1);
    EXPECT_EQ(saturatingSum(kLargest, -static_cast<std::int64_t>(kSmallest)), kLargest);
}

}  // namespace
