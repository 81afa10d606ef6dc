#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Writes the equations of heat-rod.zirk: heat-rod.sh [POINTS] >heat-rod.zirk
set -euo pipefail

points=${1:-200}
cells=$((points + 1))
# Rounded rates would do, but as a formula they show what they are: diffusivity over the square of the cell.
rate="0.000111*$cells*$cells"
width=${#points}
name() { printf 'u%0*d' "$width" "$1"; }
# Where the flame was, in the middle, and near the other end.
columns=$(name $((3 * cells / 10))),$(name $((cells / 2))),$(name $((9 * cells / 10)))
selection=$(name $((3 * cells / 10))):$(name $((cells / 2))):$(name $((9 * cells / 10))):

cat <<END
// A copper rod heated by a flame, then both ends put into ice water: heat conduction, cut into $cells cells.
//
// The rod is 1 metre long and insulated along its sides. The flame has left 100 degrees at 30 centimetres, falling off
// as a bell curve 10 centimetres wide. Temperatures are those of the $points points between the cells; each tends to the
// mean of its two neighbours, at a rate that is the diffusivity of copper, 0.000111 square metres per second, over the
// square of the cell. Time is in seconds.
// Sources: J. Fourier, Theorie analytique de la chaleur (1822); the diffusivity: D. R. Lide (ed.), CRC Handbook of
// Chemistry and Physics.
//
// Written by examples/heat-rod.sh, which takes another number of points as its argument.
// Run:   zirk -s 1 -a 1e-14 -t 600 -F 60 -O 0 -P $selection examples/heat-rod.zirk
// Solve: zirk-solve -t 600 --every=60 -c t,$columns examples/heat-rod.zirk
// Look:  Where the flame was, the temperature halves in the first minute. The middle is warmest after 152 seconds,
//        at 21.70; the last of the three points, which started at 0, still warms up after ten.

END
for ((i = 1; i <= points; i++)); do
    left='' right=''
    ((i == 1)) || left="$(name $((i - 1))) + "
    ((i == points)) || right="$(name $((i + 1))) "
    sum="$left$right"
    sum=${sum% } sum=${sum% +}
    echo "$(name "$i")' = $rate*($sum - 2*$(name "$i")) & 100*exp(-($i/$cells - 0.3)*($i/$cells - 0.3)/0.01);"
done
