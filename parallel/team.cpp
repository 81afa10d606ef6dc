// SPDX-License-Identifier: MIT
// Waiting in three ways, and the loop of a member.
#include "parallel/team.hpp"

#include <emmintrin.h>
#include <linux/futex.h>
#include <sched.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <system_error>
#include <utility>

#include "parallel/cores.hpp"

namespace zirk {

namespace {

/// About what it takes to sleep and be woken.
constexpr std::chrono::microseconds onOwnProcessor(80);
/// Where members share processors, whoever asks keeps the one from running that it waits for.
constexpr std::chrono::microseconds onSharedProcessor(1);
/// Between two looks at the clock; a microsecond or two.
constexpr int asksAtOnce = 32;
constexpr int passesBeforeSleep = 5;

/// Sleeping and waking by the lower half of a number (futex(2)). No mutex and condition of the standard library: what a
/// forked process has of these it may not even destroy.
void futex(std::atomic<std::uint64_t>& number, int operation, std::uint32_t argument) {
    static_assert(sizeof number == sizeof(std::uint64_t));
    syscall(SYS_futex, reinterpret_cast<std::uint32_t*>(&number), operation, argument, nullptr, nullptr, 0);
}

/// Signals of the process belong to the threads of the program.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t before_{};
};

}  // namespace

void Signal::publish(std::uint64_t value) {
    value_.store(value);
    // Who counts as a sleeper has not seen the new number yet or is about to look once more.
    if (sleepers_.load() > 0) futex(value_, FUTEX_WAKE_PRIVATE, std::numeric_limits<int>::max());
}

std::uint64_t Signal::waitWhile(std::uint64_t old, Duration patience) {
    using Clock = std::chrono::steady_clock;
    const auto asksInVain = [&] {
        for (int i = 0; i < asksAtOnce; ++i) {
            if (value() != old) return false;
            _mm_pause();
        }
        return true;
    };
    if (!asksInVain()) return value();
    const Clock::time_point begin = Clock::now();
    bool isPatient = true;
    while (isPatient && asksInVain()) isPatient = Clock::now() - begin < patience;
    for (int i = 0; i < passesBeforeSleep && value() == old; ++i) sched_yield();
    ++sleepers_;
    // The system looks once more before it lets the thread sleep.
    while (value_.load() == old) futex(value_, FUTEX_WAIT_PRIVATE, static_cast<std::uint32_t>(old));
    --sleepers_;
    return value();
}

Team::Team(unsigned threads)
    : process_(getpid()), patience_(threads <= usableProcessors() ? onOwnProcessor : onSharedProcessor) {
    const SignalsBlocked blocked;
    threads_.reserve(threads);
    try {
        for (unsigned member = 1; member < std::min(threads, mostThreads); ++member) {
            threads_.emplace_back([this, member] { serve(member); });
        }
    } catch (const std::system_error&) {
        // A limit of the process: those that started have to do.
    }
}

Team::~Team() {
    if (present() < size()) {
        // Nobody is there to be joined.
        static_cast<void>(new std::vector<std::thread>(std::move(threads_)));
        return;
    }
    begun_.publish(static_cast<std::uint32_t>(begun_.value() + 1));
    for (std::thread& thread : threads_) thread.join();
}

// Threads do not survive a fork.
unsigned Team::present() const { return getpid() == process_ ? size() : 1; }

Team::Rounding Team::currentRounding() {
    Rounding rounding{};
    asm volatile("fnstcw %0" : "=m"(rounding.wide));
    rounding.narrow = _mm_getcsr();
    return rounding;
}

void Team::setRounding(const Rounding& rounding) {
    asm volatile("fldcw %0" : : "m"(rounding.wide));
    _mm_setcsr(rounding.narrow);
}

void Team::run(unsigned members, Call call, const void* work) {
    working_ = members;
    if (working_ == 1) return call(work, 0);
    call_ = call;
    work_ = work;
    rounding_ = currentRounding();
    begun_.publish(std::uint64_t{working_} << 32 | static_cast<std::uint32_t>(begun_.value() + 1));
    call(work, 0);
    wait();
}

void Team::wait() {
    // Before the others can know that this member has come, and the next piece of work can change it.
    const unsigned all = working_;
    if (all == 1) return;
    const std::uint64_t phase = together_.value();
    if (arrived_.fetch_add(1) + 1 == all) {
        arrived_.store(0);
        together_.publish(phase + 1);
    } else {
        together_.waitWhile(phase, patience_);
    }
}

void Team::serve(unsigned member) {
    std::uint64_t known = 0;
    for (;;) {
        known = begun_.waitWhile(known, patience_);
        const auto members = static_cast<unsigned>(known >> 32);
        if (members == 0) return;
        // What is not for this member may be over already: it looks at nothing of it.
        if (member >= members) continue;
        setRounding(rounding_);
        call_(work_, member);
        wait();
    }
}

}  // namespace zirk
