// SPDX-License-Identifier: MIT
// Integer arithmetic where it decides, the C library for the rest.
#include "text/number_text.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "text/decimal.hpp"

namespace zirk {

namespace {

/// More significant digits than any extended number has: what follows is zeros.
constexpr int allDigits = 16500;

}  // namespace

void appendScientific(std::string& text, const real& x, int precision) {
    char figures[decimalTextSize];
    if (const char* end = writeScientific(figures, x, precision)) {
        text.append(static_cast<const char*>(figures), end);
        return;
    }
    const int wanted = precision < 0 ? 6 : precision;
    const int exact = std::min(wanted, allDigits);
    char small[128];
    const int length = std::snprintf(small, sizeof small, "%.*Le", exact, x);
    const std::size_t start = text.size();
    if (length < static_cast<int>(sizeof small)) {
        text.append(small, static_cast<std::size_t>(length));
    } else {
        text.resize(start + static_cast<std::size_t>(length) + 1);
        std::snprintf(&text[start], static_cast<std::size_t>(length) + 1, "%.*Le", exact, x);
        text.pop_back();
    }
    if (wanted > exact && std::isfinite(x)) {
        text.insert(text.find('e', start), static_cast<std::size_t>(wanted - exact), '0');
    }
}

void appendGeneral(std::string& text, const real& x) {
    char small[64];
    if (const char* end = writeGeneral(small, x)) {
        text.append(static_cast<const char*>(small), end);
        return;
    }
    const int length = std::snprintf(small, sizeof small, "%.6Lg", x);
    text.append(small, static_cast<std::size_t>(length));
}

void padLeft(std::string& text, std::size_t from, int width) {
    const std::size_t length = text.size() - from;
    if (width > 0 && length < static_cast<std::size_t>(width)) {
        text.insert(from, static_cast<std::size_t>(width) - length, ' ');
    }
}

}  // namespace zirk
