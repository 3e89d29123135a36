# What is installed where, and the Debian package: cmake --build --preset release && cpack --config
# build/release/CPackConfig.cmake
include(GNUInstallDirs)

set(TONELIFT_APPSTREAM_ID "example.tonelift.tonelift" CACHE STRING
  "The program's name among software catalogues: the website's domain backwards, then the program")
configure_file(${CMAKE_CURRENT_LIST_DIR}/tonelift.metainfo.xml.in
  ${PROJECT_BINARY_DIR}/${TONELIFT_APPSTREAM_ID}.metainfo.xml @ONLY)
configure_file(${CMAKE_CURRENT_LIST_DIR}/tonelift.1.in ${PROJECT_BINARY_DIR}/tonelift.1 @ONLY)

install(TARGETS tonelift RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_CURRENT_LIST_DIR}/tonelift.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PROJECT_BINARY_DIR}/${TONELIFT_APPSTREAM_ID}.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${PROJECT_SOURCE_DIR}/resources/icons/tonelift.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${PROJECT_BINARY_DIR}/tonelift.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tonelift)
set(CPACK_PACKAGE_CONTACT "The Tonelift developers <${TONELIFT_SUPPORT_ADDRESS}>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "rip audio CDs, convert audio files and edit their tags")
set(CPACK_PACKAGE_DESCRIPTION "Tonelift reads the tracks of an audio CD and writes them as MP3, WAV, WMA, OGG
Vorbis or VQF files, named and tagged with the disc's titles. It also converts
audio files between these formats and edits the tags of MP3 and OGG files.")
set(CPACK_PACKAGE_HOMEPAGE_URL ${TONELIFT_WEB_ADDRESS})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded at run time, so no library names them: the drawing of icons, the desktop's ways.
set(CPACK_DEBIAN_PACKAGE_DEPENDS libqt6svg6)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, xdg-utils")
include(CPack)
