// SPDX-License-Identifier: MIT
// Every piece in two ways: inserted into the stream, which defines it, or appended to the line.
#include "expr/line.hpp"

#include <algorithm>
#include <charconv>
#include <iomanip>
#include <ostream>
#include <string>

#include "expr/decimal.hpp"
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
    } else if (const char* end = writeGeneral(room(decimalTextSize), x)) {
        size_ = static_cast<std::size_t>(end - text_.data());
    } else {
        std::string text;
        appendGeneral(text, x);
        *this << text;
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
    const auto count = static_cast<int>(end - figures);
    for (int i = count; i < width; ++i) *this << ' ';
    return *this << std::string_view(figures, static_cast<std::size_t>(count));
}

Line& Line::addScientific(real x, int precision, int width) {
    // A stream would take the field from the machine's stack.
    if (std::max(width, precision) > widestComposed) {
        write();
        writeWide(out_, x, precision, width);
        return *this;
    }
    if (piecewise_) {
        out_ << std::scientific << std::setprecision(precision) << std::setw(width) << x;
        return *this;
    }
    const auto field = static_cast<std::ptrdiff_t>(std::max(width, 0));
    char* start = room(static_cast<std::size_t>(decimalTextSize + field));
    if (const char* end = writeScientific(start, x, precision)) {
        const std::ptrdiff_t length = end - start;
        const std::ptrdiff_t blanks = std::max<std::ptrdiff_t>(field - length, 0);
        if (blanks > 0) {
            std::memmove(start + blanks, start, static_cast<std::size_t>(length));
            std::memset(start, ' ', static_cast<std::size_t>(blanks));
        }
        size_ += static_cast<std::size_t>(blanks + length);
        return *this;
    }
    std::string text;
    appendScientific(text, x, precision);
    padLeft(text, 0, width);
    return *this << text;
}

Line& Line::operator<<(EndOfLine) {
    if (piecewise_) {
        out_ << std::endl;
        return *this;
    }
    *this << '\n';
    write();
    return *this;
}

void Line::write() {
    out_.write(text_.data(), static_cast<std::streamsize>(size_));
    size_ = 0;
}
