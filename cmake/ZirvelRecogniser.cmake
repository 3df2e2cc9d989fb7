# The real speech recogniser library, fetched by scripts/fetch-recogniser.sh
# into the cache. When it is there, the build puts it beside the programs
# (on Windows with the MinGW runtime DLLs it needs: Debian's GCC 12 ones,
# which a Qt program beside it needs too, since a process holds one
# libstdc++-6.dll). Without it the programs run and say the library is
# missing.
include(ZirvelCache)
set(ZIRVEL_RECOGNISER_PACKAGE "${ZIRVEL_CACHE_DIR}/vosk-0.3.39" CACHE PATH
    "Folder of the unpacked recogniser package (with lib/)")

# The MinGW C++ runtime of Debian's GCC 12, for every DLL and program that
# is not linked statically.
set(ZIRVEL_MINGW_RUNTIME_DLLS
    /usr/lib/gcc/x86_64-w64-mingw32/12-posix/libstdc++-6.dll
    /usr/lib/gcc/x86_64-w64-mingw32/12-posix/libgcc_s_seh-1.dll
    /usr/x86_64-w64-mingw32/lib/libwinpthread-1.dll)

if(WIN32)
  set(ZIRVEL_RECOGNISER_LIBRARY "${ZIRVEL_RECOGNISER_PACKAGE}/lib/win-x86_64/libvosk.dll")
  set(ZIRVEL_RECOGNISER_COMPANIONS ${ZIRVEL_MINGW_RUNTIME_DLLS})
else()
  set(ZIRVEL_RECOGNISER_LIBRARY "${ZIRVEL_RECOGNISER_PACKAGE}/lib/linux-x86_64/libvosk.so")
  set(ZIRVEL_RECOGNISER_COMPANIONS "")
endif()

if(EXISTS "${ZIRVEL_RECOGNISER_LIBRARY}")
  set(ZIRVEL_HAVE_RECOGNISER ON)
else()
  set(ZIRVEL_HAVE_RECOGNISER OFF)
  message(WARNING "No speech recogniser library at ${ZIRVEL_RECOGNISER_LIBRARY}: "
                  "run scripts/fetch-recogniser.sh. The programs will report it missing.")
endif()

# Copies the library (and its companions) into `folder` after `target` builds.
function(zirvel_stage_recogniser target folder)
  if(NOT ZIRVEL_HAVE_RECOGNISER)
    return()
  endif()
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E make_directory "${folder}"
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${ZIRVEL_RECOGNISER_LIBRARY} ${ZIRVEL_RECOGNISER_COMPANIONS} "${folder}"
    VERBATIM)
endfunction()
