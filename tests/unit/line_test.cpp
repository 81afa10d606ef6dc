// SPDX-License-Identifier: MIT
// Lines composed in memory against the same lines inserted piece by piece.
#include "text/line.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <sstream>

using namespace zirk;

namespace {

/// Counts the writes that reach it.
class CountingBuffer : public std::stringbuf {
public:
    int writes = 0;

protected:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override {
        ++writes;
        return std::stringbuf::xsputn(bytes, count);
    }
};

TEST(LineTest, IsWrittenWholeWhenItEnds) {
    CountingBuffer buffer;
    std::ostream out(&buffer);
    Line line(out);
    line << "#(TST) Max(" << std::string("y") << ")=" << -3 << ' ' << 0.25L;
    EXPECT_EQ(buffer.str(), "");
    line << endOfLine;
    EXPECT_EQ(buffer.str(), "#(TST) Max(y)=-3 0.25\n");
    line << "next" << endOfLine;
    EXPECT_EQ(buffer.str(), "#(TST) Max(y)=-3 0.25\nnext\n");
    EXPECT_EQ(buffer.writes, 2);
}

TEST(LineTest, GoesPieceByPieceWhereTheStreamAsksForIt) {
    std::ostringstream out;
    insertPieceByPiece(out);
    Line line(out);
    line << "a" << 1;
    EXPECT_EQ(out.str(), "a1");
}

class Twins {
public:
    Twins() { insertPieceByPiece(plain_); }

    template <typename Compose>
    void compose(Compose compose) {
        Line composed(composed_);
        Line inserted(plain_);
        compose(composed);
        compose(inserted);
    }

    void expectSame() const { EXPECT_EQ(composed_.str(), plain_.str()); }

private:
    std::ostringstream composed_;
    std::ostringstream plain_;
};

TEST(LineTest, OfIntegersIsThatOfInsertions) {
    Twins twins;
    twins.compose([](Line& line) {
        for (const int width : {-2, 0, 1, 3, 12, 25}) {
            for (const std::int64_t n :
                 {std::int64_t{0}, std::int64_t{7}, std::int64_t{-7}, std::int64_t{1234},
                  std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
                line.addInteger(n, width) << '|';
            }
        }
        line << std::numeric_limits<std::uint32_t>::max() << ' ' << std::numeric_limits<int>::min() << endOfLine;
    });
    twins.expectSame();
}

TEST(LineTest, OfNumbersIsThatOfInsertions) {
    Twins twins;
    twins.compose([](Line& line) {
        std::mt19937_64 random(7);
        for (int i = 0; i < 5000; ++i) {
            const int exponent = static_cast<int>(random() % 200) - 132;
            const real x = std::ldexp(static_cast<real>(random()), exponent) * (i % 3 == 0 ? -1 : 1);
            line.addScientific(x, static_cast<int>(random() % 24), static_cast<int>(random() % 34) - 2);
            line << ' ' << i << endOfLine;
        }
        for (const real x : {0.0L, -0.0L, std::numeric_limits<real>::infinity(), -std::numeric_limits<real>::max(),
                             std::numeric_limits<real>::quiet_NaN()}) {
            line.addScientific(x, 11, 15) << ' ';
            line.addScientific(x, -1, 70000);
            line.addScientific(x, 70000, 3) << endOfLine;
        }
    });
    twins.expectSame();
}

/// Before a stream is switched to scientific notation, which is for good.
TEST(LineTest, OfGeneralNumbersIsThatOfAFreshStream) {
    Twins twins;
    twins.compose([](Line& line) {
        std::mt19937_64 random(8);
        for (int i = 0; i < 5000; ++i) {
            const int exponent = static_cast<int>(random() % 120) - 110;
            line << std::ldexp(static_cast<real>(random()), exponent) << ' ' << (i - 2500) / 8.0L << endOfLine;
        }
    });
    twins.expectSame();
}

}  // namespace
