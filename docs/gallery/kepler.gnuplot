# zirk -a 1e-16 -f 1 -s 0.0174532925199432957 -t 6.283185307179586 -O 0 -P x:y: examples/kepler.zirk
set size ratio -1
set xrange [-1.65:0.65]
set yrange [-0.95:0.95]
set xlabel "x"
set ylabel "y"
set key horizontal outside top center
set tmargin 4
plot data using 2:3 with lines linestyle 1 title "the planet", \
     data every 15 using 2:3 with points pointtype 7 pointsize 1.1 linecolor rgb blue title "each 1/24 of a year", \
     "+" using (0):(0) every ::0::0 with points pointtype 7 pointsize 3 linecolor rgb "#f0a030" title "the star", \
     data every ::0::0 using 2:3 with points linestyle 9 title "start"
