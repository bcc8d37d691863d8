# What Debian's package installs, and what `cmake --install` puts under its prefix on any Linux.
if(NOT BURNLINE_DESKTOP)
  return()
endif()
include(GNUInstallDirs)
set(debian ${CMAKE_CURRENT_LIST_DIR})
set(made ${CMAKE_BINARY_DIR}/debian-files)
file(MAKE_DIRECTORY ${made})

# Debian wants manuals and changelogs compressed, and no time of day in them.
function(install_compressed file folder name)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  execute_process(COMMAND gzip -9nc ${file} OUTPUT_FILE ${made}/${name}.gz COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${made}/${name}.gz DESTINATION ${folder})
endfunction()

install(TARGETS burnline burnline-flash RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# The programs look for these in ../share/burnline.
set(shipped ${CMAKE_INSTALL_DATADIR}/burnline)
install(DIRECTORY help DESTINATION ${shipped})
install(FILES docs/BurnlineRelNotes.htm DESTINATION ${shipped})
# A program that finds no configuration in its directory puts this one there.
install(FILES demo/FLASHCFG.TXT DESTINATION ${shipped}/default)

install(FILES ${debian}/org.burnline.assistant.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${debian}/org.burnline.assistant.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${debian}/burnline.svg DESTINATION ${icons}/scalable/apps)
install(FILES ${debian}/burnline-48.png DESTINATION ${icons}/48x48/apps RENAME burnline.png)
install(FILES src/desktop/burnline.png DESTINATION ${icons}/128x128/apps)

install_compressed(${debian}/burnline.1 ${CMAKE_INSTALL_MANDIR}/man1 burnline.1)
install_compressed(${debian}/burnline-flash.1 ${CMAKE_INSTALL_MANDIR}/man1 burnline-flash.1)

# What follows belongs to the system: nothing reads it under another prefix.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  return()
endif()
install(FILES ${debian}/78-burnline-modemmanager.rules DESTINATION lib/udev/rules.d)
install(PROGRAMS ${debian}/burnline-listed-port DESTINATION lib/udev)
install(FILES ${debian}/keep-modemmanager-away DESTINATION /etc/burnline)

set(documents ${CMAKE_INSTALL_DATADIR}/doc/burnline)
# Its form wants each line of the licence set in, and a dot on an empty one.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS LICENSE)
file(READ LICENSE licence)
string(REGEX MATCH "Copyright \\(c\\) ([^\n]*)\n+(.*)\n$" whole "${licence}")
set(holders "${CMAKE_MATCH_1}")
string(REPLACE "\n\n" "\n.\n" licence "${CMAKE_MATCH_2}")
string(REPLACE "\n" "\n " licence "${licence}")
configure_file(${debian}/copyright.in ${made}/copyright @ONLY)
install(FILES ${made}/copyright DESTINATION ${documents})
install_compressed(${debian}/changelog ${documents} changelog)

include(${debian}/cpack.cmake)
