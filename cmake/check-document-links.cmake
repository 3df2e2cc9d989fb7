# Fails when a relative link of README.md or of a document below docs/
# points at a file or folder that is not there. Addresses with a scheme
# (https:, mailto:) and links within the same page (#...) are not looked at.
#   cmake -DROOT=<repository> -P check-document-links.cmake
file(GLOB_RECURSE documents "${ROOT}/docs/*.md")
list(APPEND documents "${ROOT}/README.md")
set(broken "")
set(checked 0)
foreach(document IN LISTS documents)
  file(READ "${document}" text)
  get_filename_component(folder "${document}" DIRECTORY)
  # Brackets and semicolons mean something to CMake's lists: each "](" and
  # ";" becomes a marker before the links are cut out.
  string(REPLACE ";" "<semicolon>" text "${text}")
  string(REPLACE "](" "<link>" text "${text}")
  string(REGEX MATCHALL "<link>[^)#]*[)#]" links "${text}")
  foreach(link IN LISTS links)
    string(REGEX REPLACE "^<link>([^)#]*)[)#]$" "\\1" target "${link}")
    string(STRIP "${target}" target)
    if(target STREQUAL "" OR target MATCHES "^[a-zA-Z][a-zA-Z0-9+.-]*:")
      continue()
    endif()
    math(EXPR checked "${checked} + 1")
    if(NOT EXISTS "${folder}/${target}")
      file(RELATIVE_PATH shown "${ROOT}" "${document}")
      list(APPEND broken "${shown}: ${target}")
    endif()
  endforeach()
endforeach()
if(broken)
  list(JOIN broken "\n  " lines)
  message(FATAL_ERROR "links to nothing:\n  ${lines}")
endif()
message(STATUS "${checked} relative links, each to something that is there")
