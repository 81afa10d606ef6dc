// SPDX-License-Identifier: MIT
// Sums in lanes, and the loop over orders with and without the wider registers.
#include "adaptive/order_loop.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "adaptive/lanes.hpp"
#include "adaptive/lowering.hpp"
#include "lang/problem_content.hpp"

using namespace zirk;

namespace {

/// Numbers between 1 and 2 with all their digits.
std::vector<double> numbers(std::size_t count, double seed) {
    std::vector<double> result;
    for (std::size_t i = 0; i < count; ++i) {
        const double x = std::sin(seed + static_cast<double>(i)) * 1000;
        result.push_back(1 + x - std::floor(x));
    }
    return result;
}

/// In the order of additions that sumOfProducts promises.
double sumAsPromised(const std::vector<double>& x, const std::vector<double>& y, std::size_t count) {
    double s[4] = {0, 0, 0, 0};
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        for (std::size_t lane = 0; lane < 4; ++lane) s[lane] += x[i + lane] * y[i + lane];
    }
    double even = s[0] + s[2];
    double odd = s[1] + s[3];
    if (count - i >= 2) {
        even += x[i] * y[i];
        odd += x[i + 1] * y[i + 1];
        i += 2;
    }
    const double sum = even + odd;
    return i < count ? sum + x[i] * y[i] : sum;
}

TEST(SumsOfProducts, AddInTheOrderThatTheyPromise) {
    const std::vector<double> x = numbers(40, 1);
    const std::vector<double> y = numbers(40, 2);
    const std::vector<double> z = numbers(40, 3);
    for (std::size_t count = 0; count <= 40; ++count) {
        EXPECT_EQ(sumOfProducts(x.data(), y.data(), count), sumAsPromised(x, y, count)) << count;
        const TwoSums<double> both = sumsOfProducts(x.data(), y.data(), z.data(), y.data(), count);
        EXPECT_EQ(both.a, sumAsPromised(x, y, count)) << count;
        EXPECT_EQ(both.b, sumAsPromised(z, y, count)) << count;
    }
}

TEST(SumsOfProducts, DoNotReadPastTheirLastProduct) {
    std::vector<double> x = numbers(40, 1);
    std::vector<double> y = numbers(40, 2);
    for (std::size_t count = 0; count < 40; ++count) {
        std::vector<double> poisoned = x;
        for (std::size_t i = count; i < 40; ++i) poisoned[i] = std::nan("");
        EXPECT_EQ(sumOfProducts(poisoned.data(), y.data(), count), sumOfProducts(x.data(), y.data(), count)) << count;
    }
}

/// The arrays of one kind of number for a text, with some values at the begin of the step.
struct Tables {
    Tables(const ValueSystem& system, const Arrangement& arrangement)
        : now(numbers(system.size(), 4)),
          first(now),
          reciprocals(numbers(system.size(), 5)),
          factors(numbers(system.size(), 6)),
          cells(arrangement.cells),
          rows(static_cast<std::size_t>(arrangement.order + 1) * arrangement.rowLength) {
        for (int k = 0; k <= arrangement.order; ++k) ofOrder.push_back(1.0 / k);
        tables = {
            &arrangement,   system.rates.data(), system.variables, now.data(),     first.data(), reciprocals.data(),
            factors.data(), cells.data(),        rows.data(),      ofOrder.data(), 0.125};
        for (const Arrangement::Instruction& i : arrangement.instructions) cells[i.rising] = first[i.value];
        advanceVariables(tables, 0);
    }

    std::vector<double> now;
    std::vector<double> first;
    std::vector<double> reciprocals;
    std::vector<double> factors;
    std::vector<double> cells;
    std::vector<double> rows;
    std::vector<double> ofOrder;
    OrderTables<double> tables{};
};

TEST(OrderLoop, GivesTheSameBitsWithoutAvx) {
    const Problem problem = Problem::fromText(
        "x' = sin(x*y) + exp(y)/z - 1/x + x^1.7 & 1; y' = cos(x*y) - ln(x) + 3*z*z - t & 1;"
        "z' = sqrt(x) + tanh(y*z) + asin(z/9) - x/sqrt(x*x + y*y)^3 + 2^trunc(t)*x & 1; u' = -y/sqrt(x*x + y*y)^3;");
    const ProblemContent& content = ProblemAccess::of(problem);
    std::vector<NodeIndex> rates;
    for (const ProblemContent::Variable& variable : content.variables) rates.push_back(variable.rate);
    const ValueSystem system = arranged(lower(*content.graph, rates, {}));
    constexpr int order = 30;
    const Arrangement arrangement(system, order);
    Tables with(system, arrangement);
    Tables without(system, arrangement);
    runOrders(with.tables, 1, order);
    runOrdersWithoutAvx(without.tables, 1, order);
    EXPECT_EQ(with.rows, without.rows);
    EXPECT_EQ(with.cells, without.cells);
    for (const double term : with.rows) EXPECT_TRUE(std::isfinite(term));
}

TEST(OrderLoop, RoundsRealTermsOfVariablesOnce) {
    const Problem problem = Problem::fromText("x' = t;");
    const ProblemContent& content = ProblemAccess::of(problem);
    const ValueSystem system = arranged(lower(*content.graph, {content.variables[0].rate}, {}));
    constexpr int order = 40;
    const Arrangement arrangement(system, order);
    std::vector<real> now(system.size(), 0);
    std::vector<real> rows(static_cast<std::size_t>(order + 1) * arrangement.rowLength);
    std::vector<real> cells(arrangement.cells);
    std::vector<real> none(system.size() + order + 1, 0);
    const OrderTables<real> tables{&arrangement, system.rates.data(), 1,           now.data(),
                                   none.data(),  none.data(),         none.data(), cells.data(),
                                   rows.data(),  none.data(),         0.5L};
    for (int k = 0; k < order; ++k) {
        now[system.rates[0]] = 1.2345678901234567891L;
        advanceVariables(tables, k);
        EXPECT_EQ(rows[static_cast<std::size_t>(k + 1) * arrangement.rowLength],
                  1.2345678901234567891L / 2 / static_cast<real>(k + 1));
    }
}

}  // namespace
