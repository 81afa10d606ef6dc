// SPDX-License-Identifier: MIT
// Scaling by a table of powers of ten with a bound on the error; what the bound cannot decide is refused.
#include "text/decimal.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "text/extended_bits.hpp"

namespace zirk {

namespace {

__extension__ using Wide = unsigned __int128;

constexpr int largestPower = 511;
constexpr Wide topBit = Wide{1} << 127;

/// 10^q, cut off to mantissa * 2^exponent with the top bit of the mantissa set.
struct Power {
    Wide mantissa = 0;
    int exponent = 0;
};

/// mantissa * 10 / 8 or / 16, whichever is normalized; cut off.
constexpr Power timesTen(const Power& p) {
    const Wide sixteenth = (p.mantissa >> 4) * 10 + (((p.mantissa & 15) * 10) >> 4);
    if ((sixteenth & topBit) != 0) return {sixteenth, p.exponent + 4};
    return {(p.mantissa >> 3) * 10 + (((p.mantissa & 7) * 10) >> 3), p.exponent + 3};
}

/// mantissa * 8 / 10 or * 16 / 10, whichever is normalized; cut off.
constexpr Power tenthOf(const Power& p) {
    const Wide quotient = p.mantissa / 10;
    const Wide rest = p.mantissa % 10;
    const Wide eightfold = quotient * 8 + rest * 8 / 10;
    if ((eightfold & topBit) != 0) return {eightfold, p.exponent - 3};
    return {quotient * 16 + rest * 16 / 10, p.exponent - 4};
}

constexpr auto makePowers() {
    std::array<Power, 2 * largestPower + 1> powers{};
    powers[largestPower] = {topBit, -127};
    for (std::size_t q = 1; q <= largestPower; ++q) {
        powers[largestPower + q] = timesTen(powers[largestPower + q - 1]);
        powers[largestPower - q] = tenthOf(powers[largestPower - q + 1]);
    }
    return powers;
}

constexpr auto powers = makePowers();

const Power& powerOfTen(int q) {
    const int index = largestPower + q;
    return powers[static_cast<std::size_t>(index)];
}

/// Each step away from 10^0 cuts off less than one unit of a mantissa that is at least 2^127, so the mantissa of 10^q
/// is short by less than 2 * |q| + 1 units. The product with a 64-bit mantissa, less its lowest 64 bits, is then short
/// by at most that many units and one more.
constexpr unsigned mostMissing = 2 * largestPower + 3;

/// True when no number with a 64-bit mantissa lies between an entry and the power that it stands for: comparing with
/// the entry then is comparing with the power.
constexpr bool entriesSeparateAsTheirPowers() {
    for (const Power& power : powers) {
        const auto low = static_cast<std::uint64_t>(power.mantissa);
        if (low > UINT64_MAX - mostMissing) return false;
    }
    return true;
}
static_assert(entriesSeparateAsTheirPowers());

constexpr std::uint64_t smallPowers[] = {1,
                                         10,
                                         100,
                                         1000,
                                         10000,
                                         100000,
                                         1000000,
                                         10000000,
                                         100000000,
                                         1000000000,
                                         10000000000,
                                         100000000000,
                                         1000000000000,
                                         10000000000000,
                                         100000000000000,
                                         1000000000000000,
                                         10000000000000000,
                                         100000000000000000,
                                         1000000000000000000,
                                         10000000000000000000U};

constexpr auto makePairs() {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}

constexpr auto pairs = makePairs();

/// Figures of `value` up to `end`, `count` of them.
template <typename Unsigned>
void writePairs(char* end, Unsigned value, int count) {
    for (; count >= 2; count -= 2) {
        end -= 2;
        std::memcpy(end, &pairs[static_cast<std::size_t>(value % 100 * 2)], 2);
        value /= 100;
    }
    if (count == 1) end[-1] = static_cast<char>('0' + value);
}

/// As writePairs, by shorter chains of divisions.
void writeFigures(char* end, std::uint64_t value, int count) {
    for (; count > 8; count -= 8) {
        writePairs(end, static_cast<std::uint32_t>(value % 100000000), 8);
        value /= 100000000;
        end -= 8;
    }
    writePairs(end, static_cast<std::uint32_t>(value), count);
}

/// "e", the sign, and at least two figures.
char* writeExponent(char* out, int exponent) {
    *out++ = 'e';
    *out++ = exponent < 0 ? '-' : '+';
    const int magnitude = std::abs(exponent);
    const int count = magnitude < 100 ? 2 : magnitude < 1000 ? 3 : 4;
    writeFigures(out + count, static_cast<std::uint64_t>(magnitude), count);
    return out + count;
}

/// One figure, the point and the others; no point when there are none.
char* writeMantissa(char* out, std::uint64_t digits, int count) {
    writeFigures(out + count + 1, digits, count);
    out[0] = out[1];
    if (count == 1) return out + 1;
    out[1] = '.';
    return out + count + 1;
}

}  // namespace

bool roundToDecimal(const real& x, int n, Decimal& out) {
    const ExtendedBits bits = bitsOf(x);
    const int binary = bits.biasedExponent() - ExtendedBits::bias;
    // Neither subnormal numbers nor those that the table does not reach.
    constexpr int reach = (largestPower - mostFigures - 1) * 3321 / 1000;
    if (binary < -reach || binary > reach || bits.mantissa >> 63 == 0) return false;

    // floor(binary * log10(2)) is the decimal exponent or one less.
    int exponent = static_cast<int>((binary * std::int64_t{1292913986}) >> 32);
    const Power& next = powerOfTen(exponent + 1);
    const int nextBinary = next.exponent + 127;
    if (binary > nextBinary || (binary == nextBinary && Wide{bits.mantissa} << 64 >= next.mantissa)) ++exponent;

    const Power& scale = powerOfTen(n - 1 - exponent);
    const Wide low = Wide{bits.mantissa} * static_cast<std::uint64_t>(scale.mantissa);
    const Wide product = Wide{bits.mantissa} * static_cast<std::uint64_t>(scale.mantissa >> 64) + (low >> 64);
    // product * 2^-shift is x * 10^(n - 1 - exponent), of n figures; at least 62 bits are a fraction.
    const int shift = -(binary - 63 + scale.exponent + 64);
    std::uint64_t digits = static_cast<std::uint64_t>(product >> shift);
    const Wide half = Wide{1} << (shift - 1);
    const Wide fraction = product & (half * 2 - 1);
    if (fraction > half) {
        ++digits;
    } else if (fraction + mostMissing >= half) {
        return false;
    }
    // Rounding up to the next power of ten, or a power of ten that the table has too small.
    if (digits == smallPowers[n]) {
        digits = smallPowers[n - 1];
        ++exponent;
    }
    out = {digits, exponent};
    return true;
}

char* writeScientific(char* out, const real& x, int precision) {
    if (precision < 0 || precision >= mostFigures) return nullptr;
    Decimal decimal;
    if (x != 0 && !roundToDecimal(x, precision + 1, decimal)) return nullptr;
    if (std::signbit(x)) *out++ = '-';
    out = writeMantissa(out, decimal.digits, precision + 1);
    return writeExponent(out, decimal.exponent);
}

char* writeGeneral(char* out, const real& x) {
    constexpr int figures = 6;
    Decimal decimal;
    if (x != 0 && !roundToDecimal(x, figures, decimal)) return nullptr;
    if (std::signbit(x)) *out++ = '-';
    if (x == 0) {
        *out++ = '0';
        return out;
    }
    int count = figures;
    while (decimal.digits % 10 == 0) {
        decimal.digits /= 10;
        --count;
    }
    const int exponent = decimal.exponent;
    if (exponent < -4 || exponent >= figures) {
        return writeExponent(writeMantissa(out, decimal.digits, count), exponent);
    }
    if (exponent < 0) {
        std::copy_n("0.0000", 6, out);
        out += 1 - exponent;
        writeFigures(out + count, decimal.digits, count);
        return out + count;
    }
    const int whole = exponent + 1;
    if (count <= whole) {
        writeFigures(out + whole, decimal.digits * smallPowers[whole - count], whole);
        return out + whole;
    }
    writeFigures(out + count + 1, decimal.digits, count);
    std::memmove(out, out + 1, static_cast<std::size_t>(whole));
    out[whole] = '.';
    return out + count + 1;
}

}  // namespace zirk
