# How this project compiles: one list of warnings, one function a kind of target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# Programs and libraries side by side: Windows finds a DLL beside the program that needs it.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

find_package(Threads REQUIRED)
find_package(ZLIB REQUIRED)
if(NOT WIN32)
    find_package(SQLite3 REQUIRED)
endif()
include(Brcore8Resources)

function(brcore8_warnings target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wsuggest-override -Wnon-virtual-dtor
        -Wmissing-declarations -Wundef -Wimplicit-fallthrough)
    if(BRCORE8_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

# A program over the public headers, linked against the shared library as a user's would be.
function(brcore8_program target)
    add_executable(${target} ${ARGN})
    target_link_libraries(${target} PRIVATE brcore8::brcore8)
    brcore8_warnings(${target})
endfunction()
