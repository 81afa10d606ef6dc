# zirk -S 5 -f 1 -s 0.5 -t 1000 -O 0 examples/chemostat.zirk
set xlabel "time"
set ylabel "concentration"
set xrange [0:50]
set yrange [0:12]
set arrow 1 from 41.5, 0 to 41.5, 12 nohead linecolor rgb grey linewidth 1.5 dashtype 2
set label 1 "-S ends\nthe run" at 42.2, 6 textcolor rgb "#606060"
set key at graph 0.75, 0.5
plot data using 1:4 with lines linestyle 1 title "x, bacteria", \
     data using 1:2 with lines linestyle 2 title "s, food", \
     data using 1:3 with lines linestyle 4 dashtype 2 title "total"
