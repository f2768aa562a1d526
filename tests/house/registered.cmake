# A test that is not compiled proves nothing: every test source and every fuzz target of the tree
# is in the build.
file(READ "${BUILD}/compile_commands.json" commands)
file(GLOB_RECURSE tests "${SOURCE}/tests/*_test.cpp" "${SOURCE}/fuzz/*_fuzz.cpp")
set(missing "")
foreach(test IN LISTS tests)
    string(FIND "${commands}" "\"${test}\"" place)
    if(place EQUAL -1)
        list(APPEND missing "${test}")
    endif()
endforeach()
if(missing)
    message(FATAL_ERROR "not in the build: ${missing}")
endif()
