# What the programs need to be at home on Windows: nothing beside themselves but Windows' own libraries, an icon, a version
# that the file's properties show, and the manifest.

if(MINGW)
    # The compiler's own run-time libraries would otherwise have to travel along.
    target_link_options(vantrel_flags INTERFACE -static)
endif()

# The one drawing of the icon, in the sizes that Windows asks for.
set(icon ${CMAKE_BINARY_DIR}/vantrel.ico)
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(ICOTOOL icotool REQUIRED)
set(pictures)
foreach(side IN ITEMS 16 20 24 32 40 48 64 256)
    set(picture ${CMAKE_BINARY_DIR}/icon-${side}.png)
    add_custom_command(OUTPUT ${picture} DEPENDS ${CMAKE_SOURCE_DIR}/packaging/vantrel.svg
        COMMAND ${RSVG_CONVERT} -w ${side} -h ${side} -o ${picture} ${CMAKE_SOURCE_DIR}/packaging/vantrel.svg)
    list(APPEND pictures ${picture})
endforeach()
add_custom_command(OUTPUT ${icon} DEPENDS ${pictures} COMMAND ${ICOTOOL} --create --output=${icon} ${pictures})
add_custom_target(vantrel_icon DEPENDS ${icon})

# Icon, version and manifest of one program; `description` is what Windows calls it.
function(add_windows_resource program description)
    set(VANTREL_PROGRAM ${program})
    set(VANTREL_DESCRIPTION "${description}")
    set(resource ${CMAKE_BINARY_DIR}/${program}.rc)
    configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/program.rc.in ${resource} @ONLY)
    set_source_files_properties(${resource} PROPERTIES
        OBJECT_DEPENDS "${icon};${CMAKE_SOURCE_DIR}/packaging/windows/program.manifest")
    target_sources(${program} PRIVATE ${resource})
    add_dependencies(${program} vantrel_icon)
endfunction()

add_windows_resource(vantrelctl "VANTREL console program")
if(TARGET vantrel)
    # No console window beside the program's own.
    set_target_properties(vantrel PROPERTIES WIN32_EXECUTABLE ON)
    add_windows_resource(vantrel "VANTREL")
endif()
