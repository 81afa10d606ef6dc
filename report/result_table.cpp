// SPDX-License-Identifier: MIT
// Header and rows in both layouts.
#include "report/result_table.hpp"

namespace zirk {

ResultTable::ResultTable(std::ostream& out, const Calculus& calculus, const Layout& layout,
                         const NumberSettings& numbers, const EquationTable& equations, const Stiffness& stiffness)
    : line_(out),
      calculus_(calculus),
      layout_(layout),
      numbers_(numbers),
      equations_(equations),
      stiffness_(stiffness) {}

void ResultTable::findColumns() {
    hasColumns_ = true;
    columns_.clear();
    for (const Differential& variable : equations_) {
        if (!variable.isSelected()) continue;
        if (layout_.printTempEquations || !hasPercent(variable.name())) columns_.push_back(&variable);
    }
}

void ResultTable::writeHeader() {
    findColumns();
    if (layout_.points3D >= 1) {
        writeMatrixHeader();
    } else {
        writeTableHeader();
    }
    line_ << endOfLine;
}

void ResultTable::writeTableHeader() {
    line_ << (layout_.printOrderColumn ? "# ORDER" : "# ") << " TIME";
    for (const Differential* variable : columns_) line_ << ' ' << variable->name();
    // Both titles say max, on purpose; the first column is the smallest term.
    if (calculus_.useAllTerms) line_ << " log(|DY(max)|)     log(|DY(max)|)    h";
}

void ResultTable::writeMatrixHeader() {
    // A no-break space in Latin-1, not a blank.
    line_ << "#\xA0";
    int count = 0;
    for (const Differential& variable : equations_) {
        // Names with "%" never reach this header, whatever the rows show.
        if (!variable.isSelected() || hasPercent(variable.name())) continue;
        line_ << ' ' << variable.name();
        if (++count == layout_.points3D) {
            line_ << "\n#";
            count = 0;
        }
    }
}

void ResultTable::writeRow(RowFlag flag) {
    if (!hasColumns_) findColumns();
    if (layout_.points3D < 1) {
        if (flag == RowFlag::Set) return;
        writeTableRow();
    } else {
        if (layout_.all3DValues) {
            // Every block names the same file, on purpose.
            line_ << "e\n\nset output 'o000001." << layout_.gnuplotOutput << "'\nsplot '-'  matrix with lines\n";
        } else if (flag == RowFlag::Clear) {
            return;
        }
        writeMatrixRow();
    }
    line_ << endOfLine;
}

void ResultTable::writeTableRow() {
    if (layout_.printOrderColumn) line_.addInteger(calculus_.orderUsed, 3) << ' ';
    line_ << ' ';
    line_.addScientific(calculus_.time, numbers_.printPrecision, 0);
    for (const Differential* variable : columns_) {
        const real& value = variable->result();
        line_ << (value < 0 ? " " : "  ");
        line_.addScientific(value, numbers_.printPrecision, numbers_.printWidth);
    }
    if (calculus_.useAllTerms) {
        line_ << ' ' << stiffness_.smallestExponent() << ' ' << stiffness_.largestExponent() << ' ';
        line_.addScientific(calculus_.step, numbers_.printPrecision, 0);
    }
}

void ResultTable::writeMatrixRow() {
    int count = 0;
    for (const Differential* variable : columns_) {
        line_ << ' ' << variable->result();
        if (++count == layout_.points3D) {
            line_ << '\n';
            count = 0;
        }
    }
}

}  // namespace zirk
