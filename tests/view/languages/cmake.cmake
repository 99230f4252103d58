# 検索の道具を作る。don't run it in the source folder
cmake_minimum_required(VERSION 3.25)
project(search VERSION 1.2 LANGUAGES C CXX)

#[[ A comment over lines:
add_executable(no "open") if(x) ]]
#[=[.rst:
set(no "open")
#]=]
option(SEARCH_TESTS "検索の試験 # を作る" ON)
set(sources main.cpp search.cpp)
find_package(Qt5 REQUIRED COMPONENTS Core)

if(WIN32 AND NOT MSVC)
    list(APPEND sources ${CMAKE_CURRENT_BINARY_DIR}/icon.rc)
elseif(CMAKE_BUILD_TYPE STREQUAL "Debug") # "quoted" endif
    message(STATUS "it's a debug build: $ENV{HOME}")
endif()

add_executable(search ${sources})
target_link_libraries(search PRIVATE Qt5::Core)
target_compile_definitions(search PUBLIC $<$<CONFIG:Debug>:CHECKS=1>)

foreach(name IN ITEMS one two)
    configure_file(${name}.in ${name} @ONLY)
endforeach()
install(TARGETS search DESTINATION bin)
