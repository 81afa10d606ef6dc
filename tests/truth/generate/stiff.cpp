// SPDX-License-Identifier: MIT
// Stiff problems by very many steps of Taylor's series, in 113-bit numbers or for comparison in 64-bit ones.
//
//     stiff robertson|vanderpol ORDER quad|long TIME...
//
// The recurrences stand written out. Steps as in A. Jorba, M. Zou, Experimental Mathematics 14 (2005) 99-117; the time
// is summed without rounding in two parts.
#include <quadmath.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

constexpr int most = 64;

template <class Real>
using Terms = std::array<Real, most + 1>;

template <class Real>
Real product(const Terms<Real>& a, const Terms<Real>& b, int k) {
    Real sum = 0;
    for (int j = 0; j <= k; ++j) sum += a[j] * b[k - j];
    return sum;
}

/// a' = -0.04 a + 10^4 b c, b' = 0.04 a - 10^4 b c - 3 10^7 b^2, c' = 3 10^7 b^2.
template <class Real>
struct Robertson {
    static constexpr int size = 3;
    static constexpr double start[] = {1, 0, 0};
    void expand(Terms<Real> (&y)[size], int order) {
        const Real slow = Real(4) / 100;
        for (int k = 0; k < order; ++k) {
            const Real back = 10000 * product(y[1], y[2], k);
            const Real pairs = 30000000 * product(y[1], y[1], k);
            y[0][k + 1] = (back - slow * y[0][k]) / (k + 1);
            y[1][k + 1] = (slow * y[0][k] - back - pairs) / (k + 1);
            y[2][k + 1] = pairs / (k + 1);
        }
    }
};

/// x'' = 1000 (1 - x^2) x' - x.
template <class Real>
struct VanDerPol {
    static constexpr int size = 2;
    static constexpr double start[] = {2, 0};
    void expand(Terms<Real> (&y)[size], int order) {
        Terms<Real> damping;
        for (int k = 0; k < order; ++k) {
            damping[k] = (k == 0 ? 1 : 0) - product(y[0], y[0], k);
            y[0][k + 1] = y[1][k] / (k + 1);
            y[1][k + 1] = (1000 * product(damping, y[1], k) - y[0][k]) / (k + 1);
        }
    }
};

template <class Real>
void show(Real value) {
    char text[64];
    quadmath_snprintf(text, sizeof text, "%.34Qe", static_cast<__float128>(value));
    std::printf(" %s", text);
}

template <class Real, class System>
void run(int order, int times, char** time) {
    System system;
    static Terms<Real> y[System::size];
    for (int i = 0; i < System::size; ++i) y[i][0] = System::start[i];
    Real t = 0, rest = 0;
    for (int which = 0; which < times; ++which) {
        const Real end = static_cast<Real>(strtoflt128(time[which], nullptr));
        long steps = 0;
        for (bool arrived = false; !arrived; ++steps) {
            system.expand(y, order);
            Real h = end - t - rest;
            for (int k : {order - 1, order}) {
                // Each variable in its own size; double has the range for what is left.
                for (const Terms<Real>& c : y) {
                    const double size = std::fabs(static_cast<double>(c[0])) + 1e-12;
                    const double last = std::fabs(static_cast<double>(c[k]));
                    if (last == 0) continue;
                    const Real bound = std::exp(std::log(size / last) / k - 2);
                    if (bound < h) h = bound;
                }
            }
            arrived = h >= end - t - rest;
            for (Terms<Real>& c : y) {
                Real sum = c[order];
                for (int k = order - 1; k > 0; --k) sum = sum * h + c[k];
                c[0] += h * sum;
            }
            const Real moved = rest + h, next = t + moved;
            rest = moved - (next - t);
            t = next;
        }
        t = end;
        rest = 0;
        std::printf("%s %ld", time[which], steps);
        for (const Terms<Real>& c : y) show(c[0]);
        std::printf("\n");
        std::fflush(stdout);
    }
}

}  // namespace

int main(int count, char** word) {
    if (count < 5) return 2;
    const std::string problem = word[1], type = word[3];
    const int order = std::atoi(word[2]);
    if (order < 2 || order > most) return 2;
    if (problem == "robertson" && type == "quad") run<__float128, Robertson<__float128>>(order, count - 4, word + 4);
    if (problem == "robertson" && type == "long") run<long double, Robertson<long double>>(order, count - 4, word + 4);
    if (problem == "vanderpol" && type == "quad") run<__float128, VanDerPol<__float128>>(order, count - 4, word + 4);
    if (problem == "vanderpol" && type == "long") run<long double, VanDerPol<long double>>(order, count - 4, word + 4);
}
