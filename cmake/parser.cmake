# SPDX-License-Identifier: MIT
# Generates the scanner and the parser, and compiles them without warnings that only their generators could mend.
find_package(FLEX 2.6 REQUIRED)
find_package(BISON 3.8 REQUIRED)

set(ZIRK_GENERATED_DIR ${PROJECT_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${ZIRK_GENERATED_DIR}/lang)

flex_target(scanner lang/scanner.l ${ZIRK_GENERATED_DIR}/lang/scanner.cpp)
bison_target(grammar lang/grammar.y ${ZIRK_GENERATED_DIR}/lang/grammar.cpp
  DEFINES_FILE ${ZIRK_GENERATED_DIR}/lang/grammar.hpp)
add_flex_bison_dependency(scanner grammar)

flex_target(problem_scanner lang/problem_scanner.l ${ZIRK_GENERATED_DIR}/lang/problem_scanner.cpp)
bison_target(problem_grammar lang/problem_grammar.y ${ZIRK_GENERATED_DIR}/lang/problem_grammar.cpp
  DEFINES_FILE ${ZIRK_GENERATED_DIR}/lang/problem_grammar.hpp)
add_flex_bison_dependency(problem_scanner problem_grammar)

set(zirk_generated_outputs ${FLEX_scanner_OUTPUTS} ${BISON_grammar_OUTPUTS}
  ${FLEX_problem_scanner_OUTPUTS} ${BISON_problem_grammar_OUTPUTS})
add_custom_target(zirk_generated DEPENDS ${zirk_generated_outputs})

# add_zirk_parser(NAME): objects of the scanners and parsers of both languages.
function(add_zirk_parser name)
  add_library(${name} OBJECT ${zirk_generated_outputs})
  # Two targets take the same files: one rule makes them.
  add_dependencies(${name} zirk_generated)
  target_link_libraries(${name} PRIVATE zirk_options)
  target_include_directories(${name} PRIVATE ${ZIRK_GENERATED_DIR})
  target_compile_options(${name} PRIVATE -w)
  set_target_properties(${name} PROPERTIES CXX_CLANG_TIDY "")
endfunction()
