# SPDX-License-Identifier: GPL-3.0-or-later
# What `cmake --install` puts where (GNU layout under the prefix): the game, its resource tree,
# the desktop entry, the AppStream metainfo, the icons, the man page and the package's documents.

set(KMVT_PACKAGING_DIR ${PROJECT_SOURCE_DIR}/packaging)
set(KMVT_ICON_SIZES 32 48 64 128 256)
# The game has no home on the web yet: these two stand in until it does, and must then change
# together (the AppStream id is the home's domain reversed).
set(KMVT_HOMEPAGE "https://kormaveth2d.example.org" CACHE STRING
    "The game's home page, named in the AppStream metainfo with its screenshots")
set(KMVT_APPSTREAM_ID "org.example.kormaveth2d" CACHE STRING "The game's AppStream component id")

install(TARGETS kormaveth2d RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# The legend of the tile sheet is the level tool's, not the game's.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources DESTINATION ${KMVT_INSTALL_DATADIR}
        PATTERN "tiles.txt" EXCLUDE)

install(FILES ${KMVT_PACKAGING_DIR}/kormaveth2d.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)

configure_file(${KMVT_PACKAGING_DIR}/kormaveth2d.metainfo.xml.in
               ${PROJECT_BINARY_DIR}/packaging/kormaveth2d.metainfo.xml @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/packaging/kormaveth2d.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

foreach(size ${KMVT_ICON_SIZES})
  install(FILES ${KMVT_PACKAGING_DIR}/icons/${size}x${size}/kormaveth2d.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()

# The manual page names the data folder of this build. Manual pages and the changelog are
# installed compressed, as Debian wants them; -n keeps the archives the same from build to build.
configure_file(${KMVT_PACKAGING_DIR}/kormaveth2d.6.in ${PROJECT_BINARY_DIR}/packaging/kormaveth2d.6 @ONLY)
configure_file(${KMVT_PACKAGING_DIR}/changelog ${PROJECT_BINARY_DIR}/packaging/changelog COPYONLY)
find_program(KMVT_GZIP gzip REQUIRED)
foreach(document kormaveth2d.6 changelog)
  add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/packaging/${document}.gz
                     COMMAND sh -c "\"$0\" -n -9 -c \"$1\" > \"$2\"" ${KMVT_GZIP} ${PROJECT_BINARY_DIR}/packaging/${document}
                             ${PROJECT_BINARY_DIR}/packaging/${document}.gz
                     DEPENDS ${PROJECT_BINARY_DIR}/packaging/${document} VERBATIM)
endforeach()
add_custom_target(kmvt_documents ALL DEPENDS ${PROJECT_BINARY_DIR}/packaging/kormaveth2d.6.gz
                                             ${PROJECT_BINARY_DIR}/packaging/changelog.gz)
install(FILES ${PROJECT_BINARY_DIR}/packaging/kormaveth2d.6.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man6)
install(FILES ${PROJECT_BINARY_DIR}/packaging/changelog.gz ${KMVT_PACKAGING_DIR}/copyright
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/kormaveth2d)
