# SPDX-License-Identifier: MIT
# Describes the Debian package: cmake --build BUILD --target package, or scripts/package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zirk)
set(CPACK_PACKAGE_VENDOR "The zirk authors")
set(CPACK_PACKAGE_CONTACT "The zirk authors <zirk@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "solver for initial-value problems by Taylor series")
set(CPACK_PACKAGE_DESCRIPTION
"zirk reads ordinary differential equations as plain text and prints their
solution as a table, or as a script that draws it with gnuplot.
.
It uses Taylor series of whatever order a point asks for, with steps of
variable size, in the 80-bit extended precision of x86 processors.")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION math)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Only scripts of -g start it.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS gnuplot)

# What Debian wants in another form than other systems: see the script.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/finish.cmake)
set(CPACK_ZIRK_PACKAGING_DIR ${PROJECT_SOURCE_DIR}/packaging)

# The target package_source packs the whole folder; scripts/tarball packs the files under version control.
set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_IGNORE_FILES "/\\.git/;/build[^/]*/;/BUILD/;~$;\\.swp$")
include(CPack)
