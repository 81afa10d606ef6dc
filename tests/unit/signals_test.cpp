// SPDX-License-Identifier: MIT
// The interrupt menu and the crash report, seen from the parent of a process that gets the signal.
#include "driver/signals.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <functional>
#include <string>

#include "driver/settings.hpp"

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

void raiseTerminate() {
    settings().time = 0.5L;
    std::raise(SIGTERM);
}

const std::string menu =
    "\n#(SYS) Caught SIGTERM. Dumping values & bailing out \n"
    "#(SYS) TIME = 0.5\n"
    "#(SYS) e) exit, c) continue, p) print&continue, x) print&exit\n";

void defineY() {
    settings().equations.enter(new Differential("y", Expr::Ref(new Number(1)), 2));
    settings().equations.find("y")->select(true);
}

TEST(InterruptMenu, ContinuesAfterCWithoutFurtherOutput) {
    const Ended ended = inChild("c", raiseTerminate);
    EXPECT_EQ(ended.err, menu);
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.status, 7);
}

TEST(InterruptMenu, ShowsBehindTheLinesThatWait) {
    const Ended ended = inChild("e", [] {
        Output output(STDOUT_FILENO, STDERR_FILENO);
        setInterruptOutput(&output);
        output.results() << "a row\n";
        output.log() << "a line\n";
        raiseTerminate();
    });
    EXPECT_EQ(ended.out, "a row\n");
    EXPECT_EQ(ended.err, "a line\n" + menu);
    EXPECT_EQ(ended.status, 255);
}

TEST(InterruptMenu, SkipsBlanksBeforeTheAnswer) { EXPECT_EQ(inChild(" \n\tC", raiseTerminate).status, 7); }

TEST(InterruptMenu, ShowsTheSameTextForAnInterrupt) {
    const Ended ended = inChild("c", [] {
        settings().time = 0.5L;
        std::raise(SIGINT);
    });
    EXPECT_EQ(ended.err, menu);
    EXPECT_EQ(ended.status, 7);
}

TEST(InterruptMenu, EndsWith255OnAnAnswerThatIsNotInTheMenu) {
    const Ended ended = inChild("q", raiseTerminate);
    EXPECT_EQ(ended.err, menu);
    EXPECT_EQ(ended.status, 255);
}

TEST(InterruptMenu, EndsWith255WhenThereIsNoAnswer) { EXPECT_EQ(inChild("", raiseTerminate).status, 255); }

TEST(InterruptMenu, PrintsTheValuesAndContinuesAfterP) {
    const Ended ended = inChild("p", [] {
        defineY();
        raiseTerminate();
    });
    EXPECT_EQ(ended.err, menu + "  0  5.00000000000e-01  2.00000000000e+00\n");
    EXPECT_EQ(ended.status, 7);
}

TEST(InterruptMenu, PrintsTheValuesAndEndsAfterX) {
    const Ended ended = inChild("x", [] {
        defineY();
        raiseTerminate();
    });
    EXPECT_EQ(ended.err, menu + "  0  5.00000000000e-01  2.00000000000e+00\n");
    EXPECT_EQ(ended.status, 255);
}

TEST(InterruptMenu, PrintsTheMatrixLayoutWhenItIsSet) {
    const Ended ended = inChild("x", [] {
        settings().points3D = 1;
        defineY();
        raiseTerminate();
    });
    EXPECT_EQ(ended.err, menu + " 2\n\n");
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

TEST(CrashReport, OfAnotherSignalNamesItsNumberOnly) {
    const Ended ended = inChild("", [] { std::raise(SIGFPE); });
    EXPECT_EQ(ended.out.rfind("\n#(SYS) Got signal 8\n#(SYS) [bt] Execution path:\n#(SYS) [bt] ", 0), 0u);
    EXPECT_EQ(ended.err, "");
    EXPECT_EQ(ended.status, 0);
}

}  // namespace
