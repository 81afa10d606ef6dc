# SPDX-License-Identifier: MIT
# Says where everything goes. All places are relative to the prefix; documents and examples are taken by directory.
install(TARGETS zirk RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

install(FILES man/zirk.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES man/zirkrc.5 DESTINATION ${CMAKE_INSTALL_MANDIR}/man5)

# Where the three shells look by themselves; with a prefix other than /usr only bash and fish do, under ~/.local.
install(FILES completions/zirk.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME zirk)
install(FILES completions/_zirk DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
install(FILES completions/zirk.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

# Vim and nano read these folders by themselves; bat has to be told (see zirk.sublime-syntax).
install(DIRECTORY editors/vim/ DESTINATION ${CMAKE_INSTALL_DATADIR}/vim/vimfiles)
install(FILES editors/zirk.nanorc DESTINATION ${CMAKE_INSTALL_DATADIR}/nano)
install(FILES editors/zirk.sublime-syntax DESTINATION ${CMAKE_INSTALL_DATADIR}/zirk)

# The same neighbours as in the source tree, so that links between documents hold.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
# Scripts stay executable.
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} USE_SOURCE_PERMISSIONS)
