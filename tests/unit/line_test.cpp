// SPDX-License-Identifier: MIT
// Lines composed in memory against the same lines inserted piece by piece.
#include "text/line.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <iomanip>
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

/// The lines in which two texts part, which may be too long to be shown whole.
std::string firstDifference(const std::string& a, const std::string& b) {
    std::istringstream first(a);
    std::istringstream second(b);
    std::string line;
    std::string other;
    do {
        std::getline(first, line);
        std::getline(second, other);
    } while (line == other && first && second);
    return line.substr(0, 200) + "\nand\n" + other.substr(0, 200);
}

/// What defines how a line looks: every piece inserted into a stream with its manipulators.
class Insertions {
public:
    explicit Insertions(std::ostream& out) : out_(out) {}

    template <class Piece>
    Insertions& operator<<(const Piece& piece) {
        out_ << piece;
        return *this;
    }
    Insertions& operator<<(EndOfLine) {
        out_ << std::endl;
        return *this;
    }
    Insertions& addInteger(std::int64_t n, int width = 0) {
        out_ << std::setw(width) << n;
        return *this;
    }
    Insertions& addScientific(const real& x, int precision, int width) {
        out_ << std::scientific << std::setprecision(precision) << std::setw(width) << x;
        return *this;
    }

private:
    std::ostream& out_;
};

/// Composes the same lines both ways.
template <class Compose>
void expectInsertions(Compose compose) {
    std::ostringstream composed;
    std::ostringstream inserted;
    Line line(composed);
    Insertions insertions(inserted);
    compose(line);
    compose(insertions);
    EXPECT_TRUE(composed.str() == inserted.str()) << firstDifference(composed.str(), inserted.str());
}

TEST(LineTest, OfIntegersIsThatOfInsertions) {
    expectInsertions([](auto& line) {
        for (const int width : {-2, 0, 1, 3, 12, 25}) {
            for (const std::int64_t n :
                 {std::int64_t{0}, std::int64_t{7}, std::int64_t{-7}, std::int64_t{1234},
                  std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
                line.addInteger(n, width) << '|';
            }
        }
        line << std::numeric_limits<std::uint32_t>::max() << ' ' << std::numeric_limits<int>::min() << endOfLine;
    });
}

TEST(LineTest, OfNumbersIsThatOfInsertions) {
    expectInsertions([](auto& line) {
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
}

/// Before a stream is switched to scientific notation, which is for good.
TEST(LineTest, OfGeneralNumbersIsThatOfAFreshStream) {
    expectInsertions([](auto& line) {
        std::mt19937_64 random(8);
        for (int i = 0; i < 5000; ++i) {
            const int exponent = static_cast<int>(random() % 120) - 110;
            line << std::ldexp(static_cast<real>(random()), exponent) << ' ' << (i - 2500) / 8.0L << endOfLine;
        }
    });
}

}  // namespace
