# What the scripts beside this one share: a step that must succeed, and running the client.
function(step)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}\nfailed with ${status}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# run_client PROGRAM LIBRARY_FOLDER: it says one known line.
function(run_client program folder)
    set(ENV{LD_LIBRARY_PATH} "${folder}")
    set(ENV{WINEPATH} "Z:${folder}")
    step(${EMULATOR} "${program}${SUFFIX}")
    if(NOT output MATCHES "^client: Hell0, w0rld[\r\n]+$")
        message(FATAL_ERROR "${program} said: ${output}")
    endif()
endfunction()

# build_client FOLDER OPTION...: configures and builds client/ in a folder of its own.
function(build_client folder)
    file(REMOVE_RECURSE "${folder}")
    set(options "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}" "-DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}")
    if(TOOLCHAIN)
        list(APPEND options "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
    else()
        list(APPEND options "-DCMAKE_CXX_COMPILER=${CXX}")
    endif()
    step(${CMAKE_COMMAND} -S "${SOURCE}/tests/install/client" -B "${folder}" -G Ninja
        ${options} ${ARGN})
    step(${CMAKE_COMMAND} --build "${folder}" --target client)
endfunction()
