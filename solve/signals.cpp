// SPDX-License-Identifier: MIT
// The handlers only take notes.
#include "solve/signals.hpp"

#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <ctime>

namespace zirk::solve {

namespace {

volatile std::sig_atomic_t questions = 0;
volatile std::sig_atomic_t ending = 0;

constexpr int endingSignals[] = {SIGINT, SIGTERM, SIGHUP};

void setHandler(int signal, void (*handler)(int), int flags) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

void onQuestion(int) { questions = 1; }

/// In seconds; a second signal so soon is the same wish: `timeout` and some shells send to a process and to its group.
constexpr double sameWish = 0.1;

/// When the first signal came; written before `ending`.
timespec askedToEnd{};

double secondsSince(const timespec& start) {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec - start.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec - start.tv_nsec);
}

void onEnding(int signal) {
    if (ending != 0) {
        if (secondsSince(askedToEnd) > sameWish) endBySignal(signal);
        return;
    }
    clock_gettime(CLOCK_MONOTONIC, &askedToEnd);
    ending = signal;
    itimerval aSecond{};
    aSecond.it_value.tv_sec = 1;
    setitimer(ITIMER_REAL, &aSecond, nullptr);
}

void onPatienceLost(int) { endBySignal(ending); }

bool isIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

void listenForQuestions() { setHandler(SIGUSR1, onQuestion, SA_RESTART); }

bool isAsked() {
    if (questions == 0) return false;
    questions = 0;
    return true;
}

EndingHeld::EndingHeld() {
    setHandler(SIGALRM, onPatienceLost, 0);
    for (const int signal : endingSignals) {
        // Whoever started the run wants it to survive them.
        if (!isIgnored(signal)) setHandler(signal, onEnding, 0);
    }
}

EndingHeld::~EndingHeld() {
    for (const int signal : endingSignals) {
        if (!isIgnored(signal)) setHandler(signal, SIG_DFL, 0);
    }
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
}

int endingSignal() { return ending; }

void endBySignal(int signal) {
    setHandler(signal, SIG_DFL, 0);
    sigset_t itself;
    sigemptyset(&itself);
    sigaddset(&itself, signal);
    raise(signal);
    sigprocmask(SIG_UNBLOCK, &itself, nullptr);
    _exit(128 + signal);
}

}  // namespace zirk::solve
