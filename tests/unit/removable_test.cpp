// SPDX-License-Identifier: MIT
// Limits at 0/0.
#include "adaptive/removable.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace zirk {
namespace {

TEST(LimitOf, IsTheValueThatTheFunctionWouldHave) {
    const auto rate = [](real u) { return u / std::expm1(u); };
    EXPECT_NEAR(static_cast<double>(limitOf(rate, 0, -1, 1) - 1), 0, 1e-17);
    EXPECT_NEAR(static_cast<double>(limitOf(rate, 0, 0, 1) - 1), 0, 1e-15) << "from one side";
    EXPECT_NEAR(static_cast<double>(limitOf(rate, 0, 0, -1) - 1), 0, 1e-15) << "backwards";
    const auto sine = [](real t) { return std::sin(t) / t; };
    EXPECT_NEAR(static_cast<double>(limitOf(sine, 0, -0.5L, 0.25L) - 1), 0, 1e-17);
}

TEST(LimitOf, IsNotANumberAtAPoleOrAnEdge) {
    EXPECT_TRUE(std::isnan(limitOf([](real t) { return std::sin(t) / (t * t); }, 0, -1, 1)));
    EXPECT_TRUE(std::isnan(limitOf([](real t) { return std::log(t); }, 0, -1, 1)));
    EXPECT_TRUE(std::isnan(limitOf([](real t) { return std::sqrt(t); }, -0.5L, -1, 1)));
    EXPECT_TRUE(std::isnan(limitOf([](real t) { return t < 0 ? -1 : 1; }, 0, -1, 1))) << "a jump";
}

}  // namespace
}  // namespace zirk
