// SPDX-License-Identifier: MIT
// Whole points of every workload, plain against compiled, with the time per literal multiply-add.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>
#include <memory>

#include "bench/workload.hpp"

namespace {

/// Points until step and caches have settled, and points that are measured before a run begins again. Far from its
/// start a system is another one, decayed to nothing or beyond its domain: both ways have to see the same points.
constexpr int warmUp = 20;
constexpr int measured = 100;

std::unique_ptr<Workload> warmWorkload(const WorkloadLine& line, const std::string& text, Evaluation evaluation) {
    auto workload = std::make_unique<Workload>(line.options, text, evaluation);
    for (int i = 0; i < warmUp; ++i) workload->nextPoint();
    return workload;
}

double literalMultiplyAdds(const WorkloadLine& line, const std::string& text) {
    const auto workload = warmWorkload(line, text, Evaluation::Compiled);
    workload->countMultiplyAdds();
    for (int i = 0; i < measured; ++i) workload->nextPoint();
    return static_cast<double>(workload->literalMultiplyAdds()) / measured;
}

void point(benchmark::State& state, const WorkloadLine& line, const std::string& text, Evaluation evaluation) {
    std::unique_ptr<Workload> workload;
    int left = 0;
    while (state.KeepRunning()) {
        if (left == 0) {
            state.PauseTiming();
            workload.reset();
            workload = warmWorkload(line, text, evaluation);
            left = measured;
            state.ResumeTiming();
        }
        workload->nextPoint();
        --left;
    }
    workload.reset();
    // Seconds per literal multiply-add, shown with its unit prefix: 1.9n are 1.9 ns.
    const double count = literalMultiplyAdds(line, text) * static_cast<double>(state.iterations());
    using benchmark::Counter;
    if (count > 0) state.counters["s_per_madd"] = Counter(count, Counter::kIsRate | Counter::kInvert);
}

}  // namespace

/// points FOLDER [BENCHMARK OPTION]...: FOLDER holds workloads and model.
int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: points FOLDER [--benchmark_...]\n");
        return 2;
    }
    try {
        for (const WorkloadLine& line : readWorkloads(argv[1])) {
            const std::string text = modelText(argv[1], line.model);
            const auto enter = [&](const char* way, Evaluation evaluation) {
                benchmark::RegisterBenchmark((line.name + way).c_str(),
                                             [=](benchmark::State& state) { point(state, line, text, evaluation); });
            };
            enter("/plain", Evaluation::NodeByNode);
            enter("/zirk", Evaluation::Compiled);
        }
        benchmark::RunSpecifiedBenchmarks();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "points: %s\n", error.what());
        return 1;
    }
    return 0;
}
