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

add_library(zirk_parser OBJECT ${FLEX_scanner_OUTPUTS} ${BISON_grammar_OUTPUTS})
target_link_libraries(zirk_parser PRIVATE zirk_options)
target_include_directories(zirk_parser PRIVATE ${ZIRK_GENERATED_DIR})
target_compile_options(zirk_parser PRIVATE -w)
set_target_properties(zirk_parser PROPERTIES CXX_CLANG_TIDY "")
