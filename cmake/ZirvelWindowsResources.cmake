# The resources a Windows program carries in its .exe: the application
# manifest (packaging/windows/program.manifest, RT_MANIFEST 1), a version
# resource from the project's version with a Polish description, and
# optionally the program's icon (zirvel.ico, drawn at build time by
# src/program_files), which the shell shows for the file, its shortcuts
# and its uninstall entry.
#   zirvel_windows_resources(<target> DESCRIPTION <text> [ICON])
set(ZIRVEL_PROGRAM_MANIFEST "${PROJECT_SOURCE_DIR}/packaging/windows/program.manifest")

function(zirvel_windows_resources target)
  cmake_parse_arguments(ARG "ICON" "DESCRIPTION" "" ${ARGN})
  get_target_property(name ${target} OUTPUT_NAME)
  if(NOT name)
    set(name ${target})
  endif()
  set(ZIRVEL_RC_FILE_NAME "${name}.exe")
  set(ZIRVEL_RC_DESCRIPTION "${ARG_DESCRIPTION}")
  set(ZIRVEL_RC_MANIFEST "${ZIRVEL_PROGRAM_MANIFEST}")
  set(depends "${ZIRVEL_PROGRAM_MANIFEST}")
  set(ZIRVEL_RC_ICON "")
  if(ARG_ICON)
    # IDI_ICON1: the name Qt's window classes load their icon by.
    set(ZIRVEL_RC_ICON "IDI_ICON1 ICON \"${ZIRVEL_PROGRAM_FILES_DIR}/zirvel.ico\"")
    list(APPEND depends "${ZIRVEL_PROGRAM_FILES_DIR}/zirvel.ico")
    add_dependencies(${target} zirvel_program_files)
  endif()
  set(rc "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
  configure_file("${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in" "${rc}" @ONLY)
  set_source_files_properties("${rc}" PROPERTIES OBJECT_DEPENDS "${depends}")
  target_sources(${target} PRIVATE "${rc}")
endfunction()
