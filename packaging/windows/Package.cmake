# The zip that runs from anywhere and the installer, and what the licences of the parts that are linked in ask for.
install(FILES README.md DESTINATION .)

set(licences ${CMAKE_BINARY_DIR}/Licences)
if(TARGET vantrel)
    set(QT_VERSION ${Qt6_VERSION})
    file(STRINGS ${Qt6_DIR}/../../../version VANTREL_QT_PACKAGE)
    install(DIRECTORY ${Qt6_DIR}/../../../licences/ DESTINATION Licences)
else()
    set(QT_VERSION "(not in this package)")
endif()
configure_file(packaging/windows/Licences.txt.in ${licences}/Licences.txt @ONLY NEWLINE_STYLE CRLF)
configure_file(LICENSE ${licences}/VANTREL.txt COPYONLY)
install(DIRECTORY ${licences}/ DESTINATION Licences)
# Debian keeps each package's licence under the package's name.
set(doc /usr/share/doc)
install(FILES ${doc}/libasio-dev/copyright DESTINATION Licences RENAME asio.txt)
install(FILES ${doc}/libcli11-dev/copyright DESTINATION Licences RENAME CLI11.txt)
install(FILES ${doc}/nlohmann-json3-dev/copyright DESTINATION Licences RENAME nlohmann_json.txt)
install(FILES ${doc}/g++-mingw-w64-x86-64-posix/copyright DESTINATION Licences RENAME gcc.txt)
install(FILES ${doc}/mingw-w64-x86-64-dev/copyright DESTINATION Licences RENAME mingw-w64.txt)

set(CPACK_GENERATOR ZIP NSIS)
set(CPACK_PACKAGE_FILE_NAME vantrel-${PROJECT_VERSION}-windows)
unset(CPACK_PACKAGING_INSTALL_PREFIX)
set(CPACK_PACKAGE_INSTALL_DIRECTORY VANTREL)
set(CPACK_NSIS_MUI_ICON ${CMAKE_BINARY_DIR}/vantrel.ico)
# CPack looks for the installer's script here before it takes its own.
list(APPEND CMAKE_MODULE_PATH ${CMAKE_SOURCE_DIR}/packaging/windows)
