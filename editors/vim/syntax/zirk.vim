" SPDX-License-Identifier: MIT
" Systems of differential and algebraic equations, as zirk reads them.
if exists('b:current_syntax')
  finish
endif

" Every word is a name unless a later rule knows it. Upper and lower case differ.
syntax case match
syntax match zirkName /\<\h\w*\>/
syntax keyword zirkFunction sin cos tan tg cotan cotg asin arcsin acos arccos atan atg arctan arctg
syntax keyword zirkFunction acotan acotg arccotan arccotg sinh cosh tanh tgh cotanh cotgh asinh argsinh
syntax keyword zirkFunction acosh argcosh atanh atgh argtanh argtgh argcotanh argcotgh exp ln sqrt trunc
syntax keyword zirkConstant pi t
syntax match zirkNumber /\<\d\+\%(\.\d*\)\?\%([eE][+-]\?\d\+\)\?\|\.\d\+\%([eE][+-]\?\d\+\)\?/
syntax match zirkPrimes /'\d\+\|'\+/
syntax match zirkStart /&/
" There is no power operator.
syntax match zirkError /\^/
syntax keyword zirkTodo contained TODO FIXME XXX
syntax match zirkComment +//.*+ contains=zirkTodo,@Spell
syntax region zirkComment start=+/\*+ end=+\*/+ contains=zirkTodo,@Spell

highlight default link zirkName Identifier
highlight default link zirkFunction Function
highlight default link zirkConstant Constant
highlight default link zirkNumber Number
highlight default link zirkPrimes Operator
highlight default link zirkStart Statement
highlight default link zirkError Error
highlight default link zirkTodo Todo
highlight default link zirkComment Comment

let b:current_syntax = 'zirk'
