# Fails when a portable folder of src/ includes from a folder above it.
# From the bottom up: the shared types (core) and the configuration files
# (config); the system seam; voice, gaze and navigation, which know nothing
# of each other; the engine over all of them. The platform layers, the
# front-end and the programs sit on top and may include any of these.
#   cmake -DROOT=<repository> -P check-include-direction.cmake
cmake_minimum_required(VERSION 3.25)

set(allowed_config config)
set(allowed_core core)
set(allowed_system config system)
set(allowed_voice config core system voice)
set(allowed_gaze config core system gaze)
set(allowed_navigation config core navigation)
set(allowed_engine config core system voice gaze navigation engine)
set(allowed_update update)
set(allowed_tools config tools)

set(wrong "")
set(checked 0)
foreach(folder config core system voice gaze navigation engine update tools)
  file(GLOB_RECURSE sources "${ROOT}/src/${folder}/*.h" "${ROOT}/src/${folder}/*.cpp")
  foreach(source IN LISTS sources)
    file(STRINGS "${source}" includes REGEX "^#include \"[a-z_0-9]+/")
    foreach(line IN LISTS includes)
      string(REGEX REPLACE "^#include \"([a-z_0-9]+)/.*$" "\\1" from "${line}")
      math(EXPR checked "${checked} + 1")
      if(NOT from IN_LIST allowed_${folder})
        file(RELATIVE_PATH shown "${ROOT}" "${source}")
        list(JOIN allowed_${folder} ", " below)
        list(APPEND wrong "${shown}: ${line} (${folder} may include from ${below})")
      endif()
    endforeach()
  endforeach()
endforeach()
if(wrong)
  list(JOIN wrong "\n  " lines)
  message(FATAL_ERROR "includes against the layers:\n  ${lines}")
endif()
message(STATUS "${checked} includes, each from the folder itself or one below it")
