# SPDX-License-Identifier: MIT
# Describes the Debian packages: cmake --build BUILD --target package, or scripts/package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zirk)
set(CPACK_PACKAGE_VENDOR "The zirk authors")
set(CPACK_PACKAGE_CONTACT "The zirk authors <zirk@example.org>")
# Every package has a summary of its own, to which CPack would add this one.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(what "solver for initial-value problems by Taylor series")
set(about "
It uses Taylor series of whatever order a point asks for, with steps of
variable size, in the 80-bit extended precision of x86 processors.")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SOURCE zirk)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

# One package per component: the commands, which need no other; the library; and what compiling against it takes.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL command development)
if(ZIRK_SHARED)
  list(APPEND CPACK_COMPONENTS_ALL shared)
endif()
if(ZIRK_PYTHON AND ZIRK_SHARED)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
set(library_package libzirk${PROJECT_VERSION_MAJOR})
set(package_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME zirk)
set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION math)
# Only scripts of zirk -g and zirk-solve --plot start it.
set(CPACK_DEBIAN_COMMAND_PACKAGE_SUGGESTS gnuplot)
set(CPACK_DEBIAN_COMMAND_DESCRIPTION
"${what}
Two commands read ordinary differential equations as plain text: zirk-solve
takes them as mathematics and writes rows at any time, CSV, JSON, or pictures;
zirk prints the points that it steps to, or a script for gnuplot.
.${about}")

set(CPACK_DEBIAN_SHARED_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_SHARED_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_SHARED_DESCRIPTION
"${what} - shared library
This library reads ordinary differential equations as plain text and solves
them point by point, to the same bits as the command zirk.
.${about}")
# Written by packaging/finish.cmake.
set(CPACK_ZIRK_CONTROL_DIR ${PROJECT_BINARY_DIR}/packaging)
set(CPACK_DEBIAN_SHARED_PACKAGE_CONTROL_EXTRA
  ${CPACK_ZIRK_CONTROL_DIR}/shlibs ${CPACK_ZIRK_CONTROL_DIR}/symbols ${CPACK_ZIRK_CONTROL_DIR}/triggers)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzirk-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "zirk, pkg-config")
if(ZIRK_SHARED)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library_package} (= ${package_version})")
endif()
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"${what} - development files
Headers, static library, and what CMake and pkg-config need to compile C++
programs that solve ordinary differential equations by the library of zirk.
.${about}")

set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-zirk)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
if(ZIRK_PYTHON)
  # The module is for one version of Python, and the library comes from the same build.
  math(EXPR next_minor "${Python_VERSION_MINOR} + 1")
  string(CONCAT CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "${library_package} (= ${package_version}), "
    "python3 (>= 3.${Python_VERSION_MINOR}), python3 (<< 3.${next_minor}), python3-numpy")
  # Whose package that library will be is not known to dpkg yet.
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
endif()
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-matplotlib, python3-pandas, python3-distributed")
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
  ${PROJECT_SOURCE_DIR}/packaging/python/postinst ${PROJECT_SOURCE_DIR}/packaging/python/prerm)
set(CPACK_DEBIAN_PYTHON_DESCRIPTION
"${what} - Python package
Solves ordinary differential equations that are written as text, and returns
numpy arrays, the solution at any time, and zeros of expressions.
.${about}")

# What Debian wants in another form than other systems: see the scripts.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/finish.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/without_scripts.cmake)
set(CPACK_ZIRK_PACKAGING_DIR ${PROJECT_SOURCE_DIR}/packaging)
set(CPACK_ZIRK_SOURCE_DIR ${PROJECT_SOURCE_DIR})
set(CPACK_ZIRK_LIBRARY_PACKAGE ${library_package})

# The target package_source packs the whole folder; scripts/tarball packs the files under version control.
set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_IGNORE_FILES "/\\.git/;/build[^/]*/;/BUILD/;~$;\\.swp$")
include(CPack)
