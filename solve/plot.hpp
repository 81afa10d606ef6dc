// SPDX-License-Identifier: MIT
// Pictures by gnuplot.
#pragma once

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "solve/row_times.hpp"
#include "solve/row_writer.hpp"

namespace zirk::solve {

/// A directory for files that nobody needs afterwards; goes with all that is in it.
class ScratchDirectory {
public:
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    std::string file(const std::string& name) const { return path_ + '/' + name; }

private:
    std::string path_;
};

/// A picture that takes rows, and is drawn when all of them are there.
class Plot {
public:
    /// `file` ends in .svg, .png or .pdf; the first column is the x axis. Without even or listed rows, and without rows
    /// in steps, there are points and no lines. Failure where gnuplot is missing.
    Plot(const std::string& file, const std::vector<std::string>& columns, const RowPlan& rows);

    /// Takes the rows.
    RowWriter& writer() { return *writer_; }

    /// Failure when gnuplot or the file cannot do it.
    void draw();

private:
    const std::string file_;
    const std::vector<std::string> columns_;
    const bool hasLines_;
    const std::string gnuplot_;
    ScratchDirectory scratch_;
    std::ofstream rows_;
    std::unique_ptr<RowWriter> writer_;
};

}  // namespace zirk::solve
