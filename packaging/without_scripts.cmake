# SPDX-License-Identifier: MIT
# Takes out of the package of the shared library the scripts that CPack puts there to call ldconfig: Debian wants its trigger
# instead, which the package has. CPack runs it when the packages are made.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  if(NOT package MATCHES "/${CPACK_ZIRK_LIBRARY_PACKAGE}_[^/]*$")
    continue()
  endif()
  set(tree ${package}.tree)
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${tree} COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)
  execute_process(COMMAND dpkg-deb --root-owner-group --build ${tree} ${package} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${tree})
endforeach()
