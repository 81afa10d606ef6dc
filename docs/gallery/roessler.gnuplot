# zirk -a 1e-16 -s 0.02 -t 600 -O 0 examples/roessler.zirk
set xlabel "x" offset 0,-1
set ylabel "y" offset 1,-1
set zlabel "z" offset 2,0
set border 31 linewidth 1 linecolor rgb "#808080"
set view 62, 30, 1.08, 1.15
set xyplane 0
set xrange [-10:12.5]
set yrange [-12:10]
set zrange [0:25]
set key at screen 0.95, 0.93
splot data using 2:3:4 with lines linewidth 0.6 linecolor rgb "#7fa8d0" title "t to 600", \
      data using ($1 < 5.9 ? $2 : 1/0):3:4 with lines linewidth 3 linecolor rgb red title "the cycle of the start", \
      data every ::0::0 using 2:3:4 with points linestyle 9 title "start"
