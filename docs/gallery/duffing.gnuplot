# zirk -a 1e-12 -f 1 -s 0.08181230868723419 -t 26179.9 -O 0 -P x:v: examples/duffing.zirk
# A step is 1/64 of the shaking's period, so that every 64th row is at the same phase.
set xlabel "x, deflection"
set ylabel "v, its rate"
set xrange [-1.7:1.7]
set yrange [-0.6:1.1]
unset key
plot data every 64::640 using 3:2 with points pointtype 7 pointsize 0.25 linecolor rgb blue
