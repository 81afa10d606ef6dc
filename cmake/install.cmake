# SPDX-License-Identifier: MIT
# Says where everything goes. All places are relative to the prefix; documents and examples are taken by directory.
#
# Components, each a package of its own where packages are made: command, shared (the library for programs that run), and
# development (what it takes to compile such programs).
include(CMakePackageConfigHelpers)

install(TARGETS zirk zirk-solve RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT command)

install(TARGETS zirk_static EXPORT zirk-static
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(ZIRK_SHARED)
  install(TARGETS zirk_shared EXPORT zirk-shared
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT shared NAMELINK_COMPONENT development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endif()
install(FILES ${ZIRK_PUBLIC_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zirk COMPONENT development)

# find_package(zirk) and pkg-config. Both find the rest from where they are themselves, so that a whole prefix may move.
set(ZIRK_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/zirk)
foreach(kind static shared)
  if(kind STREQUAL "static" OR ZIRK_SHARED)
    install(EXPORT zirk-${kind} NAMESPACE zirk:: FILE zirk-${kind}.cmake DESTINATION ${ZIRK_CMAKE_DIR}
      COMPONENT development)
  endif()
endforeach()
configure_package_config_file(cmake/zirk-config.cmake.in ${PROJECT_BINARY_DIR}/zirk-config.cmake
  INSTALL_DESTINATION ${ZIRK_CMAKE_DIR} NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zirk-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zirk-config.cmake ${PROJECT_BINARY_DIR}/zirk-config-version.cmake
  DESTINATION ${ZIRK_CMAKE_DIR} COMPONENT development)

set(ZIRK_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH ZIRK_PREFIX_FROM_PKGCONFIG /prefix/${ZIRK_PKGCONFIG_DIR} /prefix)
string(REGEX REPLACE "/$" "" ZIRK_PREFIX_FROM_PKGCONFIG ${ZIRK_PREFIX_FROM_PKGCONFIG})
configure_file(cmake/zirk.pc.in ${PROJECT_BINARY_DIR}/zirk.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zirk.pc DESTINATION ${ZIRK_PKGCONFIG_DIR} COMPONENT development)

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME command)
install(FILES man/zirk.1 man/zirk-solve.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES man/zirkrc.5 DESTINATION ${CMAKE_INSTALL_MANDIR}/man5)

# Where the three shells look by themselves; with a prefix other than /usr only bash and fish do, under ~/.local.
foreach(command zirk zirk-solve)
  install(FILES completions/${command}.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME ${command})
  install(FILES completions/_${command} DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
  install(FILES completions/${command}.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endforeach()

# Vim and nano read these folders by themselves; bat has to be told (see zirk.sublime-syntax).
install(DIRECTORY editors/vim/ DESTINATION ${CMAKE_INSTALL_DATADIR}/vim/vimfiles)
install(FILES editors/zirk.nanorc DESTINATION ${CMAKE_INSTALL_DATADIR}/nano)
install(FILES editors/zirk.sublime-syntax DESTINATION ${CMAKE_INSTALL_DATADIR}/zirk)

# The same neighbours as in the source tree, so that links between documents hold.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
# Scripts stay executable.
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} USE_SOURCE_PERMISSIONS)
