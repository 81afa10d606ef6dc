// SPDX-License-Identifier: MIT
// Prints reference values for the examples, found by another method in another precision: extrapolation of the modified
// midpoint rule (W. B. Gragg, SIAM J. Numer. Anal. 2 (1965) 384-403) in 113-bit numbers.
//
// The numbers in the checks beside this file that are marked "reference.cpp" come from here:
//     build/test/tests/example-reference
#include <quadmath.h>

#include <cstdio>
#include <functional>
#include <vector>

using Real = __float128;
using State = std::vector<Real>;
using Rates = std::function<void(Real t, const State& y, State& rates)>;

namespace {

/// One step of length H: midpoint rule with 2, 4, 6 ... substeps, extrapolated in the square of the substep (Neville).
State step(const Rates& f, Real t, const State& y, Real H) {
    constexpr int rows = 12;
    const std::size_t n = y.size();
    std::vector<State> previous, current;
    State rates(n);
    for (int row = 0; row < rows; ++row) {
        const int substeps = 2 * (row + 1);
        const Real h = H / substeps;
        State before = y, now(n);
        f(t, y, rates);
        for (std::size_t i = 0; i < n; ++i) now[i] = y[i] + h * rates[i];
        for (int substep = 1; substep < substeps; ++substep) {
            f(t + substep * h, now, rates);
            for (std::size_t i = 0; i < n; ++i) {
                const Real next = before[i] + 2 * h * rates[i];
                before[i] = now[i];
                now[i] = next;
            }
        }
        current.assign(1, now);
        for (int column = 1; column <= row; ++column) {
            const Real ratio = Real(row + 1) / Real(row + 1 - column);
            State better(n);
            for (std::size_t i = 0; i < n; ++i) {
                better[i] =
                    current[column - 1][i] + (current[column - 1][i] - previous[column - 1][i]) / (ratio * ratio - 1);
            }
            current.push_back(better);
        }
        previous.swap(current);
    }
    return previous.back();
}

/// From t0 to t1 in steps of about H.
State integrate(const Rates& f, State y, Real t0, Real t1, Real H) {
    const int steps = static_cast<int>((t1 - t0) / H) + 1;
    const Real h = (t1 - t0) / steps;
    for (int i = 0; i < steps; ++i) y = step(f, t0 + i * h, y, h);
    return y;
}

/// Time until component i rises through the level, not counting the first step; y becomes the state there.
Real nextRise(const Rates& f, State& y, int i, Real H, Real level = 0) {
    Real t = 0;
    State ahead = step(f, t, y, H);
    while (t == 0 || !(y[i] < level && ahead[i] >= level)) {
        y = ahead;
        t += H;
        ahead = step(f, t, y, H);
    }
    State rates(y.size());
    for (int round = 0; round < 8; ++round) {
        f(t, y, rates);
        const Real correction = (level - y[i]) / rates[i];
        y = step(f, t, y, correction);
        t += correction;
    }
    return t;
}

void show(const char* name, const State& y) {
    std::printf("%s", name);
    for (Real value : y) {
        char text[64];
        quadmath_snprintf(text, sizeof text, "%.20Qg", value);
        std::printf(" %s", text);
    }
    std::printf("\n");
}

/// Period and section of a cycle, after so many returns that a start off the cycle has come to it.
void showPeriod(const char* name, const Rates& f, State y, int i, Real H, Real level, int returns) {
    Real period = 0;
    for (int k = 0; k < returns; ++k) period = nextRise(f, y, i, H, level);
    State line = y;
    line.insert(line.begin(), period);
    show(name, line);
}

/// The closed orbit through (0, y, z), by Newton's method on the return to x = 0 with differences as derivatives.
void showCycle(const char* name, const Rates& f, Real y, Real z) {
    Real period = 0;
    const auto comeBack = [&](Real fromY, Real fromZ) {
        State s{0, fromY, fromZ};
        period = nextRise(f, s, 0, 0.05Q);  // x starts falling, so the second passage is the other way
        s[0] = -s[0];
        const Rates mirrored = [&f](Real t, const State& u, State& r) {
            f(t, {-u[0], u[1], u[2]}, r);
            r[0] = -r[0];
        };
        period += nextRise(mirrored, s, 0, 0.05Q);
        return s;
    };
    for (int round = 0; round < 5; ++round) {
        const Real d = 1e-15Q;
        const State here = comeBack(y, z), alongY = comeBack(y + d, z), alongZ = comeBack(y, z + d);
        const Real a = (alongY[1] - here[1]) / d - 1, b = (alongZ[1] - here[1]) / d;
        const Real c = (alongY[2] - here[2]) / d, e = (alongZ[2] - here[2]) / d - 1;
        const Real p = y - here[1], q = z - here[2];
        y += (e * p - b * q) / (a * e - b * c);
        z += (a * q - c * p) / (a * e - b * c);
    }
    comeBack(y, z);
    show(name, {period, y, z});
}

const Rates lorenz = [](Real, const State& y, State& r) {
    r = {10 * (y[1] - y[0]), y[0] * (28 - y[2]) - y[1], y[0] * y[1] - Real(8) / 3 * y[2]};
};
const Rates roessler = [](Real, const State& y, State& r) {
    r = {-y[1] - y[2], y[0] + y[1] / 5, Real(1) / 5 + y[2] * (y[0] - Real(57) / 10)};
};
const Rates lotkaVolterra = [](Real, const State& y, State& r) { r = {y[0] - y[0] * y[1], y[0] * y[1] - y[1]}; };
const Rates vanDerPol = [](Real, const State& y, State& r) { r = {y[1], 5 * (1 - y[0] * y[0]) * y[1] - y[0]}; };
const Rates brusselator = [](Real, const State& y, State& r) {
    r = {1 + y[0] * y[0] * y[1] - 4 * y[0], 3 * y[0] - y[0] * y[0] * y[1]};
};
const Rates grazing = [](Real, const State& y, State& r) {
    const Real eaten = y[0] * y[1] / (1 + y[0]);
    r = {y[0] * (1 - y[0] / 4) - eaten, eaten - y[1] / 2};
};
const Rates duffing = [](Real t, const State& y, State& r) {
    r = {y[1], y[0] - y[0] * y[0] * y[0] - Real(3) / 10 * y[1] + cosq(Real(6) / 5 * t) / 2};
};
const Rates henonHeiles = [](Real, const State& y, State& r) {
    r = {y[2], y[3], -y[0] - 2 * y[0] * y[1], -y[1] - y[0] * y[0] + y[1] * y[1]};
};
/// Angles and rates; the accelerations are solved from the two Lagrange equations by Cramer's rule.
const Rates doublePendulum = [](Real, const State& y, State& r) {
    const Real c = cosq(y[0] - y[1]), s = sinq(y[0] - y[1]);
    const Real upper = -s * y[3] * y[3] - 2 * sinq(y[0]), lower = s * y[2] * y[2] - sinq(y[1]);
    const Real determinant = 2 - c * c;
    r = {y[2], y[3], (upper - c * lower) / determinant, (2 * lower - c * upper) / determinant};
};
/// v, m, h, n, with the rates as Hodgkin and Huxley give them.
const Rates axon = [](Real, const State& y, State& r) {
    const Real v = y[0], m = y[1], h = y[2], n = y[3];
    const auto ratio = [](Real u) { return u == 0 ? Real(1) : u / expm1q(u); };
    r = {10 - 120 * m * m * m * h * (v - 115) - 36 * n * n * n * n * (v + 12) - Real(3) / 10 * (v - Real(10613) / 1000),
         ratio((25 - v) / 10) * (1 - m) - 4 * expq(-v / 18) * m,
         Real(7) / 100 * expq(-v / 20) * (1 - h) - h / (expq((30 - v) / 10) + 1),
         ratio((10 - v) / 10) / 10 * (1 - n) - expq(-v / 80) / 8 * n};
};

}  // namespace

