# SPDX-License-Identifier: MIT
# Stops the configuration where long double cannot carry the results.
include(CheckCXXSourceCompiles)

# Asked anew each time, so that a changed compiler or flag is noticed.
unset(ZIRK_EXTENDED_REAL CACHE)
check_cxx_source_compiles("
  #include <cfloat>
  static_assert(LDBL_MANT_DIG == 64, \"long double has no 64-bit mantissa\");
  int main() { return 0; }" ZIRK_EXTENDED_REAL)
if(NOT ZIRK_EXTENDED_REAL)
  message(FATAL_ERROR
    "zirk computes in the 80-bit extended format of x86 processors, but on this platform, with "
    "${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION} and these flags, long double does not have a mantissa "
    "of 64 bits. Build on x86 or x86-64 with GCC or Clang, and without -mlong-double-64 or -mlong-double-128.")
endif()

unset(ZIRK_EXACT_ARITHMETIC CACHE)
check_cxx_source_compiles("
  #ifdef __FAST_MATH__
  #error fast-math is on
  #endif
  int main() { return 0; }" ZIRK_EXACT_ARITHMETIC)
if(NOT ZIRK_EXACT_ARITHMETIC)
  message(FATAL_ERROR
    "The compiler flags turn fast-math on (-ffast-math or -Ofast). It reorders sums and drops infinities, which "
    "changes the results of zirk. Remove it from CMAKE_CXX_FLAGS or CXXFLAGS.")
endif()
