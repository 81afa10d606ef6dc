# zirk -a 1e-16 -s 0.02 -t 30 -O 0 examples/brusselator.zirk
set xlabel "time"
set ylabel "concentration"
set xrange [0:30]
set yrange [0:5]
set key horizontal maxrows 1 outside top center
set tmargin 4
$published << EOD
20 0.4986370712683478
20 4.596780349452011
EOD
plot data using 1:2 with lines linestyle 1 title "x", \
     data using 1:3 with lines linestyle 2 title "y", \
     $published with points pointtype 6 pointsize 2 linewidth 2 linecolor rgb "#303030" title "published at t = 20"