int main() {
    show("lorenz at 20: x y z", integrate(lorenz, {0, 1, 0}, 0, 20, 0.05Q));
    showCycle("roessler: period of the shortest cycle, y z where x = 0", roessler, 6.09176831742Q, 1.29973195919Q);
    {
        State y{2, 1};
        Real whole = nextRise(lotkaVolterra, y, 1, 0.05Q, 1);
        show("lotka-volterra: period, prey predators", {whole, y[0], y[1]});
    }
    showPeriod("van-der-pol: period, x v", vanDerPol, {2, 0}, 0, 0.01Q, 0, 4);
    showPeriod("van-der-pol: period, x v at the lowest x", vanDerPol, {2, 0}, 1, 0.01Q, 0, 4);
    show("brusselator at 20: x y", integrate(brusselator, {1.5Q, 3}, 0, 20, 0.02Q));
    showPeriod("brusselator: period, x y", brusselator, {1.5Q, 3}, 0, 0.02Q, 1, 12);
    showPeriod("grazing: period, hares lynxes (at the fewest lynxes)", grazing, {2, 1}, 0, 0.05Q, 1, 40);
    show("duffing at 40: x v", integrate(duffing, {1, 0}, 0, 40, 0.05Q));
    show("henon-heiles at 50: x y vx vy",
         integrate(henonHeiles, {0, 0.1Q, sqrtq(0.25Q - 0.01Q + 2 / 3000.0Q), 0}, 0, 50, 0.1Q));
    show("double-pendulum at 15: a b va vb", integrate(doublePendulum, {2, 1, 0, 0}, 0, 15, 0.02Q));
    {
        const Real m = 2.5Q / expm1q(2.5Q), h = 1 / (expq(3) + 1), n = 0.1Q / expm1q(1);
        const State rest{0, m / (m + 4), 0.07Q / (0.07Q + h), n / (n + 0.125Q)};
        show("hodgkin-huxley at 50: v m h n", integrate(axon, rest, 0, 50, 0.01Q));
        State y = rest;
        for (int spike = 1; spike <= 4; ++spike) {
            const Real t = nextRise(axon, y, 0, 0.01Q, 50);
            show("hodgkin-huxley: time between rises through 50 mV", {t});
        }
    }
}
