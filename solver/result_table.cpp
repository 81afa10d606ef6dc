// SPDX-License-Identifier: MIT
// Header and rows in both layouts.
#include "solver/result_table.hpp"

#include <algorithm>
#include <ostream>

#include "expr/number_text.hpp"
#include "expr/wide_number.hpp"

ResultTable::ResultTable(std::ostream& out, const Calculus& calculus, const Layout& layout,
                         const NumberSettings& numbers, const EquationTable& equations, const Stiffness& stiffness)
    : out_(out),
      calculus_(calculus),
      layout_(layout),
      numbers_(numbers),
      equations_(equations),
      stiffness_(stiffness) {}

bool ResultTable::isColumn(const Differential& variable) const {
    return variable.isSelected() && (layout_.printTempEquations || !hasPercent(variable.name()));
}

void ResultTable::writeHeader() {
    line_.clear();
    if (layout_.points3D >= 1) {
        writeMatrixHeader();
    } else {
        writeTableHeader();
    }
    line_ += '\n';
    out_.write(line_.data(), static_cast<std::streamsize>(line_.size()));
}

void ResultTable::writeTableHeader() {
    line_ += layout_.printOrderColumn ? "# ORDER" : "# ";
    line_ += " TIME";
    for (const Differential& variable : equations_) {
        if (isColumn(variable)) line_ += " " + variable.name();
    }
    // Both titles say max, on purpose; the first column is the smallest term.
    if (calculus_.useAllTerms) line_ += " log(|DY(max)|)     log(|DY(max)|)    h";
}

void ResultTable::writeMatrixHeader() {
    // A no-break space in Latin-1, not a blank.
    line_ += "#\xA0";
    int count = 0;
    for (const Differential& variable : equations_) {
        // Names with "%" never reach this header, whatever the rows show.
        if (!variable.isSelected() || hasPercent(variable.name())) continue;
        line_ += " " + variable.name();
        if (++count == layout_.points3D) {
            line_ += "\n#";
            count = 0;
        }
    }
}

void ResultTable::writeRow(RowFlag flag) {
    line_.clear();
    if (layout_.points3D < 1) {
        if (flag == RowFlag::Set) return;
        writeTableRow();
    } else {
        if (layout_.all3DValues) {
            // Every block names the same file, on purpose.
            line_ += "e\n\nset output 'o000001." + layout_.gnuplotOutput + "'\nsplot '-'  matrix with lines\n";
        } else if (flag == RowFlag::Clear) {
            return;
        }
        writeMatrixRow();
    }
    line_ += '\n';
    out_.write(line_.data(), static_cast<std::streamsize>(line_.size()));
}

void ResultTable::writeTableRow() {
    if (layout_.printOrderColumn) {
        line_ += std::to_string(calculus_.orderUsed);
        padLeft(line_, 0, 3);
        line_ += ' ';
    }
    line_ += ' ';
    addNumber(calculus_.time, 0);
    for (const Differential& variable : equations_) {
        if (!isColumn(variable)) continue;
        const real value = variable.result();
        line_ += value < 0 ? " " : "  ";
        addNumber(value, numbers_.printWidth);
    }
    if (calculus_.useAllTerms) {
        line_ += ' ' + std::to_string(stiffness_.smallestExponent());
        line_ += ' ' + std::to_string(stiffness_.largestExponent());
        line_ += ' ';
        addNumber(calculus_.step, 0);
    }
}

void ResultTable::addNumber(real value, int width) {
    if (std::max(width, numbers_.printPrecision) > widestComposed) {
        out_.write(line_.data(), static_cast<std::streamsize>(line_.size()));
        line_.clear();
        writeWide(out_, value, numbers_.printPrecision, width);
        return;
    }
    const std::size_t start = line_.size();
    appendScientific(line_, value, numbers_.printPrecision);
    padLeft(line_, start, width);
}

void ResultTable::writeMatrixRow() {
    int count = 0;
    for (const Differential& variable : equations_) {
        if (!isColumn(variable)) continue;
        const real value = variable.result();
        line_ += ' ';
        appendGeneral(line_, value);
        if (++count == layout_.points3D) {
            line_ += '\n';
            count = 0;
        }
    }
}
