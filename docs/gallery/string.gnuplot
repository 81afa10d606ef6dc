# zirk -f 1 -s 0.0000710227272727272727 -t 0.00454545454545454545 -O 0 examples/string.zirk
# A row of the table holds the whole string; awk turns every eighth row into a column, drawn below the one before.
string(n) = sprintf("< awk '!/^#/ && NF && n++ == 8*%d { print 0, 0; for (i = 2; i <= NF; ++i) print (i - 1)/128, $i; \
print 1, 0 }' %s", n, data)
set xlabel "place on the string / its length"
set ylabel "deflection, marks every 2 mm"
set xrange [0:1.12]
set xtics 0, 0.2, 1
set yrange [-20:4]
set ytics 2
set format y ""
set cbrange [0:8]
unset colorbox
unset key
unset grid
set for [n = 0:8] label sprintf("%.2f ms", n*8*0.0710227) at 1.015, -2*n textcolor rgb "#404040"
plot for [n = 0:8] "+" using ($1 <= 1 ? $1 : 1/0):(-2*n) with lines linewidth 1 linecolor rgb "#d0d0d0", \
     for [n = 0:8] string(n) using 1:($2 - 2*n):(n) with lines linewidth 2.5 palette
