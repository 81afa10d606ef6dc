// SPDX-License-Identifier: MIT
// One line of text on its way to a stream.
#pragma once

#include <cstdint>
#include <cstring>
#include <iosfwd>
#include <string_view>
#include <type_traits>
#include <vector>

#include "zirk/real.hpp"

namespace zirk {

struct EndOfLine {};
inline constexpr EndOfLine endOfLine;

/// Composes lines and writes each of them whole.
class Line {
public:
    explicit Line(std::ostream& out) : out_(out) {}

    Line& operator<<(std::string_view text) {
        std::memcpy(room(text.size()), text.data(), text.size());
        size_ += text.size();
        return *this;
    }

    Line& operator<<(char character) { return *this << std::string_view(&character, 1); }

    template <typename Integer, typename = std::enable_if_t<std::is_integral_v<Integer>>>
    Line& operator<<(Integer n) {
        static_assert(std::is_signed_v<Integer> || sizeof n < sizeof(std::int64_t));
        return addInteger(n);
    }

    /// As a fresh stream shows it: six significant digits.
    Line& operator<<(const real& x);

    /// Right-aligned in a field of blanks.
    Line& addInteger(std::int64_t n, int width = 0);

    /// In scientific notation, right-aligned; any precision and width, in constant memory.
    Line& addScientific(const real& x, int precision, int width);

    /// Ends the line and writes it.
    Line& operator<<(EndOfLine);

private:
    /// Where the next `count` bytes go.
    char* room(std::size_t count) {
        if (text_.size() - size_ < count) text_.resize(2 * text_.size() + count);
        return text_.data() + size_;
    }
    /// The text from start to end is in place; makes it a field of the line, right-aligned.
    void closeField(char* start, const char* end, int width);
    void write();

    std::ostream& out_;
    std::vector<char> text_;
    std::size_t size_ = 0;
};

}  // namespace zirk
