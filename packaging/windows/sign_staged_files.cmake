# Run by CPack (CPACK_PRE_BUILD_SCRIPTS) once the program folder is staged,
# before it is packed: when a certificate is given, every .exe and .dll in
# the package is signed (packaging/windows/sign-code.sh).
if(NOT CPACK_ZIRVEL_SIGN)
  return()
endif()
file(GLOB_RECURSE binaries "${CPACK_TEMPORARY_DIRECTORY}/*.exe" "${CPACK_TEMPORARY_DIRECTORY}/*.dll")
list(LENGTH binaries count)
message(STATUS "Signing ${count} programs and libraries in ${CPACK_TEMPORARY_DIRECTORY}")
execute_process(COMMAND "${CPACK_ZIRVEL_SIGN_SCRIPT}" ${binaries} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "Signing the package's files failed")
endif()
