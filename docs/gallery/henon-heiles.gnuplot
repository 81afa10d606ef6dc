# zirk -a 1e-16 -s 0.05 -t 300 -O 0 -P x:y: examples/henon-heiles.zirk
set size ratio -1
set xrange [-0.75:0.75]
set yrange [-0.55:0.85]
set xlabel "x"
set ylabel "y"
set cblabel "time"
set rmargin 8
set key horizontal outside top center
set tmargin 3.5
# Where the whole energy 1/8 is potential: no orbit gets beyond.
set contour base
set cntrparam levels discrete 0.125
set isosamples 250
unset surface
set table $edge
splot (x*x + y*y)/2 + x*x*y - y*y*y/3
unset table
plot data using 2:3:1 with lines linewidth 1 palette notitle, \
     $edge using 1:2 with lines linewidth 2 linecolor rgb "#303030" title "all energy potential", \
     data every ::0::0 using 2:3 with points linestyle 9 title "start"
