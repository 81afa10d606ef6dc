/* SPDX-License-Identifier: MIT */
/* The language: equations and initial-value statements, each ended by ";". */
%define api.pure full
%define api.value.type {struct zirk::Semantic}
%param {void* scanner}
%parse-param {zirk::Compiler& compiler}
%expect 0

%code requires {
#include "expr/expr.hpp"
#include "lang/compiler.hpp"
}

%code {
#include <cstring>
#include "expr/elementary.hpp"
#include "lang/scanner.hpp"

using namespace zirk;

// The parser's own texts under the names that its users know.
static const char* message(const char* text) {
    if (std::strcmp(text, "syntax error") == 0) return "parse error";
    if (std::strcmp(text, "memory exhausted") == 0) return "parser stack overflow";
    return text;
}
#define YY_(text) message(text)
#define YYINITDEPTH 200
#define YYMAXDEPTH 200

static void yyerror(void*, Compiler& compiler, const char* text) {
    compiler.error(text);
}

static Expr::Ref binary(ExprType type, const Semantic& left, const Semantic& right) {
    return Expr::Ref(type, left.expression, right.expression);
}
}

%token IDENT 257
%token INTEGER 258
%token REAL 259
%token PRIMES 260
%token PI 261
%token T 262
%token SIN 263 COS 264 TAN 265 COTAN 266 ASIN 267 ACOS 268 ATAN 269 ACOTAN 270
%token SINH 271 COSH 272 TANH 273 COTANH 274 ASINH 275 ACOSH 276 ATANH 277 ACOTANH 278
%token EXP 279 LN 280 SQRT 281 TRUNC 282

%left '+' '-'
%left '*' '/'
%left '^'
%precedence UMINUS 283

%%

system:
  statement_list
;

statement_list:
  statement_list equation
| statement_list initial_statement
| equation
| initial_statement
;

initial_statement:
  IDENT primes '(' number ')' '=' constant ';'  { compiler.initialValue($1.name, $2.integer, $7.number); }
;

number:
  REAL     { compiler.checkStartTime($1.number == 0); }
| INTEGER  { compiler.checkStartTime($1.integer == 0); }
;

equation:
  IDENT primes '=' expression initial_part ';'
    { compiler.equation($1.name, $2.integer, $4.expression, $5.number); }
;

primes:
  PRIMES
| %empty   { $$.integer = 0; }
;

initial_part:
  '&' constant  { $$.number = $2.number; }
| %empty        { $$.number = 0; }
;

expression:
  expression '+' expression      { $$.expression = binary(ExprType::Plus, $1, $3); }
| expression '-' expression      { $$.expression = binary(ExprType::Minus, $1, $3); }
| expression '*' expression      { $$.expression = binary(ExprType::Multiply, $1, $3); }
| expression '/' expression      { $$.expression = binary(ExprType::Divide, $1, $3); }
| '-' expression %prec UMINUS    { $$.expression = Expr::Ref(ExprType::UnMinus, $2.expression); }
| '+' expression %prec UMINUS    { $$.expression = $2.expression; }
| '(' expression ')'             { $$.expression = $2.expression; }
| IDENT primes                   { $$.expression = compiler.reference($1.name, $2.integer); }
| REAL                           { $$.expression = new Number($1.number); }
| INTEGER                        { $$.expression = new Number($1.integer); }
| PI                             { $$.expression = new Number(pi); }
| T                              { $$.expression = new Time; }
| function '(' expression ')'    { $$.expression = Expr::Ref(static_cast<ExprType>($1.integer), $3.expression); }
| step_function
;

// The scanner gives each of them its kind.
function:
  SIN | COS | TAN | COTAN | SQRT | ASIN | ACOS | ATAN | ACOTAN
| SINH | COSH | TANH | COTANH | ASINH | ACOSH | ATANH | ACOTANH
| EXP | LN | TRUNC
;

constant:
  '+' constant               { $$.number = $2.number; }
| '-' constant               { $$.number = -$2.number; }
| constant '+' constant      { $$.number = $1.number + $3.number; }
| constant '-' constant      { $$.number = $1.number - $3.number; }
| constant '*' constant      { $$.number = $1.number * $3.number; }
| constant '/' constant      { $$.number = $1.number / $3.number; }
| '(' constant ')'           { $$.number = $2.number; }
| PI                         { $$.number = pi; }
| INTEGER                    { $$.number = static_cast<real>($1.integer); }
| REAL
| function '(' constant ')'  { $$.number = evaluate(static_cast<ExprType>($1.integer), $3.number); }
;

step_function:
  '[' IDENT '<' step_cases ']'  { compiler.stepFunction("stepf"); }
| '[' T '<' step_cases ']'      { compiler.stepFunction("stepfT"); }
;

step_cases:
  step_points ':' constant ';' step_cases  { compiler.trace("stepfrep1"); }
| step_points ':' constant                 { compiler.trace("stepfrep2"); }
;

step_points:
  constant ',' step_points  { compiler.trace("steplimit1"); }
| constant                  { compiler.trace("steplimit2"); }
;
