# What `cmake --install` puts where beside the programs, and the Debian package made of it.

# A package has these files compressed, and without the time of that.
find_program(KAVU_GZIP gzip REQUIRED)
set(compressed_files)
function(kavu_install_compressed source destination)
    cmake_path(GET source FILENAME name)
    set(made ${PROJECT_BINARY_DIR}/compressed/${name}.gz)
    add_custom_command(OUTPUT ${made}
        COMMAND ${KAVU_GZIP} -9nc ${PROJECT_SOURCE_DIR}/${source} > ${made}
        DEPENDS ${PROJECT_SOURCE_DIR}/${source} VERBATIM)
    install(FILES ${made} DESTINATION ${destination})
    set(compressed_files ${compressed_files} ${made} PARENT_SCOPE)
endfunction()
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/compressed)

kavu_install_compressed(docs/kavu-cli.1 ${CMAKE_INSTALL_MANDIR}/man1)
kavu_install_compressed(packaging/changelog ${CMAKE_INSTALL_DOCDIR})
install(FILES ${PROJECT_SOURCE_DIR}/packaging/completions/kavu-cli.bash
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME kavu-cli)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/completions/_kavu-cli
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
              ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/packaging/copyright
        DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/manual ${PROJECT_SOURCE_DIR}/docs/pictures
        DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/samples/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/samples
        FILES_MATCHING PATTERN "*.tma" PATTERN "*.mdb" PATTERN "*.md")

if(TARGET kavu)
    # The icon is the one that the windows show.
    install(FILES ${PROJECT_SOURCE_DIR}/src/app/resources/icons/kavu.svg
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/kavu.desktop
            DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/kavu-mime.xml
            DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME kavu.xml)
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/org.kavu.kavu.metainfo.xml
            DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
    kavu_install_compressed(docs/kavu.1 ${CMAKE_INSTALL_MANDIR}/man1)
endif()
# What is installed and is no program: with the programs it is all that a package takes.
add_custom_target(installed_files ALL DEPENDS ${compressed_files})
add_dependencies(installed_files reference)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kavu)
set(CPACK_PACKAGE_VENDOR "Kavu developers")
set(CPACK_PACKAGE_CONTACT "Kavu developers <developers@kavu.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
    "Opens, checks, edits and saves the files of the telemetry attributes\n\
transfer standard (TMATS) of IRIG 106 Chapter 9, editions 106-96 to 106-11.")
set(CPACK_PACKAGE_INSTALL_DIRECTORY kavu)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Kavu developers <developers@kavu.invalid>")
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The libraries come from what the program is linked with, not from a list that ages.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Printed pages are set in its letters.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation")
if(TARGET kavu)
    # What the windows load while they run is not seen in what they are linked with.
    string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS
           ", fonts-dejavu-core | fonts-freefont-ttf | fonts-noto-core")
endif()
include(CPack)
