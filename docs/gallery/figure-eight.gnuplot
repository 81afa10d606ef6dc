# zirk -a 1e-16 -s 0.01 -t 6.32591398 -O 0 -P x1:x2:x3:y1:y2:y3: examples/figure-eight.zirk
set size ratio -1
set xrange [-1.3:1.3]
set yrange [-0.6:0.6]
set xlabel "x"
set ylabel "y"
set key horizontal outside top center
set tmargin 4
set label "thick: from the start (dots) to a sixth of the period" at graph 0.5, 0.06 center textcolor rgb "#606060"
third = 6.32591398/3
plot data using 2:5 with lines linestyle 4 title "the path of all three", \
     data using ($1 < third/2 ? $2 : 1/0):5 with lines linewidth 4 linecolor rgb blue title "star 1", \
     data using ($1 < third/2 ? $3 : 1/0):6 with lines linewidth 4 linecolor rgb orange title "star 2", \
     data using ($1 < third/2 ? $4 : 1/0):7 with lines linewidth 4 linecolor rgb green title "star 3", \
     data every ::0::0 using 2:5 with points pointtype 7 pointsize 2 linecolor rgb blue notitle, \
     data every ::0::0 using 3:6 with points pointtype 7 pointsize 2 linecolor rgb orange notitle, \
     data every ::0::0 using 4:7 with points pointtype 7 pointsize 2 linecolor rgb green notitle
