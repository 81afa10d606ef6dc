# SPDX-License-Identifier: MIT
# The library, once for programs that contain it and once to be shared between them.
file(GLOB library_sources CONFIGURE_DEPENDS text/*.cpp expr/*.cpp formula/*.cpp lang/*.cpp expand/*.cpp
  parallel/*.cpp series/*.cpp classic/*.cpp adaptive/*.cpp)
file(GLOB ZIRK_PUBLIC_HEADERS CONFIGURE_DEPENDS include/zirk/*.hpp)

# zirk_library(TARGET PARSER): what both have in common. Programs that use an installed library take its headers and
# nothing of how it was compiled.
function(zirk_library name parser)
  target_sources(${name} PRIVATE ${library_sources} $<TARGET_OBJECTS:${parser}>)
  target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:zirk_options> $<BUILD_INTERFACE:zirk_warnings>)
  target_compile_features(${name} PUBLIC cxx_std_17)
  target_include_directories(${name} INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>)
  target_include_directories(${name} SYSTEM PRIVATE ${ZIRK_GENERATED_DIR})
  set_target_properties(${name} PROPERTIES OUTPUT_NAME zirk)
endfunction()

add_zirk_parser(zirk_parser)
add_library(zirk_static STATIC)
zirk_library(zirk_static zirk_parser)
set_target_properties(zirk_static PROPERTIES EXPORT_NAME static)
add_library(zirk::static ALIAS zirk_static)

if(ZIRK_SHARED)
  # Objects of its own: code that may stand anywhere in memory is slower, and the command shall not pay for it.
  add_zirk_parser(zirk_shared_parser)
  add_library(zirk_shared SHARED)
  zirk_library(zirk_shared zirk_shared_parser)
  set_target_properties(zirk_shared_parser zirk_shared PROPERTIES
    POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  # The first number of the version promises that programs linked before go on running.
  set_target_properties(zirk_shared PROPERTIES
    EXPORT_NAME zirk VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  target_link_options(zirk_shared PRIVATE -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
  # What sanitizers need comes with the program that they watch.
  if(NOT ZIRK_SANITIZE AND NOT ZIRK_SANITIZE_THREADS)
    target_link_options(zirk_shared PRIVATE -Wl,-z,defs)
  endif()
  add_library(zirk::zirk ALIAS zirk_shared)
endif()
