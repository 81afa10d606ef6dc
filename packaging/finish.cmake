# SPDX-License-Identifier: MIT
# Turns the staged tree into what Debian expects: compressed man pages, changelogs and copyright under their names there.
# CPack runs it after the install rules and before it packs.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)
set(doc ${share}/doc/zirk)

function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(COPY_FILE ${CPACK_ZIRK_PACKAGING_DIR}/changelog ${doc}/changelog.Debian)
# Links in the README lead to the file that holds the licence here.
file(COPY_FILE ${CPACK_ZIRK_PACKAGING_DIR}/copyright ${doc}/copyright)
file(REMOVE ${doc}/LICENSE)
file(READ ${doc}/README.md readme)
string(REPLACE "](LICENSE)" "](copyright)" readme "${readme}")
file(WRITE ${doc}/README.md "${readme}")
file(COPY_FILE ${doc}/CHANGELOG.md ${doc}/changelog)
file(MAKE_DIRECTORY ${share}/lintian/overrides)
file(COPY_FILE ${CPACK_ZIRK_PACKAGING_DIR}/lintian-overrides ${share}/lintian/overrides/zirk)
run(strip --remove-section=.comment --remove-section=.note ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/bin/zirk)

# Without name and time, so that the same sources make the same bytes.
file(GLOB pages ${share}/man/man*/*.[1-9])
run(gzip -9n ${pages} ${doc}/changelog ${doc}/changelog.Debian)

# Whatever the umask and the modes in the source tree were.
run(find ${CPACK_TEMPORARY_INSTALL_DIRECTORY} -type d -exec chmod 755 {} +)
run(find ${CPACK_TEMPORARY_INSTALL_DIRECTORY} -type f -exec chmod u=rwX,go=rX {} +)
run(find ${doc} ${share}/man -type f -exec chmod 644 {} +)
