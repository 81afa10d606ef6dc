/* SPDX-License-Identifier: MIT */
/* The language as mathematics: equations, definitions and start values, each ended by ";"; or one formula, or one name. */
%define api.pure full
%define api.prefix {problem_}
%define api.value.type union
%define api.location.type {struct zirk::Place}
%define parse.error custom
%locations
%param {void* scanner}
%parse-param {zirk::ProblemReader& reader}
%expect 0

%code requires {
#include "lang/problem_reader.hpp"
}

%code {
#include "lang/problem_scanner.hpp"

using namespace zirk;

// A rule is where its first word is.
#define YYLLOC_DEFAULT(current, rhs, count) \
    ((current) = (count) != 0 ? YYRHSLOC(rhs, 1) : Place{YYRHSLOC(rhs, 0).offset + YYRHSLOC(rhs, 0).length, 0})

// Formulas are as deep as memory allows. The reader owns the stacks, so that errors may be thrown through the parser.
template <class State>
static void growStacks(ProblemReader& reader, State** states, PROBLEM_STYPE** values, Place** places, long* depth) {
    const auto count = static_cast<std::size_t>(*depth);
    *states = reader.largerStack(*states, count);
    *values = reader.largerStack(*values, count);
    *places = reader.largerStack(*places, count);
    *depth *= 2;
}
#define yyoverflow(message, states, statesSize, values, valuesSize, places, placesSize, depth) \
    growStacks(reader, states, values, places, depth)

static void yyerror(const Place*, void*, ProblemReader&, const char*) { throw std::bad_alloc(); }
}

%token PROBLEM_TEXT FORMULA_TEXT TARGET_TEXT STRAY
%token <std::uint32_t> NAME NUMBER PRIMES
%token PI T
%token TIMES "*" EQUALS "=" OPENING "(" CLOSING ")" START "&" STOP ";"
%token <zirk::ExprType> FUNCTION

%type <std::uint32_t> primes
%type <zirk::Target> target
%type <zirk::FormulaRange> formula

%left '+' '-'
%left "*" '/'
%precedence SIGN
%right '^'

%%

input:
  PROBLEM_TEXT statements
| FORMULA_TEXT formula     { reader.formulaAlone($2); }
| TARGET_TEXT target       { reader.targetAlone($2); }
;

statements:
  statements statement
| statement
;

statement:
  target "=" formula ";"                  { reader.equation($1, $3); }
| target "=" formula "&" formula ";"      { reader.equation($1, $3, @4, $5); }
| target "(" formula ")" "=" formula ";"  { reader.startValue($1, $3, $6); }
;

target:
  NAME primes  { $$ = reader.target($1, $2, @1, @2); }
| PI           { reader.taken(@1, "a number"); }
| T            { reader.taken(@1, "the time"); }
| FUNCTION     { reader.taken(@1, "a function"); }
;

primes:
  PRIMES
| %empty  { $$ = 0; }
;

formula:
  expression  { $$ = reader.formula(@1); }
;

expression:
  expression '+' expression    { reader.operation(Operation::Add, @2); }
| expression '-' expression    { reader.operation(Operation::Subtract, @2); }
| expression "*" expression    { reader.operation(Operation::Multiply, @2); }
| expression '/' expression    { reader.operation(Operation::Divide, @2); }
| expression '^' expression    { reader.operation(Operation::Power, @2); }
| '-' expression %prec SIGN    { reader.operation(Operation::Negate, @1); }
| '+' expression %prec SIGN
| "(" expression ")"
| NAME primes                  { reader.reference(reader.target($1, $2, @1, @2)); }
| NUMBER                       { reader.numberItem($1, @1); }
| PI                           { reader.pi(@1); }
| T                            { reader.operation(Operation::Time, @1); }
| FUNCTION "(" expression ")"  { reader.function($1, @1); }
| NAME primes "("              { reader.unknownFunction($1, @1); }
| '['                          { reader.stepConstruct(@1); }
;

%%

static int yyreport_syntax_error(const yypcontext_t* context, void*, ProblemReader& reader) {
    yysymbol_kind_t symbols[YYNTOKENS];
    const int count = yypcontext_expected_tokens(context, symbols, YYNTOKENS);
    ExpectedWords expected;
    for (int i = 0; i < count; ++i) {
        switch (symbols[i]) {
            case YYSYMBOL_NAME: expected.name = true; break;
            case YYSYMBOL_NUMBER: expected.formula = true; break;
            case YYSYMBOL_TIMES: expected.operators = true; break;
            case YYSYMBOL_EQUALS: expected.marks += '='; break;
            case YYSYMBOL_OPENING: expected.marks += '('; break;
            case YYSYMBOL_CLOSING: expected.marks += ')'; break;
            case YYSYMBOL_START: expected.marks += '&'; break;
            case YYSYMBOL_STOP: expected.marks += ';'; break;
            case YYSYMBOL_YYEOF: expected.end = true; break;
            default: break;
        }
    }
    reader.unexpected(*yypcontext_location(context), expected);
}
