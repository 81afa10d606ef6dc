// SPDX-License-Identifier: MIT
// What the processor allows: all terms of one product or quotient, from numbers stored in two ways.
#include <benchmark/benchmark.h>

#include <vector>

#include "expr/real.hpp"

namespace {

std::vector<real> decaying(int terms) {
    std::vector<real> values;
    real value = 1.1L;
    for (int k = 0; k < terms; ++k, value /= 2.3L) values.push_back(value / 3);
    return values;
}

/// A number as the double next to it and the rest, which fits a double: the sum of both has the same bits.
struct Halves {
    explicit Halves(const std::vector<real>& values) {
        for (const real value : values) {
            high.push_back(static_cast<double>(value));
            low.push_back(static_cast<double>(value - static_cast<real>(high.back())));
        }
    }
    real at(int i) const {
        const auto index = static_cast<std::size_t>(i);
        return static_cast<real>(high[index]) + static_cast<real>(low[index]);
    }
    std::vector<double> high;
    std::vector<double> low;
};

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
    const Halves a(decaying(n));
    const Halves b(decaying(n));
    for (auto _ : state) {
        for (int k = 0; k < n; ++k) {
            real sum = 0;
            for (int i = 0; i <= k; ++i) sum = sum + a.at(k - i) * b.at(i);
            use(sum);
        }
    }
    report(state, static_cast<long long>(n) * (n + 1) / 2);
}

/// One operand stored in each way: loads of extended numbers and additions of halves go through different ports.
void productOfBoth(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const Halves a(decaying(n));
    const std::vector<real> b = decaying(n);
    for (auto _ : state) {
        for (int k = 0; k < n; ++k) {
            real sum = 0;
            for (int i = 0; i <= k; ++i) sum = sum + a.at(k - i) * b[static_cast<std::size_t>(i)];
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
    const Halves a(decaying(n));
    const Halves b(decaying(n));
    const Halves c(decaying(n));
    const Halves d(decaying(n));
    for (auto _ : state) {
        for (int k = 0; k < n; ++k) {
            real first = 0;
            real second = 0;
            for (int i = 0; i <= k; ++i) {
                first = first + a.at(k - i) * b.at(i);
                second = second + c.at(k - i) * d.at(i);
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
    const Halves a(decaying(n));
    for (auto _ : state) {
        for (int k = 0; k < n; ++k) {
            real sum = 0;
            for (int i = 0; i <= k; ++i) sum = sum + a.at(k - i) * a.at(i);
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

BENCHMARK(productOfExtended)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(productOfHalves)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(productOfBoth)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(twoProductsOfExtended)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(twoProductsOfHalves)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(twoProductsOfOneFactor)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(squareOfHalves)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(quotientOfExtended)->Arg(10)->Arg(20)->Arg(40)->Arg(200);
BENCHMARK(additionsInARow)->Arg(200);

}  // namespace

BENCHMARK_MAIN();
