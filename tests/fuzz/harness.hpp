// SPDX-License-Identifier: MIT
// What the fuzzers share: properties that must hold, bounds that keep endless legal work away, and a run made twice.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

#include "command/output.hpp"
#include "driver/settings.hpp"
#include "zirk/model.hpp"

using namespace zirk;

/// What every fuzzer defines; it returns normally for every input that the program survives.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

/// Ends the process with a message when a property does not hold, so that the fuzzer keeps the input.
void require(bool holds, const std::string& property);

/// A file without a name, for whoever wants a descriptor or a path.
class MemoryFile {
public:
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    int descriptor() const { return descriptor_; }
    std::string path() const;
    void write(const std::string& text) const;
    std::string contents() const;

private:
    int descriptor_;
};

/// Keeps what is written up to a limit, then throws TooMuch: the printed form of a formula with shared parts may be
/// longer than any memory.
class LimitedText : private std::streambuf, public std::ostream {
public:
    struct TooMuch {};

    LimitedText() : std::ostream(static_cast<std::streambuf*>(this)) { exceptions(std::ios::badbit); }
    const std::string& text() const { return text_; }

protected:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override;
    std::streambuf::int_type overflow(std::streambuf::int_type character) override;

private:
    std::string text_;
};

/// True for text whose derivatives of high order would make more variables than a fuzzer has time for. A derivative
/// beyond the language's own limit is not among them: it is an error at once.
bool makesManyVariables(const std::string& text);

/// Gives a text piece by piece; the text must stay as long as the source is asked.
Model::Source sourceOf(std::string_view text);

/// Bounds for what only costs time or memory: the number of terms, and the length of printed numbers.
struct Bounds {
    int terms = 40;
    int digits = 40;
};
void bound(Settings& settings, const Bounds& bounds);

/// Compiles, prepares and solves a text for a few points, once by the nodes and once by the chooser, and requires the
/// same bytes, the same values and terms after every pass and the same end of both; each of them twice, side by side.
/// `configure` makes the settings of a run; an Error ends the run.
void solveBothWays(const std::function<void(Settings&, Output&)>& configure, const std::string& text);
