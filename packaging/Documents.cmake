# What a system expects of a program besides the program: manual pages, made from the programs' own help; the changelog;
# completion for the shell; the entry for software catalogues.
find_program(GZIP gzip REQUIRED)
set(documents ${CMAKE_BINARY_DIR}/documents)
file(MAKE_DIRECTORY ${documents})

set(pages)
function(add_manual_page program summary)
    add_custom_command(OUTPUT ${documents}/${program}.1.gz
        COMMAND ${CMAKE_COMMAND} -DPROGRAM=$<TARGET_FILE:${program}> -DNAME=${program} -DVERSION=${PROJECT_VERSION}
                "-DSUMMARY=${summary}" -DPAGE=${documents}/${program}.1 -P ${CMAKE_SOURCE_DIR}/packaging/ManualPage.cmake
        COMMAND ${GZIP} -9nf ${documents}/${program}.1
        DEPENDS ${program} ${CMAKE_SOURCE_DIR}/packaging/ManualPage.cmake VERBATIM)
    set(pages ${pages} ${documents}/${program}.1.gz PARENT_SCOPE)
endfunction()
add_manual_page(vantrelctl "set-up files of the K5216-505 communication board, and the board itself")
if(TARGET vantrel)
    add_manual_page(vantrel "set up, download and watch the K5216-505 communication board")
endif()

add_custom_command(OUTPUT ${documents}/changelog.gz
    COMMAND ${CMAKE_COMMAND} -E copy ${CMAKE_SOURCE_DIR}/packaging/changelog ${documents}/changelog
    COMMAND ${GZIP} -9nf ${documents}/changelog
    DEPENDS ${CMAKE_SOURCE_DIR}/packaging/changelog VERBATIM)
add_custom_target(documents ALL DEPENDS ${pages} ${documents}/changelog.gz)

install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${documents}/changelog.gz DESTINATION ${document_folder})
install(FILES packaging/completion.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME vantrelctl)
if(TARGET vantrel)
    install(FILES packaging/completion.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME vantrel)
    install(FILES packaging/invalid.vantrel.vantrel.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
endif()
