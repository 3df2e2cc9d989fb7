# Fails when a relative link of README.md or of a document below docs/
# points at a file or folder that is not there, or at a heading the file
# does not have (file.md#heading). Addresses with a scheme (https:,
# mailto:) and links within the same page (#...) are not looked at.
#   cmake -DROOT=<repository> -P check-document-links.cmake
cmake_minimum_required(VERSION 3.25)

# The anchors of a Markdown file's headings, as the usual renderers make
# them: lower case, punctuation left out, spaces as hyphens.
function(heading_anchors document result)
  file(STRINGS "${document}" headings REGEX "^#+ " ENCODING UTF-8)
  set(punctuation [[!]] [["]] [[#]] [[$]] [[%]] [[&]] [[']] [[(]] [[)]] [[*]] [[+]] [[,]] [[.]] [[/]]
                  [[:]] [[<]] [[=]] [[>]] [[?]] [[@]] [==[[]==] [[\]] [==[]]==] [[^]] [[`]] [[{]] [[|]]
                  [[}]] [[~]] [[„]] [[”]] [[“]] [[—]] [[–]] [[…]] [[×]])
  set(anchors "")
  foreach(heading IN LISTS headings)
    string(REGEX REPLACE "^#+ +" "" anchor "${heading}")
    string(TOLOWER "${anchor}" anchor)
    foreach(mark IN LISTS punctuation)
      string(REPLACE "${mark}" "" anchor "${anchor}")
    endforeach()
    string(STRIP "${anchor}" anchor)
    string(REPLACE " " "-" anchor "${anchor}")
    list(APPEND anchors "${anchor}")
  endforeach()
  set(${result} "${anchors}" PARENT_SCOPE)
endfunction()

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
  string(REGEX MATCHALL "<link>[^)]*[)]" links "${text}")
  file(RELATIVE_PATH shown "${ROOT}" "${document}")
  foreach(link IN LISTS links)
    string(REGEX REPLACE "^<link>([^)]*)[)]$" "\\1" target "${link}")
    string(STRIP "${target}" target)
    set(anchor "")
    if(target MATCHES "^([^#]*)#(.*)$")
      set(target "${CMAKE_MATCH_1}")
      set(anchor "${CMAKE_MATCH_2}")
    endif()
    if(target STREQUAL "" OR target MATCHES "^[a-zA-Z][a-zA-Z0-9+.-]*:")
      continue()
    endif()
    math(EXPR checked "${checked} + 1")
    if(NOT EXISTS "${folder}/${target}")
      list(APPEND broken "${shown}: ${target}")
    elseif(NOT anchor STREQUAL "")
      heading_anchors("${folder}/${target}" anchors)
      if(NOT anchor IN_LIST anchors)
        list(APPEND broken "${shown}: ${target}#${anchor} (no such heading)")
      endif()
    endif()
  endforeach()
endforeach()
if(broken)
  list(JOIN broken "\n  " lines)
  message(FATAL_ERROR "links to nothing:\n  ${lines}")
endif()
message(STATUS "${checked} relative links, each to something that is there")
