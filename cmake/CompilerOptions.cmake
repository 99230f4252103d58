# What every target of the project is compiled with: an interface target that
# sarvik_add_library and the programs link.

add_library(sarvik_compile_options INTERFACE)
target_compile_definitions(sarvik_compile_options INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_FOREACH
    QT_NO_URL_CAST_FROM_STRING
    QT_USE_QSTRINGBUILDER
    QT_DEPRECATED_WARNINGS
    $<$<CONFIG:Release>:QT_NO_DEBUG>)
target_compile_options(sarvik_compile_options INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall;-Wextra;-Wpedantic;-Wshadow;-Wnon-virtual-dtor;-Woverloaded-virtual>
    $<$<COMPILE_LANGUAGE:CXX>:-Wconversion;-Wno-sign-conversion;-Wimplicit-fallthrough;-Werror>)

if(MINGW)
    # GCC 12 for Windows sees an overflow in the toolkit's own string builder where
    # four or more strings are joined and a loop stands between; there is none.
    target_compile_options(sarvik_compile_options INTERFACE
        $<$<COMPILE_LANGUAGE:CXX>:-Wno-stringop-overflow>)
endif()

set(SARVIK_SANITIZE "" CACHE STRING
    "Sanitizers, as -fsanitize= takes them: \"address,undefined\" or \"thread\"")
if(SARVIK_SANITIZE)
    target_compile_options(sarvik_compile_options INTERFACE
        -fsanitize=${SARVIK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(sarvik_compile_options INTERFACE -fsanitize=${SARVIK_SANITIZE})
endif()

option(SARVIK_COVERAGE "Instrument for line coverage (gcov)" OFF)
if(SARVIK_COVERAGE)
    target_compile_options(sarvik_compile_options INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(sarvik_compile_options INTERFACE --coverage)
endif()

find_program(SARVIK_CCACHE ccache)
if(SARVIK_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${SARVIK_CCACHE})
endif()
