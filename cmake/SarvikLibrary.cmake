# sarvik_add_library(TARGET SOURCES... [UNIX ...] [WIN32 ...])
#
# One room of the house: a static library whose headers are included by their
# path from the top of the tree ("engine/CodeSet.h"). Sources after UNIX or
# WIN32 are built on that platform only; they are the one place for platform
# code.
function(sarvik_add_library target)
    cmake_parse_arguments(ARG "" "" "UNIX;WIN32" ${ARGN})
    if(WIN32)
        set(platform_sources ${ARG_WIN32})
    else()
        set(platform_sources ${ARG_UNIX})
    endif()
    add_library(${target} STATIC ${ARG_UNPARSED_ARGUMENTS} ${platform_sources})
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${target} PRIVATE sarvik_compile_options)
endfunction()
