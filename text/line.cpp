// SPDX-License-Identifier: MIT
// Pieces appended in memory; the same bytes as insertions into a stream give.
#include "text/line.hpp"

#include <algorithm>
#include <charconv>
#include <ostream>
#include <string>

#include "text/decimal.hpp"
#include "text/number_text.hpp"
#include "text/wide_number.hpp"

namespace zirk {

namespace {

std::size_t fieldSize(int width) { return width > 0 ? static_cast<std::size_t>(width) : 0; }

/// Bytes that an integer of 64 bits may need.
constexpr std::size_t integerTextSize = 20;

}  // namespace

Line& Line::operator<<(const real& x) {
    if (const char* end = writeGeneral(room(decimalTextSize), x)) {
        size_ = static_cast<std::size_t>(end - text_.data());
    } else {
        std::string text;
        appendGeneral(text, x);
        *this << text;
    }
    return *this;
}

Line& Line::addInteger(std::int64_t n, int width) {
    char* start = room(integerTextSize + fieldSize(width));
    closeField(start, std::to_chars(start, start + integerTextSize, n).ptr, width);
    return *this;
}

Line& Line::addScientific(const real& x, int precision, int width) {
    // A stream would take the field from the machine's stack.
    if (std::max(width, precision) > widestComposed) {
        write();
        writeWide(out_, x, precision, width);
        return *this;
    }
    char* start = room(decimalTextSize + fieldSize(width));
    if (const char* end = writeScientific(start, x, precision)) {
        closeField(start, end, width);
        return *this;
    }
    std::string text;
    appendScientific(text, x, precision);
    padLeft(text, 0, width);
    return *this << text;
}

Line& Line::operator<<(EndOfLine) {
    *this << '\n';
    write();
    return *this;
}

void Line::closeField(char* start, const char* end, int width) {
    const auto length = static_cast<std::size_t>(end - start);
    const std::size_t blanks = fieldSize(width) > length ? fieldSize(width) - length : 0;
    if (blanks > 0) {
        std::memmove(start + blanks, start, length);
        std::memset(start, ' ', blanks);
    }
    size_ += blanks + length;
}

void Line::write() {
    const auto count = static_cast<std::streamsize>(size_);
    size_ = 0;
    // Straight to the buffer: the stream would look at its state and at what is tied to it before and after.
    if (out_.rdbuf()->sputn(text_.data(), count) != count) out_.setstate(std::ios_base::badbit);
}

}  // namespace zirk
