// SPDX-License-Identifier: MIT
// Numbers beyond the composed size, against a stream and against simple counts.
#include "text/wide_number.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <limits>
#include <sstream>
#include <streambuf>

using namespace zirk;

namespace {

std::string byStream(real x, int precision, int width) {
    std::ostringstream out;
    out << std::scientific << std::setprecision(precision) << std::setw(width) << x;
    return out.str();
}

/// Counts characters and keeps none.
class Counter : public std::streambuf {
public:
    std::int64_t total = 0;
    std::int64_t zeros = 0;
    std::int64_t blanks = 0;
    std::int64_t longest = 0;

protected:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override {
        total += count;
        longest = std::max<std::int64_t>(longest, count);
        zeros += std::count(bytes, bytes + count, '0');
        blanks += std::count(bytes, bytes + count, ' ');
        return count;
    }
};

TEST(WideNumber, IsThatOfAStreamAtAnyWidthAndPrecision) {
    using Limits = std::numeric_limits<real>;
    for (const real x : {-0.1L, -0.0L, Limits::max(), -Limits::infinity(), Limits::quiet_NaN()}) {
        for (const int precision : {-1, 11, widestComposed + 1, 3 * widestComposed + 7}) {
            for (const int width : {-5, 15, 3 * widestComposed + 14, 4 * widestComposed}) {
                std::ostringstream out;
                writeWide(out, x, precision, width);
                ASSERT_TRUE(out.str() == byStream(x, precision, width)) << x << ' ' << precision << ' ' << width;
            }
        }
    }
}

TEST(WideNumber, GoesOutInPiecesOfBoundedSize) {
    Counter counter;
    std::ostream out(&counter);
    writeWide(out, 1, 9000000, 20000000);
    EXPECT_EQ(counter.total, 20000000);
    // 9000000 after the point, two in the exponent.
    EXPECT_EQ(counter.zeros, 9000000 + 2);
    EXPECT_EQ(counter.blanks, 20000000 - (9000000 + 6));
    EXPECT_LE(counter.longest, widestComposed + 2);
}

}  // namespace
