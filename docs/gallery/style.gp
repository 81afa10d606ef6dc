# SPDX-License-Identifier: MIT
# The look of all pictures; the variables data and picture come from scripts/gallery. Everything is drawn twice as large as
# for 640 points a line, so that fine screens and enlargements show it sharp.
set terminal pngcairo size 1280,960 font "DejaVu Sans,11" fontscale 2 linewidth 2 pointscale 2 rounded
set output picture
set datafile commentschars "#"
set border 3 linewidth 1 linecolor rgb "#808080"
set tics nomirror out textcolor rgb "#404040"
set grid linewidth 1 linetype 1 linecolor rgb "#e8e8e8"
set key top right noenhanced samplen 2 spacing 1.2
set lmargin 9
set rmargin 3
set tmargin 2
set bmargin 4
blue = "#1f5fa8"
orange = "#d9661f"
green = "#2e8b57"
grey = "#909090"
red = "#c0282d"
set style line 1 linecolor rgb blue linewidth 2
set style line 2 linecolor rgb orange linewidth 2
set style line 3 linecolor rgb green linewidth 2
set style line 4 linecolor rgb grey linewidth 1.5
# Where a run starts, in phase portraits and orbits.
set style line 9 linecolor rgb red pointtype 7 pointsize 1.3
set palette defined (0 "#1f3f8f", 0.35 "#2e8bc0", 0.65 "#7fbf7b", 0.85 "#f0a030", 1 "#c0282d")
