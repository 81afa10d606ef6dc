# zirk -a 1e-16 -s 0.005 -t 50 -O 0 -P x:z: examples/lorenz.zirk
set xlabel "x, strength of the rolls"
set ylabel "z, distortion of the temperature profile"
set cblabel "time"
set rmargin 8
set xrange [-20:20]
set yrange [0:50]
unset key
set label "start" at -1, 1.6 right textcolor rgb red
plot data using 2:3:1 with lines linewidth 1 palette notitle, \
     data every ::0::0 using 2:3 with points linestyle 9 notitle
