# zirvel-render-picture, the build-time drawing tool, and its library. Read
# by this folder's CMakeLists.txt and, when cross-compiling, by host/ which
# builds the tool for the build machine.
find_package(Qt6 REQUIRED COMPONENTS Gui Svg)

set(zirvel_program_files_sources "${CMAKE_CURRENT_LIST_DIR}")
add_library(zirvel_svg_pictures STATIC
  "${zirvel_program_files_sources}/svg_picture.cpp"
  "${zirvel_program_files_sources}/ico_file.cpp")
target_include_directories(zirvel_svg_pictures PUBLIC "${zirvel_program_files_sources}/..")
target_link_libraries(zirvel_svg_pictures PUBLIC Qt6::Gui Qt6::Svg)
zirvel_warnings(zirvel_svg_pictures)

add_executable(zirvel-render-picture "${zirvel_program_files_sources}/render_picture_main.cpp")
target_link_libraries(zirvel-render-picture PRIVATE zirvel_svg_pictures)
zirvel_warnings(zirvel-render-picture)
