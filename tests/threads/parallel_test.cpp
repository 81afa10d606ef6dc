// SPDX-License-Identifier: MIT
// Teams of threads, the work cut for them, and how many there may be.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cfenv>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>
#include <vector>

#include "parallel/cores.hpp"
#include "parallel/crew.hpp"
#include "parallel/preference.hpp"
#include "parallel/schedule.hpp"
#include "parallel/team.hpp"

using namespace zirk;

namespace {

TEST(Teams, CallEveryMemberOnce) {
    for (const unsigned size : {1U, 2U, 3U, 7U}) {
        Team team(size);
        ASSERT_EQ(team.size(), size);
        for (unsigned members = 1; members <= size; ++members) {
            std::vector<int> calls(size, 0);
            for (int turn = 0; turn < 50; ++turn) team.run(members, [&](unsigned member) { ++calls[member]; });
            for (unsigned i = 0; i < size; ++i) EXPECT_EQ(calls[i], i < members ? 50 : 0);
        }
    }
}

TEST(Teams, SeeAfterAWaitWhatAllWroteBefore) {
    constexpr unsigned size = 3;
    Team team(size);
    std::vector<long> written(size, 0);
    std::vector<long> wrong(size, 0);
    team.run(size, [&](unsigned member) {
        for (long round = 1; round <= 2000; ++round) {
            written[member] = round;
            team.wait();
            for (const long other : written) wrong[member] += other != round;
            team.wait();
        }
    });
    for (const long count : wrong) EXPECT_EQ(count, 0);
}

TEST(Teams, GoOnAfterTheyHaveSlept) {
    Team team(2);
    int calls = 0;
    for (int i = 0; i < 3; ++i) {
        // Long enough for the other member to sleep, and for the caller too.
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        team.run(2, [&](unsigned member) {
            if (member == 1) {
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
                ++calls;
            }
        });
    }
    EXPECT_EQ(calls, 3);
}

TEST(Teams, ComputeWithTheRoundingOfTheCaller) {
    Team team(2);
    for (const int rounding : {FE_UPWARD, FE_DOWNWARD, FE_TONEAREST}) {
        std::fesetround(rounding);
        int seen[2] = {-1, -1};
        double third[2] = {0, 0};
        team.run(2, [&](unsigned member) {
            volatile double three = 3;
            seen[member] = std::fegetround();
            third[member] = 1 / three;
        });
        std::fesetround(FE_TONEAREST);
        EXPECT_EQ(seen[1], rounding);
        EXPECT_EQ(third[0], third[1]);
    }
}

TEST(Teams, AreTheirCallerAloneAfterAFork) {
    Team team(2);
    // Long enough for the other member to sleep.
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    const pid_t child = fork();
    if (child == 0) {
        // Ends through its destructor as well.
        Team* const copy = &team;
        int calls = 0;
        if (copy->present() == 1) copy->run(1, [&](unsigned) { ++calls; });
        copy->~Team();
        _exit(calls == 1 ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(team.present(), 2U);
}

/// Whether every task finds done what it needs.
void expectSound(const TaskGraph& tasks, const Schedule& schedule) {
    for (TaskGraph::Index task = 0; task < tasks.size(); ++task) {
        ASSERT_LT(schedule.part[task], schedule.parts);
        ASSERT_LT(schedule.stage[task], schedule.stages);
        for (const auto* need = tasks.needsBegin(task); need != tasks.needsEnd(task); ++need) {
            const bool isEarlier = schedule.stage[*need] < schedule.stage[task];
            const bool isMine =
                schedule.stage[*need] == schedule.stage[task] && schedule.part[*need] == schedule.part[task];
            ASSERT_TRUE(isEarlier || isMine) << task << " needs " << *need;
        }
    }
}

TEST(Schedules, NeverStartATaskBeforeWhatItNeeds) {
    std::mt19937 random(5);
    for (int round = 0; round < 300; ++round) {
        TaskGraph tasks;
        const auto size = static_cast<unsigned>(1 + random() % 60);
        for (unsigned i = 0; i < size; ++i) {
            tasks.add(1 + static_cast<double>(random() % 100));
            for (auto needs = random() % 4; i > 0 && needs > 0; --needs)
                tasks.need(static_cast<unsigned>(random() % i));
        }
        for (const unsigned parts : {1U, 2U, 3U, 7U}) {
            const Schedule schedule(tasks, parts, 100.0 * (round % 3));
            EXPECT_EQ(schedule.parts, parts);
            expectSound(tasks, schedule);
        }
    }
}

TEST(Schedules, ShareEqualTasksEqually) {
    TaskGraph tasks;
    for (int i = 0; i < 1000; ++i) tasks.add(100);
    const Schedule schedule = Schedule::best(tasks, 4);
    EXPECT_EQ(schedule.parts, 4U);
    EXPECT_EQ(schedule.stages, 1U);
    std::vector<int> count(4, 0);
    for (const auto part : schedule.part) ++count[part];
    for (const int tasksOfPart : count) EXPECT_EQ(tasksOfPart, 250);
}

TEST(Schedules, WaitOnceForWhatAllNeed) {
    // Pairs, and sums that need every so many of them.
    TaskGraph tasks;
    for (int i = 0; i < 400; ++i) tasks.add(100);
    for (unsigned i = 0; i < 20; ++i) {
        tasks.add(200);
        for (unsigned k = 0; k < 40; ++k) tasks.need((i * 7 + k * 11) % 400);
    }
    const Schedule schedule = Schedule::best(tasks, 2);
    EXPECT_EQ(schedule.parts, 2U);
    EXPECT_EQ(schedule.stages, 2U);
    expectSound(tasks, schedule);
    EXPECT_LT(schedule.time, 0.6 * tasks.total());
}

TEST(Schedules, LeaveAloneWhatIsSmallOrOneChain) {
    TaskGraph small;
    for (int i = 0; i < 10; ++i) small.add(50);
    EXPECT_EQ(Schedule::best(small, 8).parts, 1U);
    TaskGraph chain;
    for (unsigned i = 0; i < 1000; ++i) {
        chain.add(100);
        if (i > 0) chain.need(i - 1);
    }
    EXPECT_EQ(Schedule::best(chain, 8).parts, 1U);
}

/// Of so many pieces of work, those that are done together.
int together(Preference& preference, std::uint64_t ticksTogether, std::uint64_t ticksAlone, int pieces) {
    int count = 0;
    for (int i = 0; i < pieces; ++i) {
        const bool isTogether = preference.isTogether();
        count += isTogether ? 1 : 0;
        preference.note(isTogether ? ticksTogether : ticksAlone, 2);
    }
    return count;
}

TEST(Preferences, AreForWhatIsFaster) {
    Preference faster;
    EXPECT_GT(together(faster, 5000, 10000, 1000), 980);
    Preference slower;
    EXPECT_LT(together(slower, 10000, 5000, 1000), 40);
    Preference same;
    EXPECT_LT(together(same, 5000, 5000, 1000), 40) << "what gains nothing is not worth the processors";
}

TEST(Preferences, ChangeWithTheMachine) {
    Preference preference;
    together(preference, 5000, 10000, 1000);
    EXPECT_LT(together(preference, 30000, 10000, 1000), 60) << "others have come";
    EXPECT_GT(together(preference, 5000, 10000, 3000), 1500) << "and gone";
}

TEST(Preferences, AreNotLostByOneInterruption) {
    Preference preference;
    together(preference, 5000, 10000, 10);
    EXPECT_TRUE(preference.isTogether());
    preference.note(1000000, 2);
    EXPECT_TRUE(preference.isTogether());
}

TEST(Preferences, TryLongWorkAloneLate) {
    Preference preference;
    EXPECT_EQ(together(preference, 100'000'000, 200'000'000, 50), 50);
    Preference shorter;
    EXPECT_EQ(together(shorter, 1'000'000, 2'000'000, 50), 49);
}

TEST(Processors, AreCountedFromTheEnvironment) {
    EXPECT_EQ(threadsIn("4"), 4U);
    EXPECT_EQ(threadsIn(" 3 "), 3U);
    EXPECT_EQ(threadsIn("6,2"), 6U);
    EXPECT_EQ(threadsIn("99999999999999999999"), mostThreads);
    for (const char* bad : {"", "0", "-2", "many", "2x", "2.5"}) EXPECT_EQ(threadsIn(bad), 0U) << bad;
}

class Groups {
public:
    Groups() : root_(std::filesystem::temp_directory_path() / ("zirk-groups-" + std::to_string(getpid()))) {}
    ~Groups() { std::filesystem::remove_all(root_); }

    void write(const std::string& group, const std::string& file, const std::string& text) {
        std::filesystem::create_directories(root_ / group);
        std::ofstream(root_ / group / file) << text;
    }
    std::string root() const { return root_.string(); }

private:
    std::filesystem::path root_;
};

TEST(Processors, AreNoMoreThanTheQuotaOfAGroupPaysFor) {
    Groups groups;
    groups.write("a/b", "cpu.max", "max 100000\n");
    EXPECT_EQ(quotaOfGroups("0::/a/b\n", groups.root()), 0U) << "no limit";
    groups.write("a", "cpu.max", "250000 100000\n");
    EXPECT_EQ(quotaOfGroups("0::/a/b\n", groups.root()), 3U) << "of the group above, rounded up";
    groups.write("a/b", "cpu.max", "50000 100000\n");
    EXPECT_EQ(quotaOfGroups("0::/a/b\n", groups.root()), 1U);
    EXPECT_EQ(quotaOfGroups("0::/elsewhere\n", groups.root()), 0U);
    groups.write(".", "cpu.max", "200000 100000\n");
    EXPECT_EQ(quotaOfGroups("0::/elsewhere\n", groups.root()), 2U) << "a container sees its group as the root";
}

TEST(Processors, AreNoMoreThanTheQuotaOfTheFirstVersionPaysFor) {
    Groups groups;
    const std::string membership = "5:memory:/x\n4:cpu,cpuacct:/box\n1:name=systemd:/\n";
    EXPECT_EQ(quotaOfGroups(membership, groups.root()), 0U);
    groups.write("cpu,cpuacct/box", "cpu.cfs_quota_us", "-1\n");
    groups.write("cpu,cpuacct/box", "cpu.cfs_period_us", "100000\n");
    EXPECT_EQ(quotaOfGroups(membership, groups.root()), 0U);
    groups.write("cpu,cpuacct/box", "cpu.cfs_quota_us", "150000\n");
    EXPECT_EQ(quotaOfGroups(membership, groups.root()), 2U);
}

TEST(Processors, AreSharedByTheRunsOfAProcess) {
    const unsigned all = processorsToShare();
    ProcessorShare first(all + 5, true);
    EXPECT_EQ(first.size(), all);
    {
        ProcessorShare second(4, true);
        EXPECT_EQ(second.size(), 1U) << "its own thread is always there";
        ProcessorShare stubborn(3, false);
        EXPECT_EQ(stubborn.size(), 3U);
    }
}

TEST(Processors, AreFreeAgainBehindAStep) {
    for (int i = 0; i < 3; ++i) {
        ProcessorShare share(processorsToShare(), true);
        EXPECT_EQ(share.size(), processorsToShare());
    }
}

}  // namespace
