# zirk -s 0.05 -t 50 -O 0 examples/hodgkin-huxley.zirk
set multiplot layout 2,1
set lmargin 10
set bmargin 3.5
set xrange [0:50]
set xlabel "time / ms" offset 0,0.5
set ylabel "v / mV"
set yrange [-20:120]
set ytics 40
unset key
plot data using 1:5 with lines linestyle 1
set ylabel "open share"
set yrange [0:1]
set ytics 0.25
set key horizontal outside top center
set tmargin 2
plot data using 1:3 with lines linewidth 2 linecolor rgb red title "m, sodium", \
     data using 1:2 with lines linestyle 3 title "h, sodium", \
     data using 1:4 with lines linestyle 2 title "n, potassium"
unset multiplot
