# Fails unless PROGRAM's export table names the ten Overlay* functions
# exactly, undecorated, as a caller of GetProcAddress needs them.
#   cmake -DOBJDUMP=... -DPROGRAM=... -P check_exports.cmake
execute_process(COMMAND "${OBJDUMP}" -p "${PROGRAM}" OUTPUT_VARIABLE dump RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${OBJDUMP} could not read ${PROGRAM}")
endif()
# Square brackets would confuse CMake's lists: the rows "[   N] Name" lose them.
string(REPLACE "[" "" dump "${dump}")
string(REPLACE "]" "" dump "${dump}")
string(REGEX MATCH "Ordinal/Name Pointer Table\n([^\n]+\n)+" table "${dump}")
string(REGEX MATCHALL "\t *[0-9]+ [^\n]+" rows "${table}")
set(entries)
foreach(row IN LISTS rows)
  string(REGEX REPLACE "^\t *[0-9]+ " "" name "${row}")
  list(APPEND entries "${name}")
endforeach()
set(expected OverlayActivateWheelFile OverlayEngineStart OverlayEngineStop OverlayGazeStatus
    OverlayIsWheelVisible OverlayReloadConfig OverlayToggleWheel OverlayVoicePhraseCount
    OverlayVoiceStatus OverlayWheelCount)
if(NOT entries STREQUAL expected)
  message(FATAL_ERROR "exported names: '${entries}'\nexpected: '${expected}'")
endif()
message(STATUS "${PROGRAM} exports the ten engine functions")
