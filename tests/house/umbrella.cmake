# brcore8.h takes in every public header, once and in order.
# With -D WRITE=ON the list is brought up to date instead:
#   cmake -D SOURCE=. -D WRITE=ON -P tests/house/umbrella.cmake
get_filename_component(SOURCE "${SOURCE}" ABSOLUTE)
set(umbrella "${SOURCE}/include/brcore8/brcore8.h")
file(GLOB headers RELATIVE "${SOURCE}/include" "${SOURCE}/include/brcore8/*/*.h")
list(SORT headers)
list(TRANSFORM headers PREPEND "#include <")
list(TRANSFORM headers APPEND ">\n")
string(CONCAT wanted ${headers})

file(READ "${umbrella}" text)
string(FIND "${text}" "#include" begin)
string(FIND "${text}" "\n#endif" end)
string(SUBSTRING "${text}" 0 ${begin} head)
string(SUBSTRING "${text}" ${end} -1 tail)
if(WRITE)
    file(WRITE "${umbrella}" "${head}${wanted}${tail}")
elseif(NOT text STREQUAL "${head}${wanted}${tail}")
    message(FATAL_ERROR "brcore8.h is not the list of the public headers. To renew it:\n"
        "cmake -D SOURCE=. -D WRITE=ON -P tests/house/umbrella.cmake")
endif()
