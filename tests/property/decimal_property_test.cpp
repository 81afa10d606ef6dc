// SPDX-License-Identifier: MIT
// Numbers to text against the C library, on values of every kind. ZIRK_DECIMAL_VALUES sets how many; the seed goes with
// the number, so that a longer run sees other values.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "text/decimal.hpp"
#include "text/number_text.hpp"

using namespace zirk;

namespace {

using Limits = std::numeric_limits<real>;

class Values {
public:
    explicit Values(std::uint64_t seed) : random_(seed) {
        for (int q = -reach; q <= reach; ++q) {
            powers_.push_back(std::strtold(("1e" + std::to_string(q)).c_str(), nullptr));
        }
        std::uint64_t limit = 1;
        for (std::uint64_t& entry : limits_) entry = limit *= 10;
    }

    int between(int low, int high) { return low + static_cast<int>(random_() % static_cast<unsigned>(high - low + 1)); }

    /// A value of one of eight kinds, of either sign, mostly moved by some units in the last place.
    real next() {
        real x = magnitude();
        for (int steps = between(0, 1) == 0 ? 0 : between(-2, 2); steps != 0; steps += steps < 0 ? 1 : -1) {
            x = std::nextafter(x, steps < 0 ? real{0} : Limits::infinity());
        }
        return between(0, 1) == 0 ? x : -x;
    }

private:
    real magnitude() {
        switch (between(0, 7)) {
            case 0:  // of any size, subnormal numbers included; rarely, for the library takes its time
                if (between(0, 15) == 0) return std::ldexp(mantissa(), between(-16520, 16319));
                return std::ldexp(mantissa(), between(-1700, 1700));
            case 1:  // of everyday size
                return std::ldexp(mantissa(), between(-164, 36));
            case 2:  // near the middle between two decimal numbers
                return (figures() + 0.5L) * power(between(-30, 10));
            case 3:  // on that middle, or on a short number: odd over a power of two
                return std::ldexp(figures() * 2 + 1, -between(0, 60));
            case 4:  // beside a power of ten
                return power(between(-reach, reach) / between(1, 16));
            case 5:  // beside a power of two
                return std::ldexp(real{1}, between(-1700, 1700));
            case 6:  // with few figures, and exact as an integer
                return figures() * power(between(0, 5));
            default:
                // What a loop over a step that no binary number has adds up to.
                if (between(0, 15) != 0) return between(0, 100000) * step_;
                step_ = 1 / static_cast<real>(between(1, 1000));
                return special[between(0, 4)];
        }
    }

    real mantissa() { return static_cast<real>(random_() | 1ULL << 63); }
    real figures() { return static_cast<real>(random_() % limits_[between(0, 18)]); }
    real power(int exponent) const {
        const int index = exponent + reach;
        return powers_[static_cast<std::size_t>(index)];
    }

    static constexpr int reach = 520;
    static constexpr real special[] = {0, Limits::infinity(), Limits::quiet_NaN(), Limits::max(), Limits::denorm_min()};
    std::mt19937_64 random_;
    std::vector<real> powers_;
    real step_ = 0.1L;
    std::uint64_t limits_[19];
};

long wantedValues() {
    const char* wanted = std::getenv("ZIRK_DECIMAL_VALUES");
    return wanted == nullptr ? 1000000 : std::atol(wanted);
}

TEST(Decimal, TextIsThatOfTheCLibraryForValuesOfEveryKind) {
    const long count = wantedValues();
    Values values(static_cast<std::uint64_t>(count));
    long decided[2] = {0, 0};
    char expected[512];
    std::string text;
    for (long i = 0; i < count; ++i) {
        const real x = values.next();
        // Mostly precisions that are not left to the library anyway; the default one often.
        const int precision = i % 8 == 0 ? values.between(0, 60) : i % 8 == 1 ? 11 : values.between(0, 18);
        const int width = values.between(-1, 40);

        char figures[decimalTextSize];
        if (writeScientific(figures, x, precision) != nullptr) ++decided[0];
        std::snprintf(expected, sizeof expected, "%*.*Le", std::max(width, 0), precision, x);
        text.clear();
        appendScientific(text, x, precision);
        padLeft(text, 0, width);
        if (text != expected)
            FAIL() << text << " is not " << expected << ": precision " << precision << ", width " << width;

        if (writeGeneral(figures, x) != nullptr) ++decided[1];
        std::snprintf(expected, sizeof expected, "%.6Lg", x);
        text.clear();
        appendGeneral(text, x);
        if (text != expected) FAIL() << text << " is not " << expected;
    }
    std::printf("%ld values, decided without the library: %ld scientific, %ld general\n", count, decided[0],
                decided[1]);
    // A writer that left everything to the library would prove nothing.
    EXPECT_GT(decided[0], count / 3);
    EXPECT_GT(decided[1], count / 3);
}

/// Every value of n figures is its own text, and so is every middle between two: the tie goes to the even figure.
TEST(Decimal, TiesAndShortNumbersAreRoundedHalfToEven) {
    for (int n = 10; n < 10000; ++n) {
        for (const real x : {static_cast<real>(n), n + 0.5L, n / 1024.0L, (2 * n + 1) / 4096.0L}) {
            for (int precision = 0; precision <= 18; ++precision) {
                char expected[64];
                std::snprintf(expected, sizeof expected, "%.*Le", precision, x);
                std::string text;
                appendScientific(text, x, precision);
                ASSERT_EQ(text, expected);
            }
        }
    }
}

}  // namespace
