" SPDX-License-Identifier: MIT
" Settings of the user for zirk.
if exists('b:current_syntax')
  finish
endif

" Upper and lower case are the same here.
syntax case ignore
syntax keyword zirkrcKeyword TMAX MAXORDER PRINTORD ALL3DVALUES ACCURACY DUMPTREE DUMPDY FIXEDSTEP
syntax keyword zirkrcKeyword GNUPLOT_FILENAME GNUPLOT_OUTPUT SIMPLIFYSMALLNUMBERS PRINTONLYTMAX PRINTNUMCHARS
syntax keyword zirkrcKeyword INITIALINTSTEP STOPSTEADYSTATE PRINTNUMWIDTH ZEROTAYLORTERMS PRINTTEMPQ
syntax keyword zirkrcKeyword PRINTEVERYRESULT STIFFSYSTEMDETECTEXPDIFF USEALLTERMS STIFFDETECTEVERYSTEP
" What follows the first other character of a value is not read: a decimal point, for example.
syntax match zirkrcIgnored /[:=]\s*[[:alnum:]+-]*\zs[^[:alnum:]+#%; \t-][^#%;]*/
syntax match zirkrcComment /[#%;].*/ contains=@Spell

highlight default link zirkrcKeyword Keyword
highlight default link zirkrcIgnored Error
highlight default link zirkrcComment Comment

let b:current_syntax = 'zirkrc'
