# zirk -s 0.01 -t 40 -O 0 examples/van-der-pol.zirk
set multiplot layout 2,1
unset key
set bmargin 3.5
set xlabel "time" offset 0,0.5
set ylabel "x"
set yrange [-2.6:2.6]
set ytics 1
plot data using 1:3 with lines linestyle 1
set xlabel "x" offset 0,0.5
set ylabel "v, the rate of x"
set xrange [-2.6:2.6]
set yrange [-9:9]
set ytics 4
set key top right
plot data using 3:2 with lines linestyle 2 notitle, \
     data every ::0::0 using 3:2 with points linestyle 9 title "start"
unset multiplot
