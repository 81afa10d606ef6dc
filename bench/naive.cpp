// SPDX-License-Identifier: MIT
// The plain way with plain output: nodes ask nodes, numbers go through the stream one by one, every line is flushed.
#include <cstdio>
#include <exception>
#include <iomanip>
#include <iostream>

#include "bench/workload.hpp"

namespace {

std::vector<const Differential*> columns(const Settings& settings) {
    std::vector<const Differential*> chosen;
    for (const Differential& variable : settings.equations) {
        if (variable.isSelected() && !hasPercent(variable.name())) chosen.push_back(&variable);
    }
    return chosen;
}

}  // namespace

/// naive OPTION... FILE: the table that zirk writes for options that do not concern the table.
int main(int argc, char** argv) {
    try {
        Workload workload(argc, argv, Evaluation::NodeByNode);
        const Settings& settings = workload.settings();
        const std::vector<const Differential*> shown = columns(settings);
        std::cout << std::unitbuf << "# ORDER TIME";
        for (const Differential* variable : shown) std::cout << ' ' << variable->name();
        std::cout << std::endl;
        while (workload.nextPoint()) {
            std::cout << std::setw(3) << settings.orderUsed << " ";
            std::cout << std::scientific << std::setprecision(settings.printPrecision) << ' ' << settings.time;
            for (const Differential* variable : shown) {
                if (!(variable->result() < 0)) std::cout << ' ';
                std::cout << ' ' << std::setw(settings.printWidth) << variable->result();
            }
            std::cout << std::endl;
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "naive: %s\n", error.what());
        return 1;
    }
    return 0;
}
