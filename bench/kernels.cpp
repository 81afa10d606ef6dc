// SPDX-License-Identifier: MIT
// What the processor allows: all terms of one product or quotient, from numbers stored in two ways, and storing them.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <vector>

#include "series/halves.hpp"

using namespace zirk;

namespace {

std::vector<real> decaying(int terms) {
    std::vector<real> values;
    real value = 1.1L;
    for (int k = 0; k < terms; ++k, value /= 2.3L) values.push_back(value / 3);
    return values;
}

std::vector<Halves> halvesOf(const std::vector<real>& values) {
    std::vector<Halves> cells(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!store(cells[i], values[i])) std::abort();
    }
    return cells;
}

real at(const std::vector<Halves>& cells, int i) { return cells[static_cast<std::size_t>(i)]; }

/// Takes a copy: a sum that is shown to the benchmark itself would live in memory.
void use(real sum) { benchmark::DoNotOptimize(sum); }

void report(benchmark::State& state, long long multiplyAddsPerIteration) {
    using benchmark::Counter;
    state.counters["s_per_madd"] =
        Counter(static_cast<double>(multiplyAddsPerIteration), Counter::kIsIterationInvariantRate | Counter::kInvert);
}

void productOfExtended(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const std::vector<real> a = decaying(n);
    const std::vector<real> b = decaying(n);
    for (auto _ : state) {
        for (int k = 0; k < n; ++k) {
            const real* left = a.data() + k;
            real sum = 0;
            for (int i = 0; i <= k; ++i) sum = sum + left[-i] * b[static_cast<std::size_t>(i)];
            use(sum);
        }
    }
    report(state, static_cast<long long>(n) * (n + 1) / 2);
}

void productOfHalves(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const std::vector<Halves> a = halvesOf(decaying(n));
    const std::vector<Halves> b = halvesOf(decaying(n));
    for (auto _ : state) {
        for (int k = 0; k < n; ++k) {
            real sum = 0;
            for (int i = 0; i <= k; ++i) sum = sum + at(a, k - i) * at(b, i);
            use(sum);
        }
    }
    report(state, static_cast<long long>(n) * (n + 1) / 2);
}

/// One operand stored in each way: loads of extended numbers and additions of halves go through different ports.
void productOfBoth(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const std::vector<Halves> a = halvesOf(decaying(n));
    const std::vector<real> b = decaying(n);
    for (auto _ : state) {
        for (int k = 0; k < n; ++k) {
            real sum = 0;
            for (int i = 0; i <= k; ++i) sum = sum + at(a, k - i) * b[static_cast<std::size_t>(i)];
            use(sum);
        }
    }
    report(state, static_cast<long long>(n) * (n + 1) / 2);
}

/// Two products term by term in one loop: the additions of one fill the waiting times of the other.
void twoProductsOfExtended(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const std::vector<real> a = decaying(n);
    const std::vector<real> b = decaying(n);
    const std::vector<real> c = decaying(n);
    const std::vector<real> d = decaying(n);
    for (auto _ : state) {
        for (int k = 0; k < n; ++k) {
            real first = 0;
            real second = 0;
            for (int i = 0; i <= k; ++i) {
                const auto rising = static_cast<std::size_t>(i);
                const auto falling = static_cast<std::size_t>(k - i);
                first = first + a[falling] * b[rising];
                second = second + c[falling] * d[rising];
            }
            use(first);
            use(second);
        }
    }
    report(state, static_cast<long long>(n) * (n + 1));
}

void twoProductsOfHalves(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const std::vector<Halves> a = halvesOf(decaying(n));
    const std::vector<Halves> b = halvesOf(decaying(n));
    const std::vector<Halves> c = halvesOf(decaying(n));
    const std::vector<Halves> d = halvesOf(decaying(n));
    for (auto _ : state) {
        for (int k = 0; k < n; ++k) {
            real first = 0;
            real second = 0;
            for (int i = 0; i <= k; ++i) {
                first = first + at(a, k - i) * at(b, i);
                second = second + at(c, k - i) * at(d, i);
            }
            use(first);
            use(second);
        }
    }
    report(state, static_cast<long long>(n) * (n + 1));
}

/// x*x and x*y share a factor: three loads serve two products.
void twoProductsOfOneFactor(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const std::vector<real> a = decaying(n);
    const std::vector<real> b = decaying(n);
    const std::vector<real> c = decaying(n);
    for (auto _ : state) {
        for (int k = 0; k < n; ++k) {
            real first = 0;
            real second = 0;
            for (int i = 0; i <= k; ++i) {
                const auto rising = static_cast<std::size_t>(i);
                const real factor = a[static_cast<std::size_t>(k - i)];
                first = first + factor * b[rising];
                second = second + factor * c[rising];
            }
            use(first);
            use(second);
        }
    }
    report(state, static_cast<long long>(n) * (n + 1));
}

/// The sum of squares reads one array from both ends.
void squareOfHalves(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const std::vector<Halves> a = halvesOf(decaying(n));
    for (auto _ : state) {
        for (int k = 0; k < n; ++k) {
            real sum = 0;
            for (int i = 0; i <= k; ++i) sum = sum + at(a, k - i) * at(a, i);
            use(sum);
        }
    }
    report(state, static_cast<long long>(n) * (n + 1) / 2);
}

/// A quotient needs its own term before the next: its sums overlap less.
void quotientOfExtended(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const std::vector<real> a = decaying(n);
    const std::vector<real> b = decaying(n);
    std::vector<real> c(static_cast<std::size_t>(n));
    for (auto _ : state) {
        for (int k = 0; k < n; ++k) {
            real sum = 0;
            for (int i = 0; i < k; ++i) sum = sum + c[static_cast<std::size_t>(i)] * b[static_cast<std::size_t>(k - i)];
            c[static_cast<std::size_t>(k)] = (a[static_cast<std::size_t>(k)] - sum) / b[0];
        }
        benchmark::DoNotOptimize(c.data());
        benchmark::ClobberMemory();
    }
    report(state, static_cast<long long>(n) * (n - 1) / 2);
}

/// Additions in a row, each waiting for the one before: what a single sum can never beat.
void additionsInARow(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const std::vector<real> a = decaying(n);
    real sum = 0;
    for (auto _ : state) {
        for (const real term : a) sum = sum + term;
        use(sum);
    }
    report(state, n);
}

/// Numbers from registers into memory, with the test of what the cell can hold.
template <class Cell>
void stores(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    std::vector<Cell> cells(static_cast<std::size_t>(n));
    const real x = 1.1L / 3;
    for (auto _ : state) {
        bool held = true;
        for (Cell& cell : cells) held &= store(cell, x);
        benchmark::DoNotOptimize(held);
        benchmark::ClobberMemory();
    }
    report(state, n);
}

void storesOfExtended(benchmark::State& state) { stores<real>(state); }
void storesOfHalves(benchmark::State& state) { stores<Halves>(state); }

BENCHMARK(productOfExtended)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(productOfHalves)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(productOfBoth)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(twoProductsOfExtended)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(twoProductsOfHalves)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(twoProductsOfOneFactor)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(squareOfHalves)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(quotientOfExtended)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(additionsInARow)->Arg(200);
BENCHMARK(storesOfExtended)->Arg(200);
BENCHMARK(storesOfHalves)->Arg(200);

}  // namespace

BENCHMARK_MAIN();
