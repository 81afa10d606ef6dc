// SPDX-License-Identifier: MIT
// Term arrays keep what they hold when they grow or change their form.
#include "series/term_arrays.hpp"

#include <gtest/gtest.h>

using namespace zirk;

namespace {

template <class Cell>
void fill(TermArrays<Cell>& arrays, ArrayIndex array, std::initializer_list<real> terms) {
    std::size_t k = 0;
    for (const real term : terms) EXPECT_TRUE(store(arrays.at(array, k++), term));
}

TEST(TermArrays, KeepTermsWhenTheyGrow) {
    TermArrays<Halves> arrays(2, 3);
    fill(arrays, 0, {3.1L, 5.3L});
    fill(arrays, 1, {7.7L, 1.9L});
    arrays.reserve(200);
    EXPECT_EQ(real(arrays.at(0, 0)), 3.1L);
    EXPECT_EQ(real(arrays.at(1, 1)), 1.9L);
    fill(arrays, 1, {2});
    EXPECT_EQ(real(arrays.at(0, 1)), 5.3L);
}

TEST(TermArrays, TakeTermsInAnotherForm) {
    TermArrays<Halves> halves(2, 3);
    halves.reserve(101);
    fill(halves, 0, {3.1L, 5.3L});
    fill(halves, 1, {7.7L, 1.9L});
    TermArrays<real> extended(2, 0);
    extended.copy(halves);
    EXPECT_EQ(extended.at(0, 0), 3.1L);
    EXPECT_EQ(extended.at(1, 1), 1.9L);
    EXPECT_TRUE(store(extended.at(1, 100), 1e-400L));
    EXPECT_EQ(extended.at(1, 100), 1e-400L);
}

}  // namespace
