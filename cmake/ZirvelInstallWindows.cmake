# What the Windows packages hold: the program folder as it runs (the
# programs, the Qt DLLs and plugins, the C++ runtime, the recogniser
# library, icons/ and themes/), as a portable zip and as a per-user NSIS
# installer (packaging/windows/NSIS.template.in). The first-run files are
# made by the program on its first start.

install(TARGETS zirvel zirvel-engine zirvel-activate zirvel-say zirvel-check RUNTIME DESTINATION .)
foreach(file IN LISTS ZIRVEL_QT_WINDOWS_RUNTIME)
  get_filename_component(folder "${file}" DIRECTORY)
  string(REGEX REPLACE "^(bin|plugins)/?" "" folder "${folder}")
  if(folder STREQUAL "")
    set(folder .)
  endif()
  install(FILES "${ZIRVEL_QT_WINDOWS_PREFIX}/${file}" DESTINATION "${folder}")
endforeach()
install(FILES ${ZIRVEL_MINGW_RUNTIME_DLLS} DESTINATION .)
if(ZIRVEL_HAVE_RECOGNISER)
  install(FILES "${ZIRVEL_RECOGNISER_LIBRARY}" DESTINATION .)
endif()
install(DIRECTORY "${ZIRVEL_PROGRAM_FILES_DIR}/" DESTINATION .)

set(CPACK_PACKAGE_NAME Zirvel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Zirvel")
set(CPACK_PACKAGE_INSTALL_DIRECTORY Zirvel)
set(CPACK_SYSTEM_NAME win64)
set(CPACK_OUTPUT_FILE_PREFIX "${CMAKE_BINARY_DIR}/packages")
set(CPACK_GENERATOR ZIP NSIS)
# The zip unpacks to one folder, Zirvel-<version>-win64, which runs as it is.
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_NSIS_PACKAGE_NAME Zirvel)
set(CPACK_NSIS_DISPLAY_NAME Zirvel)
set(CPACK_NSIS_UNINSTALL_NAME Odinstaluj)
set(CPACK_NSIS_EXECUTABLES_DIRECTORY .)
set(CPACK_PACKAGE_EXECUTABLES Zirvel Zirvel)
set(CPACK_NSIS_MUI_ICON "${ZIRVEL_PROGRAM_FILES_DIR}/zirvel.ico")
set(CPACK_NSIS_MUI_UNIICON "${ZIRVEL_PROGRAM_FILES_DIR}/zirvel.ico")
set(CPACK_ZIRVEL_NSIS_INCLUDE_DIR "${PROJECT_SOURCE_DIR}/packaging/windows")
# Signing, when cpack is given a certificate (packaging/windows/signing_config.cmake).
set(CPACK_ZIRVEL_SIGN_SCRIPT "${PROJECT_SOURCE_DIR}/packaging/windows/sign-code.sh")
set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_SOURCE_DIR}/packaging/windows/signing_config.cmake")
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/windows/sign_staged_files.cmake")
list(PREPEND CMAKE_MODULE_PATH "${PROJECT_SOURCE_DIR}/packaging/windows")
include(CPack)
