// SPDX-License-Identifier: MIT
// The results on standard output: a table of rows, or a matrix for a surface plot.
#pragma once

#include <iosfwd>
#include <vector>

#include "expr/calculus.hpp"
#include "text/line.hpp"
#include "lang/equation_table.hpp"
#include "report/layout.hpp"
#include "classic/stiffness.hpp"

namespace zirk {

/// How numbers look.
struct NumberSettings {
    int printWidth = 15;
    int printPrecision = 11;
};

/// Whether a row belongs to the run or is the extra one after it; which of them shows depends on the layout.
enum class RowFlag { Clear, Set };

/// Writes the header and the rows.
class ResultTable {
public:
    ResultTable(std::ostream& out, const Calculus& calculus, const Layout& layout, const NumberSettings& numbers,
                const EquationTable& equations, const Stiffness& stiffness);

    void writeHeader();
    void writeRow(RowFlag flag);

private:
    void writeTableHeader();
    void writeMatrixHeader();
    void writeTableRow();
    void writeMatrixRow();
    void findColumns();

    Line line_;
    const Calculus& calculus_;
    const Layout& layout_;
    const NumberSettings& numbers_;
    const EquationTable& equations_;
    const Stiffness& stiffness_;
    /// What rows show; found with the header, or with the first row when there is none.
    std::vector<const Differential*> columns_;
    bool hasColumns_ = false;
};

}  // namespace zirk
