// SPDX-License-Identifier: MIT
// The workloads as compiled right-hand sides, for other solvers, in any type of number.
#pragma once

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

/// Writes a number so that it reads back the same.
inline void printNumber(long double value) { std::printf("%.20Le\n", value); }

/// Numbers of the kind T from 0 to `end`; the first `shown` values are compared.
template <class T>
struct Problem {
    std::vector<T> start;
    double end = 0;
    std::size_t shown = 0;
    /// Nonzeros of the Jacobian lie this near to its diagonal; negative when the problem is not stiff.
    int bandwidth = -1;
    std::function<void(const T*, T*)> slopes;
};

namespace problems {

/// State x, y, vx, vy; the energy is 1/12.
template <class T>
Problem<T> henonHeiles() {
    using std::sqrt;
    const T speed = sqrt(T(1) / 6 - T(1) / 100 + T(2) / 3000);
    return {{T(0), T(1) / 10, speed, T(0)}, 100000, 4, -1, [](const T* u, T* d) {
                d[0] = u[2];
                d[1] = u[3];
                d[2] = -u[0] - 2 * u[0] * u[1];
                d[3] = -u[1] - u[0] * u[0] + u[1] * u[1];
            }};
}

/// State x, y, vx, vy; eccentricity 1/2, a thousand revolutions.
template <class T>
Problem<T> kepler() {
    using std::sqrt;
    return {{T(1) / 2, T(0), T(0), sqrt(T(3))}, 6283.185307179586, 4, -1, [](const T* u, T* d) {
                using std::sqrt;
                const T square = u[0] * u[0] + u[1] * u[1];
                const T cube = square * sqrt(square);
                d[0] = u[2];
                d[1] = u[3];
                d[2] = -u[0] / cube;
                d[3] = -u[1] / cube;
            }};
}

/// State positions, then momenta; as the model of the same name.
template <class T>
Problem<T> fput(const T& pi) {
    using std::sin;
    constexpr int n = 32;
    Problem<T> problem;
    for (int i = 1; i <= n; ++i) problem.start.push_back(sin(pi * i / (n + 1)));
    problem.start.resize(2 * n, T(0));
    problem.end = 10000;
    problem.shown = 2 * n;
    problem.slopes = [](const T* u, T* d) {
        T stretchBefore = u[0];
        for (int i = 0; i < n; ++i) {
            const T stretch = (i + 1 < n ? u[i + 1] : T(0)) - u[i];
            d[i] = u[n + i];
            d[n + i] = (stretch - stretchBefore) * (1 + (stretch + stretchBefore) / 4);
            stretchBefore = stretch;
        }
    };
    return problem;
}

/// State y, y'; mu = 5.
template <class T>
Problem<T> vanDerPol() {
    return {{T(2), T(0)}, 2000, 2, -1, [](const T* u, T* d) {
                d[0] = u[1];
                d[1] = 5 * (1 - u[0] * u[0]) * u[1] - u[0];
            }};
}

/// A thousand points of a rod.
template <class T>
Problem<T> heat(const T& pi) {
    using std::sin;
    constexpr int n = 1000;
    Problem<T> problem;
    for (int i = 1; i <= n; ++i) problem.start.push_back(sin(pi * i / (n + 1)));
    problem.end = 0.01;
    problem.shown = n;
    problem.bandwidth = 1;
    problem.slopes = [](const T* u, T* d) {
        const T factor = (n + 1) * (n + 1);
        d[0] = factor * (u[1] - 2 * u[0]);
        for (int i = 1; i < n - 1; ++i) d[i] = factor * (u[i - 1] - 2 * u[i] + u[i + 1]);
        d[n - 1] = factor * (u[n - 2] - 2 * u[n - 1]);
    };
    return problem;
}

/// State x, y, z; turbulent soon.
template <class T>
Problem<T> lorenz() {
    return {{T(0), T(1), T(0)}, 20, 3, -1, [](const T* u, T* d) {
                d[0] = 10 * (u[1] - u[0]);
                d[1] = u[0] * (28 - u[2]) - u[1];
                d[2] = u[0] * u[1] - T(8) / 3 * u[2];
            }};
}

/// State x, y, vx, vy: an orbit about two bodies, once around. R. F. Arenstorf, Amer. J. Math. 85 (1963) 27-35; start
/// and period: E. Hairer, S. P. Norsett, G. Wanner, Solving Ordinary Differential Equations I (1993), section II.0.
template <class T>
Problem<T> arenstorf() {
    const T speed = T(-200158510637908252LL) / T(100000000000000000LL);
    return {{T(994) / 1000, T(0), T(0), speed}, 17.0652165601579625, 4, -1, [](const T* u, T* d) {
                using std::sqrt;
                const T small = T(12277471) / 1000000000;
                const T large = T(987722529) / 1000000000;
                const T left = u[0] + small;
                const T right = u[0] - large;
                const T toLarge = left * left + u[1] * u[1];
                const T toSmall = right * right + u[1] * u[1];
                const T a = large / (toLarge * sqrt(toLarge));
                const T b = small / (toSmall * sqrt(toSmall));
                d[0] = u[2];
                d[1] = u[3];
                d[2] = u[0] + 2 * u[3] - left * a - right * b;
                d[3] = u[1] - 2 * u[2] - u[1] * a - u[1] * b;
            }};
}

/// State x1 to x7, y1 to y7, then velocities: seven stars of masses 1 to 7. The same book, section II.10.
template <class T>
Problem<T> pleiades() {
    constexpr int n = 7;
    Problem<T> problem;
    for (const double x : {3., 3., -1., -3., 2., -2., 2., 3., -3., 2., 0., 0., -4., 4.}) problem.start.push_back(T(x));
    for (const double v : {0., 0., 0., 0., 0., 1.75, -1.5, 0., 0., 0., -1.25, 1., 0., 0.})
        problem.start.push_back(T(v));
    problem.end = 3;
    problem.shown = 2 * n;
    problem.slopes = [](const T* u, T* d) {
        using std::sqrt;
        for (int i = 0; i < 2 * n; ++i) d[i] = u[2 * n + i];
        for (int i = 2 * n; i < 4 * n; ++i) d[i] = T(0);
        for (int i = 0; i < n; ++i) {
            for (int j = i + 1; j < n; ++j) {
                const T x = u[j] - u[i];
                const T y = u[n + j] - u[n + i];
                const T square = x * x + y * y;
                const T cube = square * sqrt(square);
                d[2 * n + i] += (j + 1) * x / cube;
                d[3 * n + i] += (j + 1) * y / cube;
                d[2 * n + j] -= (i + 1) * x / cube;
                d[3 * n + j] -= (i + 1) * y / cube;
            }
        }
    };
    return problem;
}

/// State y, y'.
template <class T>
Problem<T> oscillator() {
    return {{T(1), T(0)}, 10000, 2, -1, [](const T* u, T* d) {
                d[0] = u[1];
                d[1] = -u[0];
            }};
}

}  // namespace problems

/// The problem of that name; ends the program when there is none.
template <class T>
Problem<T> problemNamed(const std::string& name, const T& pi) {
    if (name == "henon-heiles") return problems::henonHeiles<T>();
    if (name == "kepler" || name == "kepler-inline") return problems::kepler<T>();
    if (name == "fput") return problems::fput<T>(pi);
    if (name == "van-der-pol") return problems::vanDerPol<T>();
    if (name == "heat") return problems::heat<T>(pi);
    if (name == "lorenz") return problems::lorenz<T>();
    if (name == "arenstorf") return problems::arenstorf<T>();
    if (name == "pleiades") return problems::pleiades<T>();
    if (name == "oscillator") return problems::oscillator<T>();
    std::fprintf(stderr, "no problem %s\n", name.c_str());
    std::exit(2);
}
