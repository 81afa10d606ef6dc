#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Writes the equations of pleiades.zirk: pleiades.sh >pleiades.zirk
set -euo pipefail

bodies=7
x=(0 3 3 -1 -3 2 -2 2)
y=(0 3 -3 2 0 0 -4 4)
u=(0 0 0 0 0 0 7/4 -3/2)
v=(0 0 0 0 -5/4 1 0 0)

cat <<'END'
// Seven stars in a plane that pull at each other, with quasi-collisions: the Pleiades problem.
//
// Star i has the mass i, the place xi, yi and the velocity ui, vi; gravity is 1. wij is 1/r^3 for the stars i and j,
// carried along by an equation of its own, wij' = -3 wij (r r')/r^2: 49 equations.
// Source: E. Hairer, S. P. Norsett, G. Wanner, Solving Ordinary Differential Equations I (1993), section II.10.
//
// Written by examples/pleiades.sh.
// Run:   zirk -a 1e-16 -t 3 -F 0.25 -O 0 -P x1:y1:x7:y7:energy: examples/pleiades.zirk
// Solve: zirk-solve -t 3 --every=0.25 -c t,x1,y1,x7,y7,energy examples/pleiades.zirk
// Look:  energy never changes, although the stars 3 and 5 meet at 0.056 (t = 1.63) and 1 and 7 at 0.034 (t = 1.68).
//        There the steps are halved again and again, and they stay short.

END
for ((i = 1; i <= bodies; i++)); do
    ax='' ay=''
    for ((j = 1; j <= bodies; j++)); do
        ((i != j)) || continue
        ((i < j)) && w=w$i$j || w=w$j$i
        ax+=" + $j*(x$j - x$i)*$w"
        ay+=" + $j*(y$j - y$i)*$w"
    done
    echo "x$i' = u$i & ${x[i]};"
    echo "y$i' = v$i & ${y[i]};"
    echo "u$i' =${ax# +} & ${u[i]};"
    echo "v$i' =${ay# +} & ${v[i]};"
done
echo
kinetic='' potential=''
for ((i = 1; i <= bodies; i++)); do
    kinetic+=" + $i*(u$i*u$i + v$i*v$i)/2"
    for ((j = i + 1; j <= bodies; j++)); do
        square="((x$i - x$j)*(x$i - x$j) + (y$i - y$j)*(y$i - y$j))"
        dx=$((x[i] - x[j])) dy=$((y[i] - y[j]))
        echo "w$i$j' = -3*w$i$j*((x$i - x$j)*(u$i - u$j) + (y$i - y$j)*(v$i - v$j))/$square"
        echo "       & exp(-3/2*ln($((dx * dx + dy * dy))));"
        potential+=$'\n'"         - $((i * j))*w$i$j*$square"
    done
done
echo
echo "energy =${kinetic# +}$potential;"
