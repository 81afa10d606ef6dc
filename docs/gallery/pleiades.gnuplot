# zirk -a 1e-16 -t 3 -F 0.005 -O 0 -P x1:x2:x3:x4:x5:x6:x7:y1:y2:y3:y4:y5:y6:y7: examples/pleiades.zirk
set size ratio -1
set xrange [-4.3:4.3]
set yrange [-4.6:5.8]
set xlabel "x"
set ylabel "y"
set key outside right center
set rmargin 14
colours = "#1f5fa8 #d9661f #2e8b57 #c0282d #7b4fa3 #8c6d31 #404040"
plot for [i = 1:7] data using (column(1 + i)):(column(8 + i)) with lines linewidth 2 linecolor rgb word(colours, i) \
         title sprintf("star %d", i), \
     for [i = 1:7] data every ::0::0 using (column(1 + i)):(column(8 + i)) with points pointtype 7 \
         pointsize 0.7 + 0.15*i linecolor rgb word(colours, i) notitle
