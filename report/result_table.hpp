// SPDX-License-Identifier: MIT
// The results on standard output: a table of rows, or a matrix for a surface plot.
#pragma once

#include <iosfwd>
#include <vector>

#include "report/layout.hpp"
#include "text/line.hpp"
#include "zirk/classic_integrator.hpp"

namespace zirk {

/// Whether a row belongs to the run or is the extra one after it; which of them shows depends on the layout.
enum class RowFlag { Clear, Set };

/// Writes the header and the rows.
class ResultTable {
public:
    /// `showsSeries`: with exponents of the last terms and the step, for runs that always use all terms.
    ResultTable(std::ostream& out, const ClassicIntegrator& run, const Layout& layout, const Selection& selection,
                const NumberFormat& numbers, bool showsSeries);

    void writeHeader();
    void writeRow(RowFlag flag);

private:
    void writeTableHeader();
    void writeMatrixHeader();
    void writeTableRow();
    void writeMatrixRow();
    void findColumns();

    Line line_;
    const ClassicIntegrator& run_;
    const Layout& layout_;
    const Selection& selection_;
    const NumberFormat& numbers_;
    const bool showsSeries_;
    /// What rows show; found with the header, or with the first row when there is none.
    std::vector<std::size_t> columns_;
    bool hasColumns_ = false;
};

}  // namespace zirk
