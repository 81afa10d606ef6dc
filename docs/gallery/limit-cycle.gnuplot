# zirk -r lynxes:1:0 -f 1 -s 0.01 -a 1e-4 -t 100 -O 0 examples/limit-cycle.zirk
set xlabel "hares"
set ylabel "lynxes"
set xrange [0:4]
set yrange [0:3]
set arrow 1 from 1, 0 to 1, 3 nohead linecolor rgb grey linewidth 1.5 dashtype 2
plot data using 2:3 with lines linestyle 1 title "one period, until -r ends the run", \
     data every ::0::0 using 2:3 with points pointtype 7 pointsize 1.5 linecolor rgb red title "start and end", \
     (1 - x/4)*(1 + x) with lines linestyle 4 dashtype 2 title "hares, or lynxes, at rest"
