// SPDX-License-Identifier: MIT
// Figures by integer arithmetic where that decides them, by the C library elsewhere.
#include "solve/number.hpp"

#include <cmath>
#include <cstdio>

#include "text/decimal.hpp"

namespace zirk::solve {

namespace {

/// The same bounds as in "%Lg".
constexpr int leastPlainExponent = -4;

/// Of a number above 0: 0.00125 has the figures 125 and the exponent -3.
struct Figures {
    std::string figures;
    int exponent;
};

Figures figuresOf(const real& x, int digits) {
    Decimal decimal;
    if (digits <= mostFigures && roundToDecimal(x, digits, decimal)) {
        return {std::to_string(decimal.digits), decimal.exponent};
    }
    char characters[64];
    std::snprintf(characters, sizeof characters, "%.*Le", digits - 1, x);
    const std::string text = characters;
    const std::size_t e = text.find('e');
    std::string figures = text.substr(0, e);
    if (figures.size() > 1) figures.erase(1, 1);
    return {figures, std::stoi(text.substr(e + 1))};
}

void appendExponent(std::string& text, int exponent) {
    text += exponent < 0 ? "e-" : "e+";
    const int size = exponent < 0 ? -exponent : exponent;
    if (size < 10) text += '0';
    text += std::to_string(size);
}

/// The figures, without zeros at the end, with a point behind so many of them; these may be none or more than there
/// are.
void appendPlain(std::string& text, const std::string& figures, int before) {
    const int count = static_cast<int>(figures.size());
    if (before <= 0) {
        text += "0.";
        text.append(static_cast<std::size_t>(-before), '0');
        text += figures;
    } else if (before >= count) {
        text += figures;
        text.append(static_cast<std::size_t>(before - count), '0');
    } else {
        text.append(figures, 0, static_cast<std::size_t>(before));
        text += '.';
        text.append(figures, static_cast<std::size_t>(before));
    }
}

}  // namespace

void appendNumber(std::string& text, const real& x, int digits, LastZeros zeros) {
    if (x == 0) {
        text += '0';
        return;
    }
    if (!std::isfinite(x)) {
        text += std::isnan(x) ? "nan" : x < 0 ? "-inf" : "inf";
        return;
    }
    Figures shown = figuresOf(std::fabs(x), digits);
    const std::size_t needed = shown.figures.find_last_not_of('0') + 1;
    if (zeros == LastZeros::Dropped || 2 * needed <= shown.figures.size()) shown.figures.resize(needed);
    if (x < 0) text += '-';
    if (shown.exponent >= leastPlainExponent && shown.exponent < digits) {
        appendPlain(text, shown.figures, shown.exponent + 1);
    } else {
        appendPlain(text, shown.figures, 1);
        appendExponent(text, shown.exponent);
    }
}

}  // namespace zirk::solve
