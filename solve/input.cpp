// SPDX-License-Identifier: MIT
// Reading with system calls, whose errors say what is wrong.
#include "solve/input.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "solve/failure.hpp"

namespace zirk::solve {

namespace {

/// Much more than anybody writes, and little enough for the memory of any machine.
constexpr std::size_t mostBytes = std::size_t{256} << 20;
constexpr std::size_t pieceSize = std::size_t{1} << 16;

[[noreturn]] void failToRead(const std::string& file, const std::string& reason) {
    throw Failure("cannot read " + inputName(file) + ": " + reason, Unusable);
}

/// A descriptor that closes itself, but never a standard one.
struct Descriptor {
    explicit Descriptor(int opened) : number(opened) {}
    ~Descriptor() {
        if (number > STDERR_FILENO) close(number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    const int number;
};

}  // namespace

std::string inputName(const std::string& file) { return file == "-" ? "<stdin>" : file; }

std::string readInput(const std::string& file) {
    const Descriptor input(file == "-" ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (input.number < 0) failToRead(file, std::strerror(errno));
    std::string text;
    for (;;) {
        const std::size_t size = text.size();
        text.resize(size + pieceSize);
        const ssize_t count = read(input.number, &text[size], pieceSize);
        const int error = errno;
        text.resize(size + static_cast<std::size_t>(count < 0 ? 0 : count));
        if (count == 0) return text;
        if (count < 0 && error != EINTR) failToRead(file, std::strerror(error));
        if (text.size() > mostBytes) failToRead(file, "more than 256 MiB");
    }
}

}  // namespace zirk::solve
