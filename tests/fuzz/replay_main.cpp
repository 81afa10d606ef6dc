// SPDX-License-Identifier: MIT
// Runs a fuzzer's function over the files named, with any compiler: every kept input is an ordinary test.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/fuzz/harness.hpp"

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s FILE...\n", argv[0]);
        return 2;
    }
    for (int i = 1; i < argc; ++i) {
        std::ifstream file(argv[i], std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        if (!file.is_open() || file.bad()) {
            std::fprintf(stderr, "%s cannot be read\n", argv[i]);
            return 2;
        }
        std::printf("%s: %zu bytes\n", argv[i], bytes.size());
        std::fflush(stdout);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    return 0;
}
