# zirk -s 0.2 -t 20 -O 0 examples/sir.zirk
set xlabel "days"
set ylabel "boys"
set xrange [0:20]
set yrange [0:800]
set key at graph 0.98, 0.72
# Boys in bed from 22 January on: Brit. Med. J. (4 March 1978) 587.
$seen << EOD
1 3
2 8
3 26
4 76
5 225
6 298
7 258
8 233
9 189
10 128
11 68
12 29
13 14
14 4
EOD
plot data using 1:4 with lines linestyle 1 title "susceptible", \
     data using 1:2 with lines linecolor rgb red linewidth 2 title "ill", \
     data using 1:3 with lines linestyle 3 title "recovered", \
     $seen with points pointtype 7 pointsize 1.1 linecolor rgb red title "in bed in 1978"
