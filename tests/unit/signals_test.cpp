// SPDX-License-Identifier: MIT
// The interrupt menu and the crash report, seen from the parent of a process that gets the signal.
#include "driver/signals.hpp"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <functional>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "driver/run_context.hpp"

using namespace zirk;

namespace {

struct Ended {
    std::string out;
    std::string err;
    int status;
};

std::string readAll(int descriptor) {
    std::string text;
    std::array<char, 4096> block{};
    for (ssize_t count = 0; (count = read(descriptor, block.data(), block.size())) > 0;) {
        text.append(block.data(), static_cast<std::size_t>(count));
    }
    close(descriptor);
    return text;
}

/// Runs `body` in a child whose standard input holds `answer`; a body that returns ends with status 7.
Ended inChild(const std::string& answer, const std::function<void()>& body) {
    int in[2];
    int out[2];
    int err[2];
    EXPECT_EQ(pipe(in) + pipe(out) + pipe(err), 0);
    // What waits in the buffers of this process would be written by the child once more.
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        dup2(in[0], STDIN_FILENO);
        dup2(out[1], STDOUT_FILENO);
        dup2(err[1], STDERR_FILENO);
        for (const int descriptor : {in[0], in[1], out[0], out[1], err[0], err[1]}) close(descriptor);
        installSignalHandlers();
        body();
        _exit(7);
    }
    EXPECT_EQ(write(in[1], answer.data(), answer.size()), static_cast<ssize_t>(answer.size()));
    for (const int descriptor : {in[0], in[1], out[1], err[1]}) close(descriptor);
    Ended ended{readAll(out[0]), readAll(err[0]), 0};
    int status = 0;
    waitpid(child, &status, 0);
    ended.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return ended;
}

/// A run in its second point, at t = 0.5, where y = 2 and one term suffices.
class RunAtHalf {
public:
    RunAtHalf() : run_(Model::fromText("y' = 0 & 2;"), optionsOfRun()) {
        run_.next();
        run_.next();
        runContext().run = &run_;
    }

private:
    static ClassicOptions optionsOfRun() {
        ClassicOptions options;
        options.step = 0.5L;
        return options;
    }

    ClassicIntegrator run_;
};

const std::string menu =
    "\n#(SYS) Caught SIGTERM. Dumping values & bailing out \n"
    "#(SYS) TIME = 0.5\n"
    "#(SYS) e) exit, c) continue, p) print&continue, x) print&exit\n";

const std::string values = "  1  5.00000000000e-01  2.00000000000e+00\n";

/// A SIGCONT shows on standard output.
void interruptRun() {
    const RunAtHalf run;
    std::signal(SIGCONT, [](int) { (void)!write(STDOUT_FILENO, "SIGCONT\n", 8); });
    std::raise(SIGTERM);
}

TEST(InterruptMenu, ActsOnEveryAnswer) {
    struct {
        const char* answer;
        std::string err;
        std::string out;
        int status;
    } const cases[] = {
        {"c", menu, "", 7},
        {"C", menu, "", 7},
        {"p", menu + values, "SIGCONT\n", 7},
        {"P", menu + values, "SIGCONT\n", 7},
        {"x", menu + values, "", 255},
        {"X", menu + values, "", 255},
        {"e", menu, "", 255},
        {"q", menu, "", 255},
        {"", menu, "", 255},
        {" \t\n\v\f\r", menu, "", 255},
        {" \n\tC", menu, "", 7},
        {"\r\n x", menu + values, "", 255},
        {"  p", menu + values, "SIGCONT\n", 7},
        {"xc", menu + values, "", 255},
        {"cx", menu, "", 7},
    };
    for (const auto& c : cases) {
        const Ended ended = inChild(c.answer, interruptRun);
        EXPECT_EQ(ended.err, c.err) << '"' << c.answer << '"';
        EXPECT_EQ(ended.out, c.out) << '"' << c.answer << '"';
        EXPECT_EQ(ended.status, c.status) << '"' << c.answer << '"';
    }
}

TEST(InterruptMenu, TakesOneAnswerEachTime) {
    const Ended ended = inChild("c p\nx", [] {
        const RunAtHalf run;
        for (int i = 0; i < 4; ++i) std::raise(SIGTERM);
    });
    EXPECT_EQ(ended.err, menu + menu + values + menu + values);
    EXPECT_EQ(ended.status, 255);
}

