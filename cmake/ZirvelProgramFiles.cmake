# The files that the Linux program reads from its own folder: icons/*.png,
# themes/*.qss, zirvel.png and zirvel.ico. src/program_files renders and
# copies them into ZIRVEL_PROGRAM_FILES_DIR; zirvel_stage_program_files()
# puts a copy next to a program or test binary, whose folder is where
# QCoreApplication::applicationDirPath() looks.
set(ZIRVEL_PROGRAM_FILES_DIR "${CMAKE_BINARY_DIR}/program-files")

# zirvel_stage_program_files(<target>): <target>'s folder gets the program
# files before <target> is linked, and again whenever one of them changes
# (a POST_BUILD step alone would leave stale icons until the next relink).
# It may be called before src/program_files is read: the list of files is
# looked up when the build is generated.
function(zirvel_stage_program_files target)
  set(stamp "${CMAKE_CURRENT_BINARY_DIR}/${target}-program-files.stamp")
  add_custom_command(
    OUTPUT "${stamp}"
    COMMAND ${CMAKE_COMMAND} -E copy_directory "${ZIRVEL_PROGRAM_FILES_DIR}" "$<TARGET_FILE_DIR:${target}>"
    COMMAND ${CMAKE_COMMAND} -E touch "${stamp}"
    DEPENDS "$<TARGET_PROPERTY:zirvel_program_files,ZIRVEL_STAGED_FILES>" zirvel_program_files
    COMMENT "Staging the program files next to ${target}"
    VERBATIM)
  add_custom_target(${target}_staging DEPENDS "${stamp}")
  add_dependencies(${target} ${target}_staging)
endfunction()
