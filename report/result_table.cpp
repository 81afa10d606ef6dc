// SPDX-License-Identifier: MIT
// Header and rows in both layouts.
#include "report/result_table.hpp"

namespace zirk {

ResultTable::ResultTable(std::ostream& out, const ClassicIntegrator& run, const Layout& layout,
                         const Selection& selection, const NumberFormat& numbers, bool showsSeries)
    : line_(out), run_(run), layout_(layout), selection_(selection), numbers_(numbers), showsSeries_(showsSeries) {}

void ResultTable::findColumns() {
    hasColumns_ = true;
    columns_.clear();
    for (std::size_t i = 0; i < run_.size(); ++i) {
        if (!selection_.selects(run_.name(i))) continue;
        if (layout_.printTempEquations || !hasPercent(run_.name(i))) columns_.push_back(i);
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
    for (const std::size_t column : columns_) line_ << ' ' << run_.name(column);
    // Both titles say max, on purpose; the first column is the smallest term.
    if (showsSeries_) line_ << " log(|DY(max)|)     log(|DY(max)|)    h";
}

void ResultTable::writeMatrixHeader() {
    // A no-break space in Latin-1, not a blank.
    line_ << "#\xA0";
    int count = 0;
    for (std::size_t i = 0; i < run_.size(); ++i) {
        // Names with "%" never reach this header, whatever the rows show.
        if (!selection_.selects(run_.name(i)) || hasPercent(run_.name(i))) continue;
        line_ << ' ' << run_.name(i);
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
    if (layout_.printOrderColumn) line_.addInteger(run_.order(), 3) << ' ';
    line_ << ' ';
    line_.addScientific(run_.time(), numbers_.printPrecision, 0);
    for (const std::size_t column : columns_) {
        const real& value = run_.value(column);
        line_ << (value < 0 ? " " : "  ");
        line_.addScientific(value, numbers_.printPrecision, numbers_.printWidth);
    }
    if (showsSeries_) {
        line_ << ' ' << run_.stiffness().smallestExponent << ' ' << run_.stiffness().largestExponent << ' ';
        line_.addScientific(run_.step(), numbers_.printPrecision, 0);
    }
}

void ResultTable::writeMatrixRow() {
    int count = 0;
    for (const std::size_t column : columns_) {
        line_ << ' ' << run_.value(column);
        if (++count == layout_.points3D) {
            line_ << '\n';
            count = 0;
        }
    }
}

}  // namespace zirk
