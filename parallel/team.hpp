// SPDX-License-Identifier: MIT
// Threads that do the parts of one piece of work together, and wait for each other many times a millisecond.
#pragma once

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>
#include <vector>

namespace zirk {

/// A number that one thread changes and others wait for; the lower 32 bits of it differ each time.
///
/// Who waits asks again and again for as long as it takes to sleep and be woken, for most of what is waited for comes
/// sooner; then lets other threads of the machine pass; then sleeps. So a team whose processors others use as well, or
/// whose leader is busy elsewhere, burns next to nothing.
class Signal {
public:
    std::uint64_t value() const { return value_.load(std::memory_order_acquire); }

    /// Changes the number and wakes who sleeps.
    void publish(std::uint64_t value);

    using Duration = std::chrono::steady_clock::duration;

    /// Returns the number once it is not `old`. `patience`: how long to ask before anything else.
    std::uint64_t waitWhile(std::uint64_t old, Duration patience);

private:
    std::atomic<std::uint64_t> value_{0};
    std::atomic<int> sleepers_{0};
};

/// A fixed number of threads, the caller among them. The others sleep between pieces of work.
///
/// Members compute with the rounding of the caller, and take no signals of the process. One thread at a time may use a
/// team; it may be another one later. In a process that was forked off, only the caller is left of it.
class Team {
public:
    /// With so many threads, or as many as the system lets start.
    explicit Team(unsigned threads);
    ~Team();
    Team(const Team&) = delete;
    Team& operator=(const Team&) = delete;

    /// Members, the caller included.
    unsigned size() const { return static_cast<unsigned>(threads_.size()) + 1; }
    /// Those that are left in this process.
    unsigned present() const;

    /// Calls work(member) for members 0 to `members` - 1, 0 being the caller, at most present(), all at the same
    /// time; returns when all have. Work must not throw.
    template <class Work>
    void run(unsigned members, const Work& work) {
        run(
            members, [](const void* job, unsigned member) { (*static_cast<const Work*>(job))(member); }, &work);
    }

    /// Within a piece of work: returns when all its members have called this as often. What each wrote before, all read
    /// afterwards.
    void wait();

private:
    using Call = void (*)(const void* work, unsigned member);

    /// The state of the processor's arithmetic.
    struct Rounding {
        unsigned short wide;
        unsigned narrow;
    };
    static Rounding currentRounding();
    static void setRounding(const Rounding& rounding);

    void run(unsigned members, Call call, const void* work);
    void serve(unsigned member);

    std::vector<std::thread> threads_;
    const pid_t process_;
    const Signal::Duration patience_;

    /// What there is to do: written by the caller before `begun_` says so.
    Call call_ = nullptr;
    const void* work_ = nullptr;
    Rounding rounding_{};
    /// Its members times 2^32, and its number; 0 members: the team ends.
    alignas(128) Signal begun_;
    /// Changed by whoever comes last to a wait.
    alignas(128) Signal together_;
    alignas(128) std::atomic<unsigned> arrived_{0};
    unsigned working_ = 1;
};

}  // namespace zirk
