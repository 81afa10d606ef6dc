// SPDX-License-Identifier: MIT
// Places become lines and columns only when somebody asks.
#include "lang/statements.hpp"

#include <algorithm>
#include <array>
#include <limits>

#include "zirk/error.hpp"

namespace zirk {

namespace {

int asInt(std::size_t count) { return static_cast<int>(std::min<std::size_t>(count, std::numeric_limits<int>::max())); }

}  // namespace

void Statements::fail(const Place& place, const std::string& message) const {
    const std::string token(text.substr(place.offset, place.length));
    const std::size_t newline = place.offset == 0 ? std::string_view::npos : text.rfind('\n', place.offset - 1);
    const std::size_t lineBegin = newline == std::string_view::npos ? 0 : newline + 1;
    const int column = asInt(place.offset - lineBegin + 1);
    if (!origin.empty()) throw ParseError(origin + ": " + message, 0, column, token);
    throw ParseError(message, lineOf(place), column, token);
}

int Statements::lineOf(const Place& place) const {
    const std::string_view before = text.substr(0, place.offset);
    return asInt(static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1);
}

std::string Statements::written(std::uint32_t name, std::uint32_t primes) const {
    return writtenDerivative(names[name], primes);
}

std::string writtenDerivative(const std::string& name, std::uint32_t primes) {
    constexpr std::uint32_t mostPrimes = 3;
    return name + (primes <= mostPrimes ? std::string(primes, '\'') : "'" + std::to_string(primes));
}

std::size_t utf8Length(std::string_view text) {
    if (text.empty()) return 0;
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    if (first < 0x80) return 1;
    const std::size_t length = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
    if (first < 0xc2 || first > 0xf4 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xc0U) != 0x80) return 0;
    }
    // Overlong forms, surrogates, and what lies beyond the last code point.
    if ((first == 0xe0 && byte(1) < 0xa0) || (first == 0xed && byte(1) > 0x9f)) return 0;
    if ((first == 0xf0 && byte(1) < 0x90) || (first == 0xf4 && byte(1) > 0x8f)) return 0;
    return length;
}

std::string quoted(std::string_view word) {
    constexpr std::size_t longest = 60;
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "\"";
    while (!word.empty()) {
        if (text.size() > longest) return text + "...\"";
        const std::size_t length = utf8Length(word);
        const auto byte = static_cast<unsigned char>(word[0]);
        if (length == 0 || byte < ' ' || byte == 0x7f) {
            text += {'\\', 'x', digits[byte >> 4U], digits[byte & 15U]};
            word.remove_prefix(1);
        } else {
            text += word.substr(0, length);
            word.remove_prefix(length);
        }
    }
    return text + '"';
}

}  // namespace zirk
