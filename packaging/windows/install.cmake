# What goes beside the programs on Windows. The component "programs" is what the installer brings; with "portable" it is
# a folder that runs from anywhere and keeps its files to itself. See tools/windows/package.
set(sdk_qt ${WINDOWS_SDK}/qt)

install(TARGETS burnline burnline-flash RUNTIME DESTINATION . COMPONENT programs)
foreach(module Core Gui Widgets Network)
  install(FILES ${sdk_qt}/bin/Qt6${module}.dll DESTINATION . COMPONENT programs)
endforeach()
# The windows, their look, and encryption by the system's own means: no certificates have to come along.
foreach(plugin platforms/qwindows styles/qwindowsvistastyle tls/qschannelbackend)
  get_filename_component(folder ${plugin} DIRECTORY)
  install(FILES ${sdk_qt}/plugins/${plugin}.dll DESTINATION ${folder} COMPONENT programs)
endforeach()

set(runtimes libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
foreach(runtime ${runtimes})
  execute_process(
    COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime}
    OUTPUT_VARIABLE path
    OUTPUT_STRIP_TRAILING_WHITESPACE
  )
  if(NOT IS_ABSOLUTE "${path}")
    message(FATAL_ERROR "The compiler doesn't know where its ${runtime} is.")
  endif()
  get_filename_component(path "${path}" REALPATH)
  install(FILES ${path} DESTINATION . COMPONENT programs)
endforeach()

install(DIRECTORY help DESTINATION . COMPONENT programs)
install(FILES docs/BurnlineRelNotes.htm DESTINATION . COMPONENT programs)
# A program that finds no configuration in its directory puts this one there.
install(FILES demo/FLASHCFG.TXT DESTINATION default COMPONENT programs)
# One beside the program, and its own folder is the program's directory.
install(FILES demo/FLASHCFG.TXT DESTINATION . COMPONENT portable)

# Each under the licence that its package comes with.
install(FILES LICENSE DESTINATION licenses RENAME burnline.txt COMPONENT programs)
install(FILES packaging/windows/licenses.txt DESTINATION licenses RENAME README.txt COMPONENT programs)
foreach(part libqt6core6=qt libsodium-dev=libsodium gcc-mingw-w64-base=gcc-runtime mingw-w64-common=mingw-w64)
  string(REPLACE "=" ";" part ${part})
  list(GET part 0 package)
  list(GET part 1 name)
  install(FILES /usr/share/doc/${package}/copyright DESTINATION licenses RENAME ${name}.txt COMPONENT programs)
endforeach()
foreach(licence LGPL-3 GPL-3)
  install(FILES /usr/share/common-licenses/${licence} DESTINATION licenses RENAME ${licence}.txt COMPONENT programs)
endforeach()

# Nobody debugs with the symbols of these; they are most of the size.
list(TRANSFORM runtimes PREPEND "\${folder}/" OUTPUT_VARIABLE heavy)
list(APPEND heavy "\${folder}/burnline.exe" "\${folder}/burnline-flash.exe")
install(
  CODE "set(folder \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
execute_process(COMMAND ${CMAKE_STRIP} ${heavy} COMMAND_ERROR_IS_FATAL ANY)"
  COMPONENT programs
)
