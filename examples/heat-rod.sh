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

cat <<END
// A hot copper rod with both ends in ice water: heat conduction, cut into $cells cells.
//
// The rod is 1 metre long, insulated along its sides, and 100 degrees warm when its ends are put on 0. Temperatures are
// those of the $points points between the cells; each tends to the mean of its two neighbours, at a rate that is the
// diffusivity of copper, 0.000111 square metres per second, over the square of the cell. Time is in seconds.
// Sources: J. Fourier, Theorie analytique de la chaleur (1822); the diffusivity: D. R. Lide (ed.), CRC Handbook of
// Chemistry and Physics.
//
// Written by examples/heat-rod.sh, which takes another number of points as its argument.
// Run:   zirk -s 1 -t 600 -F 60 -O 0 -P $(name 10):$(name 50):$(name 100): examples/heat-rod.zirk
// Look:  The middle of the rod, $(name 100), feels nothing for the first minute; after ten it is at 65.87.

END
for ((i = 1; i <= points; i++)); do
    left='' right=''
    ((i == 1)) || left="$(name $((i - 1))) + "
    ((i == points)) || right="$(name $((i + 1))) "
    sum="$left$right"
    sum=${sum% } sum=${sum% +}
    echo "$(name "$i")' = $rate*($sum - 2*$(name "$i")) & 100;"
done
