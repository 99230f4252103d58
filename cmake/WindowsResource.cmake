# sarvik_add_windows_resource(PROGRAM DESCRIPTION [ICON])
#
# Gives a program its version, its manifest and its icon. Nothing on other
# systems.
function(sarvik_add_windows_resource program description)
    if(NOT WIN32)
        return()
    endif()
    cmake_parse_arguments(ARG "ICON" "" "" ${ARGN})
    # A number of its own, not the two digits that people read: 00 is 0.
    math(EXPR version_minor "${PROJECT_VERSION_MINOR}")
    set(icon "")
    if(ARG_ICON)
        set(icon "1 ICON \"${PROJECT_SOURCE_DIR}/icon/sarvik.ico\"")
    endif()
    set(resource ${CMAKE_CURRENT_BINARY_DIR}/${program}.rc)
    configure_file(${PROJECT_SOURCE_DIR}/app/windows/sarvik.rc.in ${resource} @ONLY)
    target_sources(${program} PRIVATE ${resource})
    set_source_files_properties(${resource} PROPERTIES
        OBJECT_DEPENDS
            "${PROJECT_SOURCE_DIR}/icon/sarvik.ico;${PROJECT_SOURCE_DIR}/app/windows/sarvik.manifest")
endfunction()
