// SPDX-License-Identifier: MIT
// The threads that one run may use, and those that it uses at one step.
#pragma once

#include <chrono>
#include <memory>
#include <utility>

#include "parallel/cores.hpp"
#include "parallel/retreat.hpp"
#include "parallel/schedule.hpp"
#include "parallel/team.hpp"
#include "zirk/threads.hpp"

namespace zirk {

/// Holds a team once there is work for one, and takes processors for it step by step.
class Crew {
public:
    explicit Crew(const ThreadOptions& options);

    bool isAlone() const { return most_ == 1; }

    /// How to cut work for this crew; one part where it is not to be cut.
    Schedule cut(const TaskGraph& tasks) const;

    /// Has so many members from now on, or fewer where threads cannot be had.
    void hire(unsigned members);

    /// Members that work on the present step.
    unsigned members() const { return members_; }

    /// Calls work(member) for all of them at the same time; within, wait(member) waits for all.
    template <class Work>
    void run(const Work& work) {
        members_ == 1 ? work(0U) : team_->run(members_, work);
    }
    void wait(unsigned member) {
        if (members_ > 1) team_->wait(member);
    }

    /// Calls work(begin, end) for as many pieces of 0 to `size` as there are members.
    template <class Work>
    void divide(std::size_t size, const Work& work) {
        const std::size_t count = members_;
        run([&](unsigned member) { work(size * member / count, size * (member + 1) / count); });
    }

    /// Processors are taken for one step as long as this lives; where they turn out to be busy otherwise, some of the
    /// next steps are left to the caller alone.
    class Turn {
    public:
        explicit Turn(Crew& crew);
        ~Turn();
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

    private:
        Crew& crew_;
        ProcessorShare share_;
        std::chrono::steady_clock::time_point begin_;
        Signal::Duration waitedBefore_{};
    };

private:
    /// Members that are to work on the next step; 0 where nobody is hired.
    unsigned wanted();

    const unsigned most_;
    const bool isShared_;
    const bool always_;
    unsigned members_ = 1;
    Retreat retreat_;
    std::unique_ptr<Team> team_;
};

}  // namespace zirk
