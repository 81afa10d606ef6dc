// SPDX-License-Identifier: MIT
// Every piece in two ways: inserted into the stream, which defines it, or appended to the line.
#include "expr/line.hpp"

#include <algorithm>
#include <charconv>
#include <iomanip>
#include <ostream>

#include "expr/number_text.hpp"
#include "expr/wide_number.hpp"

namespace {

int piecewiseIndex() {
    static const int index = std::ios_base::xalloc();
    return index;
}

}  // namespace

void insertPieceByPiece(std::ostream& out) { out.iword(piecewiseIndex()) = 1; }

Line::Line(std::ostream& out) : out_(out), piecewise_(out.iword(piecewiseIndex()) != 0) {}

Line& Line::insert(std::string_view text) {
    out_ << text;
    return *this;
}

Line& Line::operator<<(real x) {
    if (piecewise_) {
        out_ << x;
    } else {
        appendGeneral(text_, x);
    }
    return *this;
}

Line& Line::addInteger(std::int64_t n, int width) {
    if (piecewise_) {
        out_ << std::setw(width) << n;
        return *this;
    }
    char figures[24];
    const char* end = std::to_chars(figures, figures + sizeof figures, n).ptr;
    const std::size_t start = text_.size();
    text_.append(static_cast<const char*>(figures), end);
    padLeft(text_, start, width);
    return *this;
}

Line& Line::addScientific(real x, int precision, int width) {
    // A stream would take the field from the machine's stack.
    if (std::max(width, precision) > widestComposed) {
        out_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
        text_.clear();
        writeWide(out_, x, precision, width);
    } else if (piecewise_) {
        out_ << std::scientific << std::setprecision(precision) << std::setw(width) << x;
    } else {
        const std::size_t start = text_.size();
        appendScientific(text_, x, precision);
        padLeft(text_, start, width);
    }
    return *this;
}

Line& Line::operator<<(EndOfLine) {
    if (piecewise_) {
        out_ << std::endl;
        return *this;
    }
    text_ += '\n';
    out_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
    text_.clear();
    return *this;
}
