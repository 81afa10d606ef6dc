# zirk -s 0.02 -t 20 -O 0 examples/lotka-volterra.zirk
set xlabel "time"
set ylabel "number / number at equilibrium"
set xrange [0:20]
set yrange [0:2.25]
set key horizontal outside top center
plot data using 1:3 with lines linestyle 1 title "prey", \
     data using 1:2 with lines linestyle 2 title "predators"
