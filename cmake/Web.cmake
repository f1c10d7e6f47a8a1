# SPDX-License-Identifier: GPL-3.0-or-later
# The game in a web page, built with emscripten: SDL2, SDL2_image, SDL2_mixer and SDL2_ttf come
# from KMVT_WEB_LIBS, the folder scripts/web-libs.sh builds from Debian's sources, under the names
# pkg-config gives them on the desktop; the settings file's reader is the page's own
# (input/ini/page/). The page is the game's .js, .wasm and .data beside index.html, the data holding
# the resource tree and the font.

set(KMVT_WEB_LIBS "" CACHE PATH "The web libraries' folder (include/, lib/), from scripts/web-libs.sh")
if(NOT EXISTS "${KMVT_WEB_LIBS}/lib/libSDL2.a")
  message(FATAL_ERROR "KMVT_WEB_LIBS does not hold the web libraries: build the page with scripts/web.sh")
endif()

# KmvtWebLibrary(NAME LIBRARY...): an imported target over the static libraries of the folder.
function(KmvtWebLibrary name)
  add_library(${name} INTERFACE IMPORTED)
  target_include_directories(${name} INTERFACE ${KMVT_WEB_LIBS}/include/SDL2 ${KMVT_WEB_LIBS}/include)
  list(TRANSFORM ARGN PREPEND ${KMVT_WEB_LIBS}/lib/lib)
  list(TRANSFORM ARGN APPEND .a)
  target_link_libraries(${name} INTERFACE ${ARGN})
endfunction()
KmvtWebLibrary(PkgConfig::SDL2 SDL2)
KmvtWebLibrary(PkgConfig::SDL2_IMAGE SDL2_image png16 z)
KmvtWebLibrary(PkgConfig::SDL2_MIXER SDL2_mixer)
KmvtWebLibrary(PkgConfig::SDL2_TTF SDL2_ttf freetype z)

# KmvtMakeWebPage(TARGET): the game's link for the browser, with the resource tree and the font
# packed beside it (the font at the path the game opens) and the page copied next to it. The
# page keeps no settings file: Debian's mirror serves no source of inih to build for the browser,
# so the choices made on the settings screens last for the visit.
function(KmvtMakeWebPage target)
  # SDL's sound and timers call these from the page's side. Written to a file, as a build tool
  # would take the dollar signs for its own.
  file(WRITE ${PROJECT_BINARY_DIR}/web-functions.json "[\"$autoResumeAudioContext\", \"$dynCall\"]\n")
  target_link_options(${target} PRIVATE
    -sENVIRONMENT=web -sALLOW_MEMORY_GROWTH=1 -lGL
    "-sEXPORTED_FUNCTIONS=_main,_kmvt_SaveRecording"
    "-sEXPORTED_RUNTIME_METHODS=FS,ccall"
    "-sDEFAULT_LIBRARY_FUNCS_TO_INCLUDE=@${PROJECT_BINARY_DIR}/web-functions.json"
    # SHELL: keeps each option with its file, as CMake would merge the two --preload-file.
    "SHELL:--preload-file ${PROJECT_SOURCE_DIR}/resources@/resources"
    "SHELL:--exclude-file ${PROJECT_SOURCE_DIR}/resources/map/tiles.txt"
    "SHELL:--preload-file ${KMVT_FONT_FILE}@${KMVT_FONT_FILE}")
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${PROJECT_SOURCE_DIR}/platform/web/index.html)
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E copy ${PROJECT_SOURCE_DIR}/platform/web/index.html ${PROJECT_BINARY_DIR}/index.html)
endfunction()
