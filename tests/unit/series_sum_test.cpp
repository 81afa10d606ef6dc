// SPDX-License-Identifier: MIT
// Where a series ends: after enough negligible terms in a row, or at the limit.
#include "expr/series_sum.hpp"

#include <limits>
#include <random>

#include "series/halves.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class Sum : public NodeTest {
protected:
    Sum() {
        limits.accuracy = 0.001L;
        limits.zeroTerms = 2;
        limits.maxOrder = 10;
    }

    /// Of terms in rising order, as far as it wants them.
    SeriesSum of(const std::vector<real>& terms) {
        SeriesSum series;
        series.begin(terms[0], calculus);
        for (std::size_t k = 1; k < terms.size() && series.wantsMore(calculus); ++k) series.add(terms[k], calculus);
        return series;
    }
};

TEST_F(Sum, EndsAfterNegligibleTermsInARow) {
    const SeriesSum series = of({1, 0.5L, 0.0001L, 0.0001L, 100});
    EXPECT_EQ(series.k, 4);
    EXPECT_EQ(series.sum, ((1 + 0.5L) + 0.0001L) + 0.0001L) << "the negligible terms are in the sum";
    EXPECT_EQ(series.order(), 2) << "but not in the order";
    EXPECT_FALSE(series.wantsMore(calculus));
}

TEST_F(Sum, CountsAnewAfterATermThatIsNotNegligible) {
    const SeriesSum series = of({1, 0.0001L, 0.25L, 0.0001L, 0.0001L, 100});
    EXPECT_EQ(series.k, 5);
    EXPECT_EQ(series.order(), 3);
}

TEST_F(Sum, EndsAtTheLimit) {
    const SeriesSum series = of(std::vector<real>(20, 1));
    EXPECT_EQ(series.k, 10);
    EXPECT_EQ(series.sum, 10);
    EXPECT_EQ(series.order(), 10);
}

TEST_F(Sum, ComparesWithTheSumThatContainsTheTerm) {
    // 1 - 0.9995 = 0.0005: the bound is 5e-7 when the second term comes, and the third is greater.
    EXPECT_EQ(of({1, -0.9995L, 0.0001L}).negligible, 0);
    EXPECT_EQ(of({1, -0.5L, 0.0001L}).negligible, 1);
}

TEST_F(Sum, TakesAZeroForNegligibleOnlyWhenThereIsASum) {
    EXPECT_EQ(of({0, 0, 0}).negligible, 0);
    EXPECT_EQ(of({0, 1, 0}).negligible, 1);
    limits.accuracy = 0;
    EXPECT_EQ(of({0, 1, 0}).negligible, 0);
}

TEST_F(Sum, WantsZerosWhereTheBoundIsTooSmallForANumber) {
    const real smallest = std::numeric_limits<real>::denorm_min();
    EXPECT_EQ(of({4 * smallest, smallest}).negligible, 0);
    EXPECT_EQ(of({4 * smallest, 0}).negligible, 1);
}

TEST_F(Sum, NeverEndsOnZerosBehindWhatIsNoNumber) {
    EXPECT_EQ(of({std::numeric_limits<real>::quiet_NaN(), 0, 0, 0}).k, 4);
}

TEST_F(Sum, TakesAllTermsWhenAsked) {
    limits.useAllTerms = true;
    // Only terms from 10 - 2 on count, so that the limit ends the sum.
    const SeriesSum series = of({1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 100});
    EXPECT_EQ(series.k, 10);
    EXPECT_EQ(series.order(), 8);
}

TEST_F(Sum, KnowsWhetherThereWereOnlyZeros) {
    EXPECT_TRUE(of({0, -0.0L, 0}).onlyZeros);
    EXPECT_FALSE(of({0, 0, 1e-4940L}).onlyZeros);
    EXPECT_FALSE(of({1, 0}).onlyZeros);
}

TEST_F(Sum, BeginsFromAPositiveZero) { EXPECT_FALSE(std::signbit(of({-0.0L}).sum)); }

TEST_F(Sum, TakesARunAsOneByOne) {
    // Every third cell belongs to the sum; the others would be seen.
    std::vector<Halves> cells(30);
    std::vector<real> terms{1};
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const real term = 1 / (3.7L + static_cast<real>(i * i * i));
        ASSERT_TRUE(store(cells[i], i % 3 == 0 ? term : 1000));
        if (i % 3 == 0) terms.push_back(term);
    }
    const SeriesSum expected = of(terms);
    ASSERT_LT(expected.k, 9) << "ends within the run";
    SeriesSum series;
    series.begin(1, calculus);
    series.addRun(cells.data(), 3, 9, calculus);
    EXPECT_EQ(series.k, expected.k);
    EXPECT_EQ(series.sum, expected.sum);
    EXPECT_EQ(series.negligible, expected.negligible);
}

TEST_F(Sum, TakesAnyRunsAsOneByOne) {
    std::mt19937 random(3);
    const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    limits.maxOrder = 40;
    for (int i = 0; i < 20000; ++i) {
        limits.zeroTerms = 1 + below(5);
        limits.useAllTerms = below(4) == 0;
        // Large, negligible and zero terms in any order, now and then many of one kind, or a sum that is zero.
        std::vector<real> terms{below(5) == 0 ? 0.0L : 1.0L};
        const int kinds = 1 + below(4);
        while (terms.size() < 45) {
            const int kind = below(kinds);
            const real term = kind == 0 ? 0.5L : kind == 1 ? 1e-5L : kind == 2 ? 0.0L : -terms.front();
            for (int n = 1 + below(6); n > 0; --n) terms.push_back(below(2) == 0 ? term : term / 2);
        }
        const SeriesSum expected = of(terms);
        SeriesSum series;
        series.begin(terms[0], calculus);
        while (series.wantsMore(calculus))
            series.addRun(&terms[static_cast<std::size_t>(series.k)], 1, 1 + below(9), calculus);
        ASSERT_EQ(series.k, expected.k) << i;
        ASSERT_TRUE(sameValue(series.sum, expected.sum)) << i;
        ASSERT_EQ(series.negligible, expected.negligible) << i;
        ASSERT_EQ(series.onlyZeros, expected.onlyZeros) << i;
    }
}

TEST_F(Sum, TakesNoMoreOfARunThanItsCountAndTheLimit) {
    const std::vector<real> ones(20, 1);
    SeriesSum series;
    series.begin(1, calculus);
    series.addRun(ones.data(), 1, 3, calculus);
    EXPECT_EQ(series.k, 4);
    series.addRun(ones.data(), 1, 15, calculus);
    EXPECT_EQ(series.k, 10);
    EXPECT_EQ(series.sum, 10);
}

}  // namespace
