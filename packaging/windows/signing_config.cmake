# CPack's project configuration for the Windows packages (read by cpack,
# once for each package kind): signing is asked for when ZIRVEL_SIGN_CERT
# and ZIRVEL_SIGN_KEY are in cpack's environment. Then the staged files are
# signed (sign_staged_files.cmake) and makensis signs the installer and the
# uninstaller it writes.
if(DEFINED ENV{ZIRVEL_SIGN_CERT} OR DEFINED ENV{ZIRVEL_SIGN_KEY})
  if(NOT EXISTS "$ENV{ZIRVEL_SIGN_CERT}" OR NOT EXISTS "$ENV{ZIRVEL_SIGN_KEY}")
    message(FATAL_ERROR "Signing needs both ZIRVEL_SIGN_CERT and ZIRVEL_SIGN_KEY, each naming a file")
  endif()
  set(CPACK_ZIRVEL_SIGN ON)
  set(sign "'\"${CPACK_ZIRVEL_SIGN_SCRIPT}\" \"%1\"' = 0")
  set(CPACK_ZIRVEL_NSIS_SIGNING "!finalize ${sign}\n!uninstfinalize ${sign}")
else()
  set(CPACK_ZIRVEL_SIGN OFF)
  set(CPACK_ZIRVEL_NSIS_SIGNING "")
endif()
