# SPDX-License-Identifier: GPL-3.0-or-later
# The Debian package, made by CPack from the install rules (scripts/package.sh runs it). Its
# dependencies are read from the executable by dpkg-shlibdeps (SDL2_ttf and inih among them),
# all but the font's.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kormaveth2d)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Project Kormaveth 2D")
set(CPACK_PACKAGE_CONTACT "Project Kormaveth 2D developers <developers@kormaveth2d.example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "top-down action game for one or two players")
set(CPACK_PACKAGE_DESCRIPTION
"Fight your way along the streets of a rain-washed town to the courtyard
where the boss waits. Twenty-three enemies notice you by sight, chase you,
shoot, search where they lost you and look around. Play tavesh, whose skill
halves the damage he takes, or lumra, whose skill hides her from the enemies;
two players share one keyboard, and a standing player can revive a partner.")
# The package installs where the build was told to, so that the data folder built in is right.
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${KMVT_HOMEPAGE})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The one dependency no library names: the font the key names are written in (KMVT_FONT_FILE).
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Directories made by the install rules are world-readable whatever the builder's umask.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
