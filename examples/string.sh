#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Writes the equations of string.zirk: string.sh [CELLS] >string.zirk
set -euo pipefail

cells=${1:-128}
points=$((cells - 1))
width=${#points}
corner=$((cells / 5))
name() { printf 'u%0*d' "$width" "$1"; }
# Deflection of every point in millimetres: a triangle of height 3 with its corner at 1/5, made of ten harmonics.
mapfile -t start < <(awk -v cells="$cells" 'BEGIN {
    pi = atan2(0, -1)
    for (i = 1; i < cells; ++i) {
        u = 0
        for (m = 1; m <= 10; ++m) u += 2*3/(pi*pi*0.16*m*m)*sin(m*pi/5)*sin(m*pi*i/cells)
        printf "%.12f\n", u
    }
}')

cat <<END
// The A string of a guitar, plucked by a thumb at a fifth of its length: the wave equation, cut into $cells cells.
//
// Deflections are in millimetres at $points points, time is in seconds, the tone is 110 hertz. The string starts at
// rest, as a triangle of height 3 whose corner is rounded by the thumb: ten harmonics, of which the fifth and the tenth
// are missing because of the place. Every point is drawn to the mean of its neighbours, with (2*110*$cells)^2 per second
// squared. $points equations of the second order are $((2 * points)) of the first; the velocities are not printed.
// Sources: J. le R. d'Alembert, Recherches sur la courbe que forme une corde tendue, Hist. Acad. Berlin 3 (1747)
// 214-219; H. von Helmholtz, Die Lehre von den Tonempfindungen (1863), ch. 5.
//
// Written by examples/string.sh, which takes another number of cells as its argument.
// Run:   zirk -t 0.00909090909090909 -F -16 -O 0 -P $(name $corner):$(name $((cells - corner))): examples/string.zirk
// Solve: zirk-solve -t 1/110 -n 16 -c t,$(name $corner),$(name $((cells - corner))) examples/string.zirk
// Look:  The corner splits in two that run apart. After half a period the string is bent the other way round at the
//        other end: the second column is where the first was, turned over. At the end both are back.

END
for ((i = 1; i <= points; i++)); do
    left='' right=''
    ((i == 1)) || left="$(name $((i - 1))) + "
    ((i == points)) || right="$(name $((i + 1))) "
    sum="$left$right"
    sum=${sum% } sum=${sum% +}
    echo "$(name "$i")'' = 220*$cells*220*$cells*($sum - 2*$(name "$i")) & ${start[i - 1]};"
done
