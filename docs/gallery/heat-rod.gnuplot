# zirk -f 1 -s 0.25 -a 1e-14 -t 600 -O 0 examples/heat-rod.zirk
# A row of the table holds the whole rod; awk turns the rows of six times into columns.
rod(t) = sprintf("< awk '!/^#/ && $1 == %g { print 0, 0; for (i = 2; i <= NF; ++i) print (i - 1)/201, $i; print 1, 0 }' %s", t, data)
set xlabel "place / m"
set ylabel "temperature / °C"
set xrange [0:1]
set yrange [0:110]
set cbrange [0:600]
unset colorbox
plot for [t in "0 20 60 180 360 600"] rod(t + 0) using 1:2:(sqrt(t*600)) with lines linewidth 2.5 palette \
     title sprintf("after %s s", t)
