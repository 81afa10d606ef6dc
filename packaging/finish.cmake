# SPDX-License-Identifier: MIT
# Turns the staged trees into what Debian expects: compressed man pages, changelogs and copyright under their names there.
# CPack runs it after the install rules and before it packs; every component has a tree of its own.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
set(package_of_command zirk)
set(package_of_shared ${CPACK_ZIRK_LIBRARY_PACKAGE})
set(package_of_development libzirk-dev)
set(package_of_python python3-zirk)

function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# The commands: links in the README lead to the file that holds the licence here.
function(finish_command root doc)
  file(REMOVE ${doc}/LICENSE)
  file(READ ${doc}/README.md readme)
  string(REPLACE "](LICENSE)" "](copyright)" readme "${readme}")
  file(WRITE ${doc}/README.md "${readme}")
  run(strip --remove-section=.comment --remove-section=.note ${root}/usr/bin/zirk ${root}/usr/bin/zirk-solve)
  file(GLOB pages ${root}/usr/share/man/man*/*.[1-9])
  run(gzip -9n ${pages})
endfunction()

# The library, and what tells other packages which version of it they need; the symbols must be those of the list.
function(finish_shared root doc)
  file(GLOB_RECURSE library ${root}/usr/*/libzirk.so.*.*.*)
  run(strip --strip-unneeded --remove-section=.comment --remove-section=.note ${library})
  set(control ${CPACK_ZIRK_CONTROL_DIR})
  string(REGEX REPLACE "^libzirk" "" soversion ${package_of_shared})
  file(WRITE ${control}/shlibs "libzirk ${soversion} ${package_of_shared} (>= ${CPACK_PACKAGE_VERSION})\n")
  file(WRITE ${control}/triggers "activate-noawait ldconfig\n")
  run(dpkg-gensymbols -c4 -p${package_of_shared} -v${CPACK_PACKAGE_VERSION} -P${root} -e${library}
    -I${CPACK_ZIRK_PACKAGING_DIR}/${package_of_shared}.symbols -O${control}/symbols)
endfunction()

# What compiles against it: pkg-config leaves /usr/include out of the flags if it is spelt like that.
function(finish_development root doc)
  file(GLOB_RECURSE archive ${root}/usr/*/libzirk.a)
  run(strip --strip-debug --enable-deterministic-archives --remove-section=.comment ${archive})
  file(GLOB_RECURSE description ${root}/usr/*/zirk.pc)
  run(sed -i "s,^prefix=.*,prefix=/usr," ${description})
  file(COPY ${CPACK_ZIRK_SOURCE_DIR}/examples/library/ DESTINATION ${doc}/examples)
endfunction()

# The Python package: its page, and the module without what only its build needed.
function(finish_python root doc)
  file(GLOB module ${root}/usr/lib/python3/dist-packages/zirk/*.so)
  run(strip --strip-unneeded --remove-section=.comment --remove-section=.note ${module})
  file(COPY ${CPACK_ZIRK_SOURCE_DIR}/docs/python.md DESTINATION ${doc})
  # The neighbours of the page are in the package of the command.
  run(sed -i -E -f ${CPACK_ZIRK_PACKAGING_DIR}/python/links.sed ${doc}/python.md)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  set(package ${package_of_${component}})
  set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component})
  set(doc ${root}/usr/share/doc/${package})
  set(overrides ${root}/usr/share/lintian/overrides)
  file(MAKE_DIRECTORY ${doc} ${overrides})
  file(COPY_FILE ${CPACK_ZIRK_PACKAGING_DIR}/lintian-overrides/${package} ${overrides}/${package})
  file(COPY_FILE ${CPACK_ZIRK_PACKAGING_DIR}/copyright ${doc}/copyright)
  file(COPY_FILE ${CPACK_ZIRK_PACKAGING_DIR}/changelog ${doc}/changelog.Debian)
  file(COPY_FILE ${CPACK_ZIRK_SOURCE_DIR}/CHANGELOG.md ${doc}/changelog)
  # Without name and time, so that the same sources make the same bytes.
  run(gzip -9n ${doc}/changelog ${doc}/changelog.Debian)
  cmake_language(CALL finish_${component} ${root} ${doc})

  # Whatever the umask and the modes in the source tree were.
  run(find ${root} -type d -exec chmod 755 {} +)
  run(find ${root} -type f -exec chmod u=rwX,go=rX {} +)
  run(find ${root}/usr/share/doc ${root}/usr/share/lintian -type f -exec chmod 644 {} +)
  if(EXISTS ${root}/usr/share/man)
    run(find ${root}/usr/share/man -type f -exec chmod 644 {} +)
  endif()
endforeach()
