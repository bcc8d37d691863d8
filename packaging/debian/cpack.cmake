# Debian's package itself; see tools/debian-package.
file(STRINGS ${debian}/changelog newest LIMIT_COUNT 1)
if(NOT newest MATCHES "^burnline \\(${PROJECT_VERSION}\\) ")
  message(FATAL_ERROR "packaging/debian/changelog begins with \"${newest}\", and this is version ${PROJECT_VERSION}.")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME burnline)
set(CPACK_PACKAGE_CONTACT "Burnline Assistant developers <burnline@example.org>")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION comm)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# A server of updates with an https address is believed only with these.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS ca-certificates)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# An administrator's list survives upgrades.
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${debian}/conffiles)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "updates the software of Orbimaster satellite antennas")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Burnline Assistant updates the software inside an Orbimaster
satellite-television antenna and its companion boards over a serial port.
.
It reads the versions from the antenna, picks the flash file, tests it record
by record, saves the antenna's parameters, erases and programs the board, waits
for the restart and uploads the parameters again. When something fails it says
what to do next.
.
The package holds a wizard (burnline) and a console (burnline-flash) that does
the same without a display, for a bench or from a script."
)
set(CPACK_STRIP_FILES ON)
# /etc is no part of the prefix.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
# Whatever the umask of who builds it.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE
)
include(CPack)
