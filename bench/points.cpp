// SPDX-License-Identifier: MIT
// Whole points of every workload, plain against scheduled, with the time per literal multiply-add.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>

#include "bench/workload.hpp"

namespace {

/// Points until step and caches have settled.
constexpr int warmUp = 20;

double literalMultiplyAdds(const WorkloadLine& line, const std::string& text, std::int64_t points) {
    Workload workload(line.options, text, Evaluation::Scheduled);
    workload.removeEnd();
    for (int i = 0; i < warmUp; ++i) workload.nextPoint();
    workload.countMultiplyAdds();
    for (std::int64_t i = 0; i < points; ++i) workload.nextPoint();
    return static_cast<double>(workload.literalMultiplyAdds());
}

void point(benchmark::State& state, const WorkloadLine& line, const std::string& text, Evaluation evaluation) {
    Workload workload(line.options, text, evaluation);
    workload.removeEnd();
    for (int i = 0; i < warmUp; ++i) workload.nextPoint();
    for (auto _ : state) workload.nextPoint();
    // Seconds per literal multiply-add, shown with its unit prefix: 1.9n are 1.9 ns.
    const double count = literalMultiplyAdds(line, text, state.iterations());
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
            enter("/zirk", Evaluation::Scheduled);
        }
        benchmark::RunSpecifiedBenchmarks();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "points: %s\n", error.what());
        return 1;
    }
    return 0;
}
