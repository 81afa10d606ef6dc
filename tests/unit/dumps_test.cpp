// SPDX-License-Identifier: MIT
// The factors of the derivative dump, to the last bit; dumps of whole runs are golden cases.
#include "report/dumps.hpp"

#include <limits>

#include "tests/unit/fixture.hpp"
#include "text/line.hpp"

using namespace zirk;

namespace {

/// A variable with prescribed terms.
class GivenTerms final : public Differential {
public:
    GivenTerms(const std::string& name, std::vector<real> given) : Differential(name, Ref(), 0), given_(given) {
        termStamp_ = 0;
        for (const real& term : given) termSlot(++highest_) = term;
    }
    void GetDY(int k, real& out) override { out = given_[static_cast<std::size_t>(k)]; }

private:
    std::vector<real> given_;
};

class DerivativeDump : public NodeTest {
protected:
    /// The numbers of the dump, one a line, as a stream of this precision shows them.
    std::string numbers(std::ostringstream& out) {
        dumpDerivatives(out, settings.equations, settings, 0);
        std::istringstream lines(out.str());
        std::string result;
        for (std::string line; std::getline(lines, line);) {
            const std::size_t at = line.find(") = ");
            if (line.rfind("#(DER) dy^[", 0) == 0) result += line.substr(at + 4) + '\n';
        }
        return result;
    }

    static std::string shown(const std::vector<real>& values, int precision) {
        std::ostringstream out;
        out.precision(precision);
        for (const real& value : values) out << value << '\n';
        return out.str();
    }
};

TEST_F(DerivativeDump, MultipliesByTheOrderBeforeItDividesByTheStep) {
    constexpr int count = 12;
    settings.step = unknown(0.3L);
    settings.equations.enter(new GivenTerms("y", std::vector<real>(count, 1)));
    std::vector<real> expected;
    bool divisionFirstDiffers = false;
    bool quotientFirstDiffers = false;
    real factor = 1;
    for (int i = 1; i < count; ++i) {
        const real before = factor;
        factor = factor * static_cast<real>(i);
        factor = factor / settings.step;
        expected.push_back(factor);
        divisionFirstDiffers = divisionFirstDiffers || before / settings.step * static_cast<real>(i) != factor;
        quotientFirstDiffers = quotientFirstDiffers || before * (static_cast<real>(i) / settings.step) != factor;
    }
    EXPECT_TRUE(divisionFirstDiffers && quotientFirstDiffers) << "the step would not show a wrong order";
    // As plain insertions the numbers follow the precision of the stream.
    std::ostringstream out;
    out.precision(std::numeric_limits<real>::max_digits10);
    insertPieceByPiece(out);
    EXPECT_EQ(numbers(out), shown(expected, std::numeric_limits<real>::max_digits10));
}

// With u the smallest number, h = 1 / sqrt(1.3 u): the factor of the second derivative is 2 * 1.3 u = 2.6 u, which is
// rounded to 3 u; divided first, 1.3 u would be rounded to u and doubled to 2 u. The term 2^16383 makes 3 * 2^-62 of
// it.
TEST_F(DerivativeDump, ShowsTheOrderOfItsOperationsAtTheEdgeOfTheNumbers) {
    const real smallest = std::numeric_limits<real>::denorm_min();
    settings.step = 1 / std::sqrt(unknown(smallest) * std::ldexp(1.3L, 200)) * std::ldexp(1.0L, 100);
    settings.equations.enter(new GivenTerms("y", {0, 0, std::ldexp(1.0L, 16383)}));
    for (const bool piecewise : {false, true}) {
        std::ostringstream out;
        if (piecewise) insertPieceByPiece(out);
        EXPECT_EQ(numbers(out), "0\n6.50521e-19\n") << piecewise;
    }
}

}  // namespace
