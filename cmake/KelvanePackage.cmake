# The Debian package: `make package`, which is cpack -G DEB and its checks.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kelvane)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "battery monitor for the system tray")
set(CPACK_PACKAGE_DESCRIPTION
    "Kelvane draws the laptop's battery in the tray: a glyph with the percentage or
the time remaining inside, or plain text. It tells when the battery is full,
arrives at chosen levels or runs out.
.
It has no toolkit in the program that stays resident, and does nothing while
nothing happens. Commands print the battery for bars and scripts.")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://kelvane.example/")
set(CPACK_PACKAGE_CONTACT "The Kelvane developers <developers@kelvane.example>")
set(CPACK_STRIP_FILES ON)
# So that what is configured at installing names the places of the package, not those it is packed in.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
                                                GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/deb/prepare.cmake")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The session's bus is how it reaches the tray; SVG icons are what its windows draw.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "default-dbus-session-bus | dbus-session-bus, librsvg2-common")
# Better readings; the launcher's action "Preferences"; links and the desktop's power panel.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "upower, libglib2.0-bin, xdg-utils")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
