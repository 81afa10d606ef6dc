# zirk -a 1e-16 -f 1 -s 0.0005 -t 3 -O 0 -P x1:x2:x3:x4:x5:x6:x7:y1:y2:y3:y4:y5:y6:y7: examples/pleiades.zirk
# On the left all tracks; on the right the two closest encounters, enlarged, with a dot for each hundredth of time.
set multiplot
colours = "#1f5fa8 #d9661f #2e8b57 #c0282d #7b4fa3 #8c6d31 #404040"
colour(i) = word(colours, i)
set size ratio -1
set lmargin at screen 0.10
set rmargin at screen 0.61
set tmargin at screen 0.93
set bmargin at screen 0.13
set xrange [-3.6:3.6]
set yrange [-4.4:5.6]
set xlabel "x"
set title "stars 1 to 7, from their starts to t = 3" font ",10" offset 0,-0.5
set ylabel "y"
unset key
set object 1 rectangle center 0.78, 2.35 size 0.5, 0.5 front fillstyle empty border linecolor rgb "#303030" linewidth 1
set object 2 rectangle center -0.35, 2.36 size 0.4, 0.4 front fillstyle empty border linecolor rgb "#303030" linewidth 1
set label 1 "B" at 1.1, 2.5 front
set label 2 "A" at -0.87, 2.36 front
plot for [i = 1:7] data using (column(1 + i)):(column(8 + i)) with lines linewidth 1.5 linecolor rgb colour(i) \
         notitle, \
     for [i = 1:7] data every ::0::0 using (column(1 + i)):(column(8 + i)) with points pointtype 7 \
         pointsize 0.5 + 0.15*i linecolor rgb colour(i) notitle, \
     for [i = 1:7] data every ::0::0 using (column(1 + i)):(column(8 + i)):(sprintf("%d", i)) with labels \
         offset (i == 3 || i == 4 || i == 6 ? -1.5 : 1.4), 0.4 textcolor rgb colour(i) notitle
unset object
unset label
unset key
set xlabel ""
set ylabel ""
set lmargin at screen 0.69
set rmargin at screen 0.98
set format "%.1f"
set xtics 0.1
set ytics 0.1
# Two tracks, dots on them every 20 steps, and a line between the places at the time of the encounter.
close(i, j, from, to, t) = sprintf("< awk '!/^#/ && $1 > %g && $1 < %g { print $%d, $%d, $%d, $%d, ($1 > %g && $1 < %g) }' %s", \
                                   from, to, 1 + i, 8 + i, 1 + j, 8 + j, t - 0.0002, t + 0.0002, data)
set tics font ",8"
set title "A: 1 and 7, t = 1.6795, 0.034 apart" font ",9" offset 0,-0.6
set tmargin at screen 0.93
set bmargin at screen 0.57
set xrange [-0.55:-0.15]
set yrange [2.16:2.56]
plot close(1, 7, 1.5, 1.9, 1.6795) using 1:2 with lines linewidth 2 linecolor rgb colour(1), \
     close(1, 7, 1.5, 1.9, 1.6795) using 3:4 with lines linewidth 2 linecolor rgb colour(7), \
     close(1, 7, 1.5, 1.9, 1.6795) every 20 using 1:2 with points pointtype 7 pointsize 0.6 linecolor rgb colour(1), \
     close(1, 7, 1.5, 1.9, 1.6795) every 20 using 3:4 with points pointtype 7 pointsize 0.6 linecolor rgb colour(7), \
     close(1, 7, 1.5, 1.9, 1.6795) using ($5 == 1 ? $1 : 1/0):2:($3 - $1):($4 - $2) with vectors nohead linewidth 2 linecolor rgb orange
set title "B: 3 and 5, t = 1.6270, 0.056 apart" font ",9" offset 0,-0.6
set tmargin at screen 0.45
set bmargin at screen 0.08
set xrange [0.53:1.03]
set yrange [2.1:2.6]
plot close(3, 5, 1.4, 1.9, 1.627) using 1:2 with lines linewidth 2 linecolor rgb colour(3), \
     close(3, 5, 1.4, 1.9, 1.627) using 3:4 with lines linewidth 2 linecolor rgb colour(5), \
     close(3, 5, 1.4, 1.9, 1.627) every 20 using 1:2 with points pointtype 7 pointsize 0.6 linecolor rgb colour(3), \
     close(3, 5, 1.4, 1.9, 1.627) every 20 using 3:4 with points pointtype 7 pointsize 0.6 linecolor rgb colour(5), \
     close(3, 5, 1.4, 1.9, 1.627) using ($5 == 1 ? $1 : 1/0):2:($3 - $1):($4 - $2) with vectors nohead linewidth 2 linecolor rgb orange
unset multiplot
