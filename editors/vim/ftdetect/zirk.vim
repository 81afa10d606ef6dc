" SPDX-License-Identifier: MIT
" Systems of equations end in .zirk; the resource file has a syntax of its own.
autocmd BufNewFile,BufRead *.zirk setfiletype zirk
autocmd BufNewFile,BufRead .zirkrc setfiletype zirkrc
