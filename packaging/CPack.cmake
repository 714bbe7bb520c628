# The Debian package: cpack --config build/default/CPackConfig.cmake
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillon)
set(CPACK_PACKAGE_VENDOR "Quillon developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "logbook for long-distance reception of FM stations")
set(CPACK_PACKAGE_DESCRIPTION
    "Quillon is the logbook of a person who listens for far-away FM stations.
Each entry is one station heard: its RDS data, frequency, time, transmitter
site, power, distance, propagation mode and notes.

Stations are logged by hand or in seconds with Quick Add, imported from RDS Spy
and RDSDX, identified with FMList and reported there. The log is exported as
KML, web pages and text, and drawn as charts. It is kept in plain text files,
and every change is on the disk at once.")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Quillon developers <quillon@example.org>")
set(CPACK_DEBIAN_PACKAGE_SECTION hamradio)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils, qt6-wayland, ca-certificates")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
