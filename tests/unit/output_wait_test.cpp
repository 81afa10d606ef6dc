// SPDX-License-Identifier: MIT
// Output to descriptors that do not take everything at once.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <thread>

#include "command/output.hpp"

using namespace zirk;

namespace {

TEST(Output, WaitsForANonBlockingPipe) {
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
    std::string read;
    // Much more than a pipe holds: the writer is ahead of this reader most of the time.
    const std::string row(99, 'x');
    constexpr int rows = 20000;
    std::thread reader([&] {
        char buffer[5000];
        while (read.size() < rows * 100) {
            const ssize_t count = ::read(ends[0], buffer, sizeof buffer);
            if (count > 0) read.append(buffer, static_cast<std::size_t>(count));
        }
    });
    Output output(ends[1], STDERR_FILENO);
    for (int i = 0; i < rows; ++i) output.results() << row << '\n';
    output.flush();
    reader.join();
    close(ends[0]);
    close(ends[1]);
    std::string expected;
    for (int i = 0; i < rows; ++i) expected += row + "\n";
    EXPECT_TRUE(read == expected);
}

}  // namespace
