# A file that is longer has two rooms in it. Generated tables do not count.
file(GLOB_RECURSE sources
    "${SOURCE}/include/*.h" "${SOURCE}/src/*.h" "${SOURCE}/src/*.cpp" "${SOURCE}/tools/*.h"
    "${SOURCE}/tools/*.cpp" "${SOURCE}/examples/*.h" "${SOURCE}/examples/*.cpp"
    "${SOURCE}/tests/*.h" "${SOURCE}/tests/*.cpp" "${SOURCE}/bench/*.cpp" "${SOURCE}/fuzz/*.cpp")
set(found "")
foreach(source IN LISTS sources)
    file(READ "${source}" text)
    string(REGEX REPLACE "[^\n]" "" ends "${text}")
    string(LENGTH "${ends}" lines)
    if(lines GREATER 600)
        string(APPEND found "${source}: ${lines} lines\n")
    endif()
endforeach()
if(found)
    message(FATAL_ERROR "longer than 600 lines:\n${found}")
endif()
