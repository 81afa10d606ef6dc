# zirk -a 1e-16 -s 0.02 -t 40 -O 0 -P phi:omega: examples/pendulum.zirk
set samples 1000
set xlabel "time / √(length/gravity)"
set ylabel "angle, rate"
set xrange [0:40]
set yrange [-3.6:3.6]
set ytics ("-π" -pi, "-2" -2, "0" 0, "2" 2, "π" pi)
set key horizontal outside top center
set tmargin 5
plot data using 1:3 with lines linestyle 1 title "phi, let go at 3 radians", \
     data using 1:2 with lines linestyle 2 title "omega", \
     3*cos(x) with lines linestyle 4 dashtype 2 title "3 cos t, were it a small swing"
