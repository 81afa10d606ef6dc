# zirk -a 1e-16 -t 17.06521656015796 -F 0.004 -O 0 -P x:y: examples/arenstorf.zirk
set size ratio -1
set xrange [-1.4:1.3]
set yrange [-1.35:1.35]
set xlabel "x, in distances of the Moon"
set ylabel "y"
set cblabel "time"
set rmargin 8
set label "Earth" at -0.012, -0.14 center
set label "Moon" at 1.04, -0.14 center
plot data using 2:3:1 with lines linewidth 2 palette notitle, \
     "+" using (-0.012277471):(0) every ::0::0 with points pointtype 7 pointsize 2.5 linecolor rgb "#2e6fb0" notitle, \
     "+" using (0.987722529):(0) every ::0::0 with points pointtype 7 pointsize 1.2 linecolor rgb "#606060" notitle, \
     data every ::0::0 using 2:3 with points linestyle 9 pointtype 6 pointsize 2 linewidth 2 title "start and end"
