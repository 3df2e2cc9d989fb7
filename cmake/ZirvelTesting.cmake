# GoogleTest: Debian's build natively; built from its packaged source when
# cross-compiling, since no MinGW build of it exists.
if(CMAKE_CROSSCOMPILING)
  set(ZIRVEL_GOOGLETEST_SOURCE "/usr/src/googletest" CACHE PATH "GoogleTest source tree")
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
  add_subdirectory(${ZIRVEL_GOOGLETEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
else()
  find_package(GTest REQUIRED)
endif()

# Test data paths as the test binary sees them: Wine maps the Unix root to Z:.
if(WIN32)
  set(ZIRVEL_HOST_ROOT "Z:")
else()
  set(ZIRVEL_HOST_ROOT "")
endif()

# One CTest entry per test binary. Under Wine each run gets the private
# prefix and X server that the emulator script sets up.
function(zirvel_add_test_binary name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  zirvel_warnings(${name})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gtest_main GTest::gmock)
  add_test(NAME ${name} COMMAND ${name} --gtest_color=no)
  if(WIN32)
    set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED wine_prefix)
  endif()
endfunction()

if(WIN32)
  add_test(NAME wine_prefix_setup
           COMMAND ${CMAKE_SOURCE_DIR}/cmake/wine-run.sh --prepare)
  set_tests_properties(wine_prefix_setup PROPERTIES FIXTURES_SETUP wine_prefix)
endif()

# A stand-in for a library loaded at run time, built from one C source in
# variants, each in its own folder under the real library's file name:
#   zirvel_add_stand_in_library(<interface target> SOURCE <file.c>
#     FILE_NAME <base name> [PREFIX <prefix>] ROOT_DEFINITION <macro>
#     VARIANTS <folder> <compile definition, or - for none> ...)
# Tests that link the interface target get <macro> (the variants' parent
# folder, as the test binary sees it) and have every variant built first.
function(zirvel_add_stand_in_library interface)
  cmake_parse_arguments(ARG "" "SOURCE;FILE_NAME;PREFIX;ROOT_DEFINITION" "VARIANTS" ${ARGN})
  set(variants ${ARG_VARIANTS})
  set(targets "")
  while(variants)
    list(POP_FRONT variants variant definition)
    set(target ${interface}_${variant})
    add_library(${target} SHARED ${ARG_SOURCE})
    set_target_properties(${target} PROPERTIES
      OUTPUT_NAME ${ARG_FILE_NAME} PREFIX "${ARG_PREFIX}" C_VISIBILITY_PRESET hidden
      # No SONAME: a load by bare name must not find a stand-in loaded by path.
      NO_SONAME ON
      LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${variant}
      RUNTIME_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${variant}
      ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${variant})
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    if(NOT definition STREQUAL "-")
      target_compile_definitions(${target} PRIVATE ${definition})
    endif()
    list(APPEND targets ${target})
  endwhile()
  add_library(${interface} INTERFACE)
  target_compile_definitions(${interface} INTERFACE
    ${ARG_ROOT_DEFINITION}="${ZIRVEL_HOST_ROOT}${CMAKE_CURRENT_BINARY_DIR}")
  add_dependencies(${interface} ${targets})
endfunction()