TEST(InterruptMenu, ShowsBehindTheLinesThatWait) {
    const Ended ended = inChild("e", [] {
        const RunAtHalf run;
        Output output(STDOUT_FILENO, STDERR_FILENO);
        runContext().output = &output;
        output.results() << "a row\n";
        output.log() << "a line\n";
        std::raise(SIGTERM);
    });
    EXPECT_EQ(ended.out, "a row\n");
    EXPECT_EQ(ended.err, "a line\n" + menu);
    EXPECT_EQ(ended.status, 255);
}

TEST(InterruptMenu, ShowsTheSameTextForAnInterrupt) {
    const Ended ended = inChild("c", [] {
        const RunAtHalf run;
        std::raise(SIGINT);
    });
    EXPECT_EQ(ended.err, menu);
    EXPECT_EQ(ended.status, 7);
}

TEST(InterruptMenu, PrintsTheMatrixLayoutWhenItIsSet) {
    const Ended ended = inChild("x", [] {
        const RunAtHalf run;
        runContext().settings->layout.points3D = 1;
        std::raise(SIGTERM);
    });
    EXPECT_EQ(ended.err, menu + " 2\n\n");
}

TEST(InterruptMenu, BeforeThereIsARunShowsTimeZeroAndNoValues) {
    const Ended ended = inChild("x", [] { std::raise(SIGTERM); });
    EXPECT_EQ(ended.err, std::regex_replace(menu, std::regex("0\\.5"), "0"));
    EXPECT_EQ(ended.status, 255);
}

TEST(CrashReport, OfAFaultNamesTheAddressesAndEndsWithStatus0) {
    const Ended ended = inChild("", [] {
        siginfo_t info{};
        info.si_addr = reinterpret_cast<void*>(0x10);
        onFault(SIGSEGV, &info, nullptr);
    });
    EXPECT_EQ(ended.out.rfind("\n#(SYS) Got signal 11, faulty address is 0x10, from (nil)\n"
                              "#(SYS) [bt] Execution path:\n#(SYS) [bt] ",
                              0),
              0u);
    EXPECT_EQ(ended.status, 0);
}

/// The part of the report behind the line that names the fault.
std::vector<std::string> framesOf(const std::string& report) {
    const std::string head = "#(SYS) [bt] Execution path:\n";
    const std::size_t at = report.find(head);
    std::vector<std::string> frames;
    if (at == std::string::npos) return frames;
    std::istringstream lines(report.substr(at + head.size()));
    for (std::string line; std::getline(lines, line);) frames.push_back(line);
    return frames;
}

TEST(CrashReport, OfARealFaultNamesWhereItHappened) {
    void* const page = mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(page, MAP_FAILED);
    char* const forbidden = static_cast<char*>(page) + 0x123;
    const Ended ended = inChild("", [forbidden] { *static_cast<volatile char*>(forbidden) = 1; });
    munmap(page, 4096);
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.err, "");
    std::ostringstream address;
    address << static_cast<void*>(forbidden);
    std::smatch part;
    const std::regex first("\n#\\(SYS\\) Got signal 11, faulty address is (0x[0-9a-f]+), from (0x[0-9a-f]+)\n");
    ASSERT_TRUE(std::regex_search(ended.out, part, first, std::regex_constants::match_continuous)) << ended.out;
    EXPECT_EQ(part[1], address.str());
    // The trace begins with the instruction that did it, in the place of the return from the handler.
    const std::vector<std::string> frames = framesOf(ended.out);
    ASSERT_GE(frames.size(), 2u);
    EXPECT_NE(frames[0].find("[" + part[2].str() + "]"), std::string::npos) << ended.out;
    for (const std::string& frame : frames) EXPECT_EQ(frame.rfind("#(SYS) [bt] ", 0), 0u) << frame;
}

[[gnu::noinline]] int faultBelow(int depth) {
    if (depth == 0) return std::raise(SIGSEGV);
    volatile int left = depth - 1;
    return faultBelow(left) + left;
}

// Frame 0, the report's own, is not shown.
TEST(CrashReport, HasAtMostSixteenFrames) {
    const Ended ended = inChild("", [] { faultBelow(40); });
    EXPECT_EQ(framesOf(ended.out).size(), 15u) << ended.out;
    EXPECT_EQ(ended.status, 0);
}

TEST(CrashReport, OfAnotherSignalNamesItsNumberOnly) {
    const Ended ended = inChild("", [] { std::raise(SIGFPE); });
    EXPECT_EQ(ended.out.rfind("\n#(SYS) Got signal 8\n#(SYS) [bt] Execution path:\n#(SYS) [bt] ", 0), 0u);
    EXPECT_EQ(ended.err, "");
    EXPECT_EQ(ended.status, 0);
}

}  // namespace
