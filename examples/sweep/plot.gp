# SPDX-License-Identifier: MIT
# Draws the table of the sweep over its closed form: gnuplot -e "table='table.txt'; picture='resonance.png'" plot.gp
if (!exists("table")) table = "table.txt"
if (!exists("picture")) picture = "resonance.png"
set terminal pngcairo size 900,560 font "sans,11"
set output picture
set title "A shaken spring: how far it swings"
set xlabel "frequency of the shaking, in units of its own"
set ylabel "amplitude"
set xrange [0:2]
set yrange [0:5.5]
set grid
set samples 400
set key top right
colours = "#332288 #117733 #cc6677 #aa4499 #996633"
colour(d) = int("0x".substr(word(colours, d), 2, 7))
amplitude(d, w) = 1/sqrt((1 - w**2)**2 + (2*d*w)**2)
# Dots: every fourth row of the sweep with this damping. Line: closed form.
plot for [d = 1:5] table using (abs($2 - d/10.) < 1e-9 ? $3 : NaN):(sqrt($4)) every 4 with points pt 7 ps 0.6 lc rgb colour(d) notitle, \
     for [d = 1:5] amplitude(d/10., x) with lines lc rgb colour(d) title sprintf("damping %.1f", d/10.)
