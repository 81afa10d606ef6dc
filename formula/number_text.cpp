// SPDX-License-Identifier: MIT
// Numbers with the fewest figures that read back as the same bits.
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "formula/text.hpp"

namespace zirk {

namespace {

/// Enough for 64 bits, whatever the exponent.
constexpr int mostDigits = 21;

struct Figures {
    std::string digits;
    /// Of the first digit.
    int exponent;
};

/// x > 0, rounded to `count` figures.
Figures rounded(real x, int count) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*Le", count - 1, x);
    Figures figures{"", 0};
    const char* at = text;
    // The decimal point is whatever the locale of the program says.
    for (; *at != 'e'; ++at) {
        if (std::isdigit(static_cast<unsigned char>(*at)) != 0) figures.digits += *at;
    }
    figures.exponent = static_cast<int>(std::strtol(at + 1, nullptr, 10));
    return figures;
}

bool readsBack(const Figures& figures, real x) {
    // Without a point, so that every locale reads it.
    const int last = figures.exponent - static_cast<int>(figures.digits.size()) + 1;
    return std::strtold((figures.digits + "e" + std::to_string(last)).c_str(), nullptr) == x;
}

Figures shortest(real x) {
    int low = 1;
    for (int high = mostDigits; low < high;) {
        const int middle = (low + high) / 2;
        if (readsBack(rounded(x, middle), x)) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    Figures figures = rounded(x, low);
    figures.digits.erase(figures.digits.find_last_not_of('0') + 1);
    return figures;
}

std::string scientific(const Figures& figures) {
    std::string text = figures.digits;
    if (text.size() > 1) text.insert(1, ".");
    return text + "e" + std::to_string(figures.exponent);
}

std::string plain(const Figures& figures) {
    std::string text = figures.digits;
    if (figures.exponent < 0) return "0." + std::string(static_cast<std::size_t>(-figures.exponent - 1), '0') + text;
    const auto whole = static_cast<std::size_t>(figures.exponent) + 1;
    if (text.size() <= whole) return text + std::string(whole - text.size(), '0');
    return text.insert(whole, ".");
}

}  // namespace

std::string numberText(real x) {
    if (x == 0) return std::signbit(x) ? "-0" : "0";
    const std::string sign = x < 0 ? "-" : "";
    const Figures figures = shortest(x < 0 ? -x : x);
    const std::string withExponent = scientific(figures);
    // 100000 and 0.0001, but 1e6 and 1e-5.
    const std::size_t worth = figures.exponent < 0 ? 2 : 3;
    constexpr int longest = 25;
    if (figures.exponent > longest || figures.exponent < -longest) return sign + withExponent;
    const std::string withoutExponent = plain(figures);
    return sign + (withoutExponent.size() > withExponent.size() + worth ? withExponent : withoutExponent);
}

}  // namespace zirk
