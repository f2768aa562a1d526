# The installed command finds its libraries by itself, and shells find what it tells about itself.
include("${CMAKE_CURRENT_LIST_DIR}/steps.cmake")
if(NOT EMULATOR)
    foreach(page IN ITEMS man/man1/brcore8.1 bash-completion/completions/brcore8
                          zsh/site-functions/_brcore8)
        if(NOT EXISTS "${AREA}/prefix/share/${page}")
            message(FATAL_ERROR "${page} is not installed")
        endif()
    endforeach()
endif()
step(${EMULATOR} "${AREA}/prefix/bin/brcore8${SUFFIX}" --version)
if(NOT output MATCHES "8\\.0")
    message(FATAL_ERROR "brcore8 --version said: ${output}")
endif()
