// SPDX-License-Identifier: MIT
// The threads that one run may use, and those that it uses at one step.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "parallel/cores.hpp"
#include "parallel/preference.hpp"
#include "parallel/schedule.hpp"
#include "parallel/team.hpp"
#include "zirk/threads.hpp"

namespace zirk {

/// Makes a number no greater than another.
template <class Number>
void lower(std::atomic<Number>& number, Number other) {
    Number least = number.load(std::memory_order_relaxed);
    while (other < least && !number.compare_exchange_weak(least, other, std::memory_order_relaxed)) {
    }
}

/// Holds a team once there is work for one, and takes processors for it step by step.
class Crew {
public:
    explicit Crew(const ThreadOptions& options) : options_(options) {}

    /// Whether it never has another member.
    bool isAlone() const { return options_.most == 1; }

    /// How to cut work for this crew; one part where it is not to be cut.
    Schedule cut(const TaskGraph& tasks) const;

    /// Has so many members from now on, or fewer where threads cannot be had.
    void hire(unsigned members);

    /// Members that work on the present step.
    unsigned members() const { return members_; }

    /// Calls work(member) for all of them at the same time; within, wait() waits for all.
    template <class Work>
    void run(const Work& work) {
        members_ == 1 ? work(0U) : team_->run(members_, work);
    }
    void wait() {
        if (members_ > 1) team_->wait();
    }

    /// Calls work(begin, end) for as many pieces of 0 to `size` as there are members.
    template <class Work>
    void divide(std::size_t size, const Work& work) {
        if (size < 2) return work(std::size_t{0}, size);
        const std::size_t count = members_;
        run([&](unsigned member) { work(size * member / count, size * (member + 1) / count); });
    }

    /// Calls work(block, begin, end) for each `blockSize` of 0 to `size`: what is put together of blocks does not
    /// depend on the number of members.
    static constexpr std::size_t blockSize = 256;
    static std::size_t blocks(std::size_t size) { return (size + blockSize - 1) / blockSize; }
    template <class Work>
    void inBlocks(std::size_t size, const Work& work) {
        divide(blocks(size), [&](std::size_t first, std::size_t last) {
            for (std::size_t block = first; block < last; ++block) {
                work(block, block * blockSize, std::min(size, (block + 1) * blockSize));
            }
        });
    }

    /// The least of 0 to `size` for which is(index) holds; `size` where it holds for none.
    template <class Is>
    std::size_t firstOf(std::size_t size, const Is& is) {
        std::atomic<std::size_t> found{size};
        inBlocks(size, [&](std::size_t, std::size_t begin, std::size_t end) {
            for (std::size_t i = begin; i < end; ++i) {
                if (!is(i)) continue;
                return lower(found, i);
            }
        });
        return found;
    }

    /// Processors are taken for one step as long as this lives; where the caller alone turns out to be faster, it does
    /// most of the next steps alone.
    class Turn {
    public:
        explicit Turn(Crew& crew) : crew_(crew) {
            if (crew.team_ != nullptr) begin();
        }
        ~Turn() {
            if (share_) end();
        }
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

    private:
        void begin();
        void end();

        Crew& crew_;
        std::optional<ProcessorShare> share_;
        /// Ticks of the processor.
        std::uint64_t begin_ = 0;
        bool isCounted_ = false;
    };

private:
    const ThreadOptions options_;
    unsigned members_ = 1;
    Preference preference_;
    std::unique_ptr<Team> team_;
};

}  // namespace zirk
