# SPDX-License-Identifier: MIT
# Says how everything is compiled, which warnings our own sources meet, and how programs are linked.
include(CheckCXXSourceRuns)
include(CheckLinkerFlag)

# What every object has in common, generated parser included.
add_library(zirk_options INTERFACE)
target_compile_features(zirk_options INTERFACE cxx_std_17)
target_include_directories(zirk_options INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
target_compile_options(zirk_options INTERFACE
  -ffp-contract=off -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/= -fmacro-prefix-map=${PROJECT_BINARY_DIR}/=)

if(ZIRK_SANITIZE OR ZIRK_SANITIZE_THREADS)
  set(kinds address,undefined)
  if(ZIRK_SANITIZE_THREADS)
    set(kinds thread)
  endif()
  set(sanitizers -fsanitize=${kinds} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(zirk_options INTERFACE ${sanitizers})
  target_link_options(zirk_options INTERFACE ${sanitizers})
  # GCC takes the instrumented code of its own library for uninitialized and says so at length.
  target_compile_options(zirk_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

if(ZIRK_COVERAGE)
  target_compile_options(zirk_options INTERFACE --coverage)
  target_link_options(zirk_options INTERFACE --coverage)
endif()

if(ZIRK_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "ZIRK_FUZZ needs Clang; configure with -DCMAKE_CXX_COMPILER=clang++ or use the preset fuzz.")
  endif()
  target_compile_options(zirk_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

add_library(zirk_warnings INTERFACE)
target_compile_options(zirk_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual
  $<$<BOOL:${ZIRK_WERROR}>:-Werror>)

# Loading and binding shared libraries takes longer than solving a small system.
add_library(zirk_static_runtime INTERFACE)
if(ZIRK_STATIC_RUNTIME AND NOT ZIRK_SANITIZE AND NOT ZIRK_SANITIZE_THREADS AND NOT ZIRK_FUZZ)
  check_linker_flag(CXX "-static-libstdc++;-static-libgcc" ZIRK_HAS_STATIC_RUNTIME)
  if(ZIRK_HAS_STATIC_RUNTIME)
    target_link_options(zirk_static_runtime INTERFACE $<$<CONFIG:Release>:-static-libstdc++;-static-libgcc>)
  endif()
endif()

# The program itself: without any shared library, still at addresses chosen at random. One or the other: linked with both
# kinds of flags, a program does not start.
add_library(zirk_static_program INTERFACE)
set(staticProgram OFF)
if(ZIRK_STATIC_PROGRAM AND NOT ZIRK_SANITIZE AND NOT ZIRK_SANITIZE_THREADS AND NOT ZIRK_FUZZ AND NOT CMAKE_CROSSCOMPILING)
  set(CMAKE_REQUIRED_LINK_OPTIONS -static-pie)
  check_cxx_source_runs("
    #include <cmath>
    #include <iostream>
    int main(int argc, char**) {
      std::cout << std::sin(static_cast<long double>(argc));
      return 0;
    }" ZIRK_HAS_STATIC_PIE)
  unset(CMAKE_REQUIRED_LINK_OPTIONS)
  set(staticProgram ${ZIRK_HAS_STATIC_PIE})
endif()
if(staticProgram)
  target_link_options(zirk_static_program INTERFACE $<$<CONFIG:Release>:-static-pie>)
else()
  target_link_libraries(zirk_static_program INTERFACE zirk_static_runtime)
endif()
