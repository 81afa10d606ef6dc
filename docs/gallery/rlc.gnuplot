# zirk -s 0.00001 -a 1e-16 -t 0.005 -O 0 examples/rlc.zirk
set xlabel "time / ms"
set ylabel "voltage of the capacitor / V"
set y2label "current / mA"
set xrange [0:5]
set yrange [-1:2]
set y2range [-10:20]
set y2tics -10, 5
set border 11
set rmargin 9
plot data using ($1*1000):3 with lines linestyle 1 title "voltage", \
     data using ($1*1000):($2*1000) axes x1y2 with lines linestyle 2 title "current"
