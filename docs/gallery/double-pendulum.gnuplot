# zirk -a 1e-16 -s 0.02 -t 60 -O 0 -P a:b: examples/double-pendulum.zirk
set size ratio -1
set xrange [-2.1:2.1]
set yrange [-2.1:1.5]
set xlabel "distance from the pivot / length of a rod"
set ylabel "height"
set cblabel "time"
set rmargin 8
$rods << EOD
0 0
0.9092974268 0.4161468365
1.7507684116 -0.1241554693
EOD
plot data using (sin($2) + sin($3)):(-cos($2) - cos($3)):1 with lines linewidth 1 palette title "the lower bob", \
     $rods with linespoints linewidth 3 linecolor rgb "#303030" pointtype 7 pointsize 1.5 title "start"
