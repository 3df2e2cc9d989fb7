# Zirvel.exe and the front-end's tests on Windows use Qt 6 built for
# MinGW-w64, which scripts/build-qt-windows.sh puts in the cache (the host's
# Qt 6.4.2 supplies the build tools: moc, rcc, uic).
include(ZirvelCache)
set(ZIRVEL_QT_WINDOWS_PREFIX "${ZIRVEL_CACHE_DIR}/qt6-mingw-6.4.2" CACHE PATH "Qt 6 built for MinGW-w64")
if(NOT EXISTS "${ZIRVEL_QT_WINDOWS_PREFIX}/lib/cmake/Qt6/Qt6Config.cmake")
  message(FATAL_ERROR "No Qt for Windows at ${ZIRVEL_QT_WINDOWS_PREFIX}: run scripts/build-qt-windows.sh "
                      "(or configure with -DZIRVEL_WITH_QT=OFF to build the engine's programs alone).")
endif()
list(APPEND CMAKE_PREFIX_PATH "${ZIRVEL_QT_WINDOWS_PREFIX}")
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)

# The Qt libraries, plugins and C++ runtime a Qt program loads, as paths
# inside the program's folder.
set(ZIRVEL_QT_WINDOWS_RUNTIME
    bin/Qt6Core.dll bin/Qt6Gui.dll bin/Qt6Widgets.dll
    plugins/platforms/qwindows.dll plugins/styles/qwindowsvistastyle.dll
    plugins/imageformats/qico.dll plugins/imageformats/qjpeg.dll plugins/imageformats/qgif.dll)

# A program that uses Qt's DLLs shares their C++ runtime DLLs rather than
# linking its own copy (a process holds one libstdc++-6.dll).
function(zirvel_link_runtime_dynamically target)
  set_property(TARGET ${target} PROPERTY LINK_OPTIONS "")
endfunction()

# Puts the Qt DLLs, plugins and the C++ runtime beside <target>, so it runs
# from its folder: zirvel_stage_qt_runtime(<target> [EXTRA <file>...]).
function(zirvel_stage_qt_runtime target)
  cmake_parse_arguments(ARG "" "" "EXTRA" ${ARGN})
  set(commands "")
  foreach(file IN LISTS ZIRVEL_QT_WINDOWS_RUNTIME ARG_EXTRA)
    get_filename_component(folder "${file}" DIRECTORY)
    string(REGEX REPLACE "^(bin|plugins)/?" "" folder "${folder}")
    list(APPEND commands
         COMMAND ${CMAKE_COMMAND} -E make_directory "$<TARGET_FILE_DIR:${target}>/${folder}"
         COMMAND ${CMAKE_COMMAND} -E copy_if_different "${ZIRVEL_QT_WINDOWS_PREFIX}/${file}"
                 "$<TARGET_FILE_DIR:${target}>/${folder}")
  endforeach()
  add_custom_command(TARGET ${target} POST_BUILD ${commands}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${ZIRVEL_MINGW_RUNTIME_DLLS} "$<TARGET_FILE_DIR:${target}>"
    VERBATIM)
endfunction()
