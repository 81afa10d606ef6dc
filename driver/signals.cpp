// SPDX-License-Identifier: MIT
// The handlers. They use buffered streams and formatted output without any guard.
#include "driver/signals.hpp"

#include <execinfo.h>
#include <ucontext.h>
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <iostream>

#include "driver/run_context.hpp"
#include "report/result_table.hpp"

namespace zirk {

namespace {

constexpr int exitStatus = 255;
constexpr int maxFrames = 16;

/// Next character that is not a blank; 0 at the end of the input.
char readAnswer() {
    char answer = 0;
    while (read(STDIN_FILENO, &answer, 1) == 1) {
        if (std::isspace(static_cast<unsigned char>(answer)) == 0) return answer;
    }
    return 0;
}

/// The values as last computed, in whichever layout is set, always written.
void printValues() {
    const RunContext& context = runContext();
    if (context.run == nullptr) return;
    const Settings& s = *context.settings;
    ResultTable table(std::cerr, *context.run, s.layout, s.selection, s.numbers, s.classic.limits.useAllTerms);
    table.writeRow(s.layout.points3D >= 1 ? RowFlag::Set : RowFlag::Clear);
    std::cerr.flush();
}

}  // namespace

void installSignalHandlers() {
    std::signal(SIGTERM, onInterrupt);
    std::signal(SIGINT, onInterrupt);
    struct sigaction action {};
    action.sa_sigaction = onFault;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART | SA_SIGINFO;
    sigaction(SIGSEGV, &action, nullptr);
    sigaction(SIGFPE, &action, nullptr);
}

void onInterrupt(int) {
    const RunContext& context = runContext();
    if (context.output != nullptr) context.output->flushFromHandler();
    std::cerr << "\n#(SYS) Caught SIGTERM. Dumping values & bailing out \n"
              << "#(SYS) TIME = " << (context.run != nullptr ? context.run->time() : 0) << '\n'
              << "#(SYS) e) exit, c) continue, p) print&continue, x) print&exit\n";
    switch (readAnswer()) {
        case 'c':
        case 'C':
            return;
        case 'p':
        case 'P':
            printValues();
            std::raise(SIGCONT);
            return;
        case 'x':
        case 'X':
            printValues();
            _exit(exitStatus);
        default:
            _exit(exitStatus);
    }
}

void onFault(int signal, siginfo_t* info, void* context) {
    void* instruction = nullptr;
    if (context != nullptr) {
        const auto& machine = static_cast<ucontext_t*>(context)->uc_mcontext;
        instruction = reinterpret_cast<void*>(machine.gregs[REG_RIP]);  // NOLINT: registers are integers
    }
    if (signal == SIGSEGV) {
        void* address = info != nullptr ? info->si_addr : nullptr;
        std::printf("\n#(SYS) Got signal %d, faulty address is %p, from %p\n", signal, address, instruction);
    } else {
        std::printf("\n#(SYS) Got signal %d\n", signal);
    }
    void* frames[maxFrames];
    const int count = backtrace(frames, maxFrames);
    // Frame 1 is the return into the signal frame; the place of the fault says more.
    if (count > 1) frames[1] = instruction;
    char** names = backtrace_symbols(frames, count);
    std::puts("#(SYS) [bt] Execution path:");
    for (int i = 1; names != nullptr && i < count; ++i) std::printf("#(SYS) [bt] %s\n", names[i]);
    std::fflush(stdout);
    // A crash report ends with the success status, on purpose.
    _exit(0);
}

}  // namespace zirk
