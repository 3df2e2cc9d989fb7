# What `cmake --install` puts where on Linux, and the Debian package made
# from it (cpack -G DEB). Installed, the program cannot write beside itself:
# it keeps its files in $XDG_CONFIG_HOME/zirvel and reads what it ships
# from share/zirvel.
include(GNUInstallDirs)

set(ZIRVEL_APP_ID app.zirvel.Zirvel)
set(ZIRVEL_PACKAGING_DIR "${PROJECT_SOURCE_DIR}/packaging/linux")

# Each has its manual page in packaging/linux/man.
set(ZIRVEL_LINUX_PROGRAMS zirvel zirvel-activate zirvel-say zirvel-check)
install(TARGETS ${ZIRVEL_LINUX_PROGRAMS} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# The speech recogniser is loaded at run time by name, from the program's
# private library folder. Under the architecture's own lib folder it is
# private to the program: ld.so.cache never lists it, so the package needs
# no ldconfig call.
if(CMAKE_LIBRARY_ARCHITECTURE)
  set(ZIRVEL_PRIVATE_LIBDIR "lib/${CMAKE_LIBRARY_ARCHITECTURE}/zirvel")
else()
  set(ZIRVEL_PRIVATE_LIBDIR "${CMAKE_INSTALL_LIBDIR}/zirvel")
endif()
set_target_properties(zirvel PROPERTIES INSTALL_RPATH "\$ORIGIN/../${ZIRVEL_PRIVATE_LIBDIR}")
if(ZIRVEL_HAVE_RECOGNISER)
  install(FILES "${ZIRVEL_RECOGNISER_LIBRARY}" DESTINATION ${ZIRVEL_PRIVATE_LIBDIR}
          PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endif()
# icons/, themes/ and the program's icon, as in the build folder.
install(DIRECTORY "${ZIRVEL_PROGRAM_FILES_DIR}/" DESTINATION ${CMAKE_INSTALL_DATADIR}/zirvel)

install(FILES "${ZIRVEL_PACKAGING_DIR}/${ZIRVEL_APP_ID}.desktop" DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES "${ZIRVEL_PACKAGING_DIR}/${ZIRVEL_APP_ID}.metainfo.xml" DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES "${PROJECT_SOURCE_DIR}/resources/zirvel.svg" DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
        RENAME ${ZIRVEL_APP_ID}.svg)
install(FILES "${ZIRVEL_PROGRAM_FILES_DIR}/zirvel.png" DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps
        RENAME ${ZIRVEL_APP_ID}.png)
# Not started at login unless the user copies it to ~/.config/autostart.
install(FILES "${ZIRVEL_PACKAGING_DIR}/zirvel-autostart.desktop" DESTINATION ${CMAKE_INSTALL_DATADIR}/zirvel/autostart
        RENAME ${ZIRVEL_APP_ID}.desktop)
# Debian wants the changelog and the manual pages compressed as gzip -9n
# would (no name, no time).
function(zirvel_gzip_for_debian source gzipped_var)
  get_filename_component(name "${source}" NAME)
  set(gzipped "${CMAKE_BINARY_DIR}/packaging/${name}.gz")
  add_custom_command(OUTPUT "${gzipped}"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${CMAKE_BINARY_DIR}/packaging"
    COMMAND gzip -9n -c "${ZIRVEL_PACKAGING_DIR}/${source}" > "${gzipped}"
    DEPENDS "${ZIRVEL_PACKAGING_DIR}/${source}")
  set(${gzipped_var} "${gzipped}" PARENT_SCOPE)
endfunction()
zirvel_gzip_for_debian(changelog ZIRVEL_CHANGELOG_GZ)
set(ZIRVEL_MANUAL_PAGES)
foreach(program IN LISTS ZIRVEL_LINUX_PROGRAMS)
  zirvel_gzip_for_debian(man/${program}.1 page)
  list(APPEND ZIRVEL_MANUAL_PAGES "${page}")
endforeach()
add_custom_target(zirvel_gzipped_documents ALL DEPENDS "${ZIRVEL_CHANGELOG_GZ}" ${ZIRVEL_MANUAL_PAGES})
install(FILES "${ZIRVEL_PACKAGING_DIR}/copyright" "${ZIRVEL_CHANGELOG_GZ}" DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zirvel)
install(FILES ${ZIRVEL_MANUAL_PAGES} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

set(CPACK_PACKAGE_NAME zirvel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Zirvel")
set(CPACK_PACKAGE_CONTACT "The Zirvel developers <hello@zirvel.app>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "keys and clicks from a radial wheel, by mouse, gaze or voice")
set(CPACK_PACKAGE_DESCRIPTION
    "Zirvel lets people who cannot use a full keyboard or mouse, and gamers,\n\
trigger keyboard and mouse actions from a radial wheel shown on a global\n\
hot key. A virtual cursor driven by mouse motion, an eye tracker or offline\n\
Polish voice commands picks a field, which runs a timed macro of keys and\n\
clicks. Voice also drives a numbered screen grid and numbered hints over\n\
clickable elements.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://zirvel.app/")
# The libraries the programs link, found by dpkg-shlibdeps; the recogniser
# is the package's own.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CPACK_PACKAGING_INSTALL_PREFIX}/${ZIRVEL_PRIVATE_LIBDIR}")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS OFF)
# Qt finds the xcb platform and image plugins at run time, not by linking.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, qt6-image-formats-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "at-spi2-core, pulseaudio | pipewire-pulse")
set(CPACK_GENERATOR DEB)
set(CPACK_OUTPUT_FILE_PREFIX "${PROJECT_SOURCE_DIR}/build/packages")
include(CPack)
