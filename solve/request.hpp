// SPDX-License-Identifier: MIT
// What the command line asks for. Numbers are formulas still: they may use constants of the text, which is not read
// yet.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "zirk/integrator.hpp"

namespace zirk::solve {

enum class Task { Solve, Explain, Help, Version };
enum class Format { Table, Csv, Tsv, Json };

/// An expression whose zeros count.
struct Watched {
    std::string text;
    Crossing which = Crossing::Any;
};

/// Options as they were given; what is absent has its default where it is used.
struct Request {
    Task task = Task::Solve;
    /// "-" for standard input.
    std::string file = "-";

    std::optional<std::string> end;
    std::optional<std::string> start;
    std::optional<std::string> tolerance;
    std::optional<std::string> maxStep;
    std::vector<ProblemOptions::Setting> settings;

    // Which rows; at most one of these five.
    std::optional<std::uint64_t> rows;
    std::optional<std::string> every;
    std::optional<std::vector<std::string>> at;
    bool steps = false;
    bool last = false;
    std::vector<Watched> until;
    std::vector<Watched> crossings;

    std::optional<std::vector<std::string>> columns;
    std::optional<Format> format;
    std::optional<int> digits;
    std::optional<std::string> plot;
    std::optional<std::string> plotX;

    std::uint64_t threads = 0;
    bool quiet = false;
    bool verbose = false;

    bool choosesRows() const { return rows || every || at || steps || last; }
};

}  // namespace zirk::solve
