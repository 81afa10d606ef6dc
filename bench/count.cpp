// SPDX-License-Identifier: MIT
// Counts what a run has to compute: count OPTION... FILE prints attempts at points and literal multiply-adds.
#include <cstdio>
#include <exception>

#include "bench/workload.hpp"

int main(int argc, char** argv) {
    try {
        Workload workload(argc, argv, Evaluation::Compiled);
        workload.countMultiplyAdds();
        while (workload.nextPoint()) {
        }
        std::printf("%lld %lld\n", workload.attempts(), workload.literalMultiplyAdds());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "count: %s\n", error.what());
        return 1;
    }
    return 0;
}
