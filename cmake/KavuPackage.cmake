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
    # How the bus finds and starts the automation, and the type library.
    # The bus wants the whole path of the program, which is known when it is installed; a package is
    # installed once more, from the folder in which it is made.
    install(CODE "set(kavu_made_in /_CPack_Packages/)
        set(kavu_bin \"${CMAKE_INSTALL_BINDIR}\")
        set(kavu_data \"${CMAKE_INSTALL_DATADIR}\")" COMPONENT kavu)
    install(CODE [[
        set(kavu_prefix "${CMAKE_INSTALL_PREFIX}")
        if(kavu_prefix MATCHES "${kavu_made_in}")
            set(kavu_prefix /usr)
        endif()
        foreach(name IN ITEMS Kavu.Kavu Kavu.KavuGui)
            set(kavu_file "${CMAKE_INSTALL_PREFIX}/${kavu_data}/dbus-1/services/${name}.service")
            file(WRITE "$ENV{DESTDIR}${kavu_file}"
                 "[D-BUS Service]\nName=${name}\nExec=${kavu_prefix}/${kavu_bin}/kavu -Embedding\n")
            list(APPEND CMAKE_INSTALL_MANIFEST_FILES "${kavu_file}")
        endforeach()
    ]] COMPONENT kavu)
    install(FILES ${PROJECT_BINARY_DIR}/src/app/automation/Kavu.IKavu.xml
                  ${PROJECT_BINARY_DIR}/src/app/automation/Kavu.IKavuGui.xml
            DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/interfaces)
    # What drives it from Python.
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/python/kavu
            DESTINATION lib/python3/dist-packages COMPONENT automation
            FILES_MATCHING PATTERN "*.py" PATTERN "py.typed")
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/automation/
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/python3-kavu/examples COMPONENT automation
            FILES_MATCHING PATTERN "*.py" PATTERN "*.csv")
endif()
# The library of the translator session, what a program is built with that uses it, and the module
# for Python. Each package has its own copyright and changes.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/python/kavu_sdk
        DESTINATION lib/python3/dist-packages COMPONENT python
        FILES_MATCHING PATTERN "*.py" PATTERN "py.typed")
install(FILES ${PROJECT_SOURCE_DIR}/examples/sdk/list_streams.c
              ${PROJECT_SOURCE_DIR}/examples/sdk/decode_masks.cpp
              ${PROJECT_SOURCE_DIR}/examples/sdk/csv_setup_translator.cpp
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libkavu-sdk-dev/examples COMPONENT development)
install(FILES ${PROJECT_SOURCE_DIR}/examples/sdk/list_measurements.py
              ${PROJECT_SOURCE_DIR}/examples/sdk/decode_frame.py
              ${PROJECT_SOURCE_DIR}/examples/sdk/export_csv.py
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/python3-kavu-sdk/examples COMPONENT python)
# The packager writes scripts that call it besides, whatever it is told.
file(WRITE ${PROJECT_BINARY_DIR}/package/libkavu-sdk1
     "libkavu-sdk1: maintscript-calls-ldconfig *\n")
install(FILES ${PROJECT_BINARY_DIR}/package/libkavu-sdk1
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides COMPONENT library)
set(kavu_package_of_library libkavu-sdk1)
set(kavu_package_of_development libkavu-sdk-dev)
set(kavu_package_of_python python3-kavu-sdk)
set(kavu_package_of_automation python3-kavu)
set(kavu_components library development python)
if(TARGET kavu)
    list(APPEND kavu_components automation)
endif()
foreach(component IN LISTS kavu_components)
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright
                  ${PROJECT_BINARY_DIR}/compressed/changelog.gz
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${kavu_package_of_${component}}
            COMPONENT ${component})
endforeach()
# What is installed and is no program: with the programs it is all that a package takes.
add_custom_target(installed_files ALL DEPENDS ${compressed_files})
add_dependencies(installed_files reference)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kavu)
set(CPACK_PACKAGE_VENDOR "Kavu developers")
set(CPACK_PACKAGE_CONTACT "Kavu developers <developers@kavu.invalid>")
# Each package has a first line of its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
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
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL kavu ${kavu_components})
set(CPACK_DEBIAN_KAVU_PACKAGE_NAME kavu)
set(CPACK_DEBIAN_KAVU_DESCRIPTION "${PROJECT_DESCRIPTION}\n${CPACK_PACKAGE_DESCRIPTION}")
# Printed pages are set in its letters.
set(CPACK_DEBIAN_KAVU_PACKAGE_DEPENDS "fonts-liberation")
# Shows the log of a translator by the program of the desktop.
set(CPACK_DEBIAN_KAVU_PACKAGE_SUGGESTS "xdg-utils")
if(TARGET kavu)
    # What the windows load while they run is not seen in what they are linked with.
    string(APPEND CPACK_DEBIAN_KAVU_PACKAGE_DEPENDS
           ", fonts-dejavu-core | fonts-freefont-ttf | fonts-noto-core")
endif()
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${kavu_package_of_library})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
# What programs that are linked with it depend on, and that the loader hears of it.
file(WRITE ${PROJECT_BINARY_DIR}/package/shlibs
     "libkavu_sdk 1 ${kavu_package_of_library} (>= ${PROJECT_VERSION})
")
file(WRITE ${PROJECT_BINARY_DIR}/package/triggers "activate-noawait ldconfig
")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
    "${PROJECT_BINARY_DIR}/package/shlibs;${PROJECT_BINARY_DIR}/package/triggers")
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION
    "library that reads TMATS files for translators\n\
A session over a file of the telemetry attributes transfer standard gives its\n\
data links, measurements with places and masks, and conversion records.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${kavu_package_of_development})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${kavu_package_of_library} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "library that reads TMATS files - development files\n\
The headers for C and C++, and examples.")
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME ${kavu_package_of_python})
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
    "python3 (>= 3.9), ${kavu_package_of_library} (>= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_PYTHON_DESCRIPTION
    "module for Python that reads TMATS files\n\
Sessions over files of the telemetry attributes transfer standard, with types\n\
for links, measurements, places and masks.")
set(CPACK_DEBIAN_AUTOMATION_PACKAGE_NAME ${kavu_package_of_automation})
set(CPACK_DEBIAN_AUTOMATION_PACKAGE_SECTION python)
set(CPACK_DEBIAN_AUTOMATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_AUTOMATION_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_AUTOMATION_PACKAGE_DEPENDS
    "python3 (>= 3.9), python3-dbus, kavu (>= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_AUTOMATION_DESCRIPTION
    "module for Python that drives the editor for TMATS files\n\
Opens and edits files of the telemetry attributes transfer standard over the\n\
session bus: streams, ID counters, subframes, measurements and conversions.")
include(CPack)
