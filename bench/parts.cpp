// SPDX-License-Identifier: MIT
// What more processors would gain, from what one step costs here: parts FILE...
//
// For each problem, a table row: equations, time of a step on one thread, stages of an order, and the expected gain of
// 2, 4, 8, 16, 32 and 64 threads, from the largest share of each stage and the wait behind it. The wait of two threads
// is measured, that of more is in proportion to their number: all change one counter, one after the other.
#include <chrono>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "adaptive/lowering.hpp"
#include "adaptive/sections.hpp"
#include "adaptive/step_size.hpp"
#include "lang/problem_content.hpp"
#include "zirk/integrator.hpp"

using namespace zirk;

namespace {

using Clock = std::chrono::steady_clock;

double nanosecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::nano>(Clock::now() - begin).count();
}

/// Of two threads that have nothing else to do; the least of many rounds, for a processor may be taken away in between.
double measuredWait() {
    Team team(2);
    double least = 1e9;
    for (int round = 0; round < 200; ++round) {
        constexpr int waits = 1000;
        const auto begin = Clock::now();
        team.run(2, [&](unsigned) {
            for (int i = 0; i < waits; ++i) team.wait();
        });
        least = std::min(least, nanosecondsSince(begin) / waits);
    }
    return least;
}

/// The least time of a step on one thread, in nanoseconds.
double measuredStep(const Problem& problem) {
    Integrator run(problem);
    double least = 1e18;
    // The first step looks for its length.
    for (int i = 0; i < 20; ++i) {
        const auto begin = Clock::now();
        if (!run.step(problem.start() + 1)) break;
        if (i > 1) least = std::min(least, nanosecondsSince(begin));
    }
    return least;
}

/// Joins of the threads in a step besides those of its orders.
constexpr double joins = 20;

void predict(const char* file, double wait) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    const Problem problem = Problem::fromText(text.str());
    const ProblemContent& content = ProblemAccess::of(problem);
    std::vector<NodeIndex> rates;
    for (const ProblemContent::Variable& variable : content.variables) rates.push_back(variable.rate);
    const ValueSystem system = arranged(lower(*content.graph, rates, {}));
    const int order = orderFor(IntegratorOptions().tolerance);
    const Arrangement arrangement(system, order);
    std::vector<TaskGraph::Index> taskOf;
    const TaskGraph tasks = tasksOf(system, arrangement, taskOf);
    const double step = measuredStep(problem);

    std::string gains;
    unsigned stages = 1;
    for (const unsigned threads : {2U, 4U, 8U, 16U, 32U, 64U}) {
        const double waitOfAll = wait / 2 * threads;
        // In units of what the tasks are expected to cost, of which a step has so many as one thread needs for it.
        const double scale = step / (order * tasks.total());
        const Schedule schedule(tasks, threads, waitOfAll / scale);
        const double time = order * schedule.time * scale + joins * waitOfAll;
        char number[32];
        std::snprintf(number, sizeof number, " %.1f |", step / time);
        gains += number;
        stages = std::max(stages, schedule.stages);
    }
    std::string name = file;
    name.erase(0, name.rfind('/') + 1);
    std::printf("| %s | %u | %.0f | %u |%s\n", name.c_str(), system.variables, step / 1000, stages, gains.c_str());
}

}  // namespace

int main(int argc, char** argv) {
    const double wait = measuredWait();
    std::printf("A wait of two threads takes %.0f ns.\n\n", wait);
    std::printf("| system | equations | step, us | stages | 2 threads | 4 | 8 | 16 | 32 | 64 |\n");
    std::printf("|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|\n");
    for (int i = 1; i < argc; ++i) predict(argv[i], wait);
    return 0;
}
