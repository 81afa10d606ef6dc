// SPDX-License-Identifier: MIT
// Long runs of blanks and zeros, in pieces of constant size.
#include "text/wide_number.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <string>

#include "text/number_text.hpp"

namespace zirk {

namespace {

void writeRun(std::ostream& out, char character, std::int64_t count) {
    const std::string piece(static_cast<std::size_t>(std::clamp<std::int64_t>(count, 0, widestComposed)), character);
    for (; count > 0; count -= widestComposed) {
        out.write(piece.data(), static_cast<std::streamsize>(std::min<std::int64_t>(count, widestComposed)));
    }
}

}  // namespace

void writeWide(std::ostream& out, real x, int precision, int width) {
    std::string text;
    // Every digit is in the text already: an extended number has fewer than 16500 of them, the rest are zeros.
    appendScientific(text, x, std::min(precision, widestComposed));
    const std::int64_t zeros = std::isfinite(x) ? std::max(0, precision - widestComposed) : 0;
    writeRun(out, ' ', width - static_cast<std::int64_t>(text.size()) - zeros);
    const std::size_t exponent = std::min(text.find('e'), text.size());
    out.write(text.data(), static_cast<std::streamsize>(exponent));
    writeRun(out, '0', zeros);
    out.write(text.data() + exponent, static_cast<std::streamsize>(text.size() - exponent));
}

}  // namespace zirk
