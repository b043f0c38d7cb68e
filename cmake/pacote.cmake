# The Debian package of the game: `cpack -G DEB` in the build folder (after a build) makes
# velmora-ace_<version>_<arch>.deb with the executables in /usr/bin, their files in
# /usr/share/velmora-ace, the menu entry and the icons. Only what is installed as the
# component "jogo" goes in; the libraries it needs are found by dpkg-shlibdeps, and the
# MIDI music needs the General MIDI sound font.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velmora-ace)
set(CPACK_PACKAGE_VENDOR Norvane)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Jogo de damas no tabuleiro de 8 por 8")
set(CPACK_PACKAGE_DESCRIPTION
    "Velmora Ace: damas contra o computador em cinco niveis, um torneio de oito partidas,\n"
    "duas pessoas na mesma tela, ou on-line, com quatro conjuntos de regras.")
set(CPACK_PACKAGE_CONTACT "Norvane <velmora-ace@norvane.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL jogo)
set(CPACK_DEB_COMPONENT_INSTALL OFF)
# one package, made of the component "jogo" alone (the service installs as "servico")
set(CPACK_INSTALL_CMAKE_PROJECTS "${CMAKE_BINARY_DIR};${PROJECT_NAME};jogo;/")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# beyond the shared libraries: the sound font that the music is played with
set(CPACK_DEBIAN_PACKAGE_DEPENDS "timgm6mb-soundfont")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils")
include(CPack)
