# The installed command finds its libraries by itself.
include("${CMAKE_CURRENT_LIST_DIR}/steps.cmake")
step(${EMULATOR} "${AREA}/prefix/bin/brcore8${SUFFIX}" --version)
if(NOT output MATCHES "8\\.0")
    message(FATAL_ERROR "brcore8 --version said: ${output}")
endif()
