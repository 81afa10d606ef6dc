// SPDX-License-Identifier: MIT
// The factors of the derivative dump, to the last bit; dumps of whole runs are golden cases.
#include "report/dumps.hpp"

#include <cmath>
#include <limits>

#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

constexpr real smallest = std::numeric_limits<real>::denorm_min();

/// What a dump after one step of this size says about the derivatives of y.
std::string derivativesOfY(const std::string& model, real step) {
    ClassicOptions options;
    options.step = step;
    options.fixedStep = true;
    options.tMax = 2 * step;
    options.limits.simplifySmall = false;
    ClassicIntegrator run(Model::fromText(model), options);
    run.next();
    run.next();
    std::ostringstream out;
    dumpDerivatives(out, run);
    std::istringstream lines(out.str());
    std::string result;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("#(DER) dy^[", 0) == 0) result += line.substr(line.find(") = ") + 4) + ' ';
    }
    return result;
}

TEST(DerivativeDump, UndoesTheFactorsOfTheTerms) {
    // Derivatives of a polynomial with its own step: 5 t^3 - 2 t^2 + t at 0, then four that vanish.
    EXPECT_EQ(derivativesOfY("y' = y1 & 0; y1' = y2 & 1; y2' = 30 & -4;", unknown(0.3L)), "1 -4 30 0 0 0 0 ");
}

// With u the smallest number, h = 1 / sqrt(1.3 u): the factor of the second derivative is 2 * 1.3 u = 2.6 u, which is
// rounded to 3 u; divided first, 1.3 u would be rounded to u and doubled to 2 u. The second term of y is
// 2^-100 h^2 / 2 = 2^-100 / 2.6 u; three u of them are 3 / 2.6 of the 2^-100 that the derivative is.
TEST(DerivativeDump, MultipliesByTheOrderBeforeItDividesByTheStep) {
    const real step = 1 / std::sqrt(unknown(smallest) * std::ldexp(1.3L, 200)) * std::ldexp(1.0L, 100);
    EXPECT_EQ(derivativesOfY("y'' = 7.888609052210118e-31;", step), "0 9.10224e-31 0 0 0 0 ");
}

// Divided by such a step first, the orders would make 2 u of a factor that lies next to the middle between 2 u and 3 u
// and is rounded to 3 u. The third term of y is 2^-100 h^3 / 6 = 2^-100 / 2.5 u.
TEST(DerivativeDump, DoesNotDivideTheOrderByTheStep) {
    const real step = unknown(0x8.805322cba0b3d21p+5479L);
    ASSERT_EQ(1 / step * (2 / step) * (3 / step), 2 * smallest) << "the step would not show a wrong order";
    EXPECT_EQ(derivativesOfY("y''' = 7.888609052210118e-31;", step), "0 0 9.46633e-31 0 0 0 0 ");
}

}  // namespace
