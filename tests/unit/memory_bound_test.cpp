// SPDX-License-Identifier: MIT
// How much memory a run may use; that a run is bounded at all is seen by robust.settings.
#include "command/memory_bound.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

using namespace zirk;

namespace {

TEST(MemoryShare, IsSevenEighthsRoundedUp) {
    EXPECT_EQ(memoryShare(8000), 7000u);
    EXPECT_EQ(memoryShare(7), 7u);
    EXPECT_EQ(memoryShare(15), 14u);
    EXPECT_EQ(memoryShare(rlim_t{1} << 40), rlim_t{7} << 37);
    EXPECT_EQ(memoryShare(RLIM_INFINITY), RLIM_INFINITY);
}

class MemoryAtHand : public testing::Test {
protected:
    ~MemoryAtHand() override {
        for (const std::string& file : files_) std::remove(file.c_str());
    }

    /// A file with this text, as a control group shows its limit.
    std::string limitFile(const std::string& text) {
        files_.push_back(testing::TempDir() + "memory-limit-" + std::to_string(files_.size()));
        std::ofstream(files_.back()) << text;
        return files_.back();
    }

private:
    std::vector<std::string> files_;
};

TEST_F(MemoryAtHand, IsThatOfTheMachineWithoutALimit) {
    EXPECT_EQ(memoryAtHand(5000, {}), 5000u);
    EXPECT_EQ(memoryAtHand(5000, {"/no/such/file", limitFile("max\n"), limitFile(""), limitFile("0\n")}), 5000u);
    EXPECT_EQ(memoryAtHand(5000, {limitFile("9223372036854771712\n")}), 5000u);
    EXPECT_EQ(memoryAtHand(RLIM_INFINITY, {limitFile("max\n")}), RLIM_INFINITY);
}

TEST_F(MemoryAtHand, IsTheLeastOfTheLimits) {
    EXPECT_EQ(memoryAtHand(5000, {limitFile("4000\n")}), 4000u);
    EXPECT_EQ(memoryAtHand(5000, {limitFile("4000\n"), limitFile("3000\n")}), 3000u);
    EXPECT_EQ(memoryAtHand(5000, {limitFile("3000\n"), limitFile("max\n")}), 3000u);
    EXPECT_EQ(memoryAtHand(RLIM_INFINITY, {limitFile("4000\n")}), 4000u);
}

}  // namespace
