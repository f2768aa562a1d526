# On Windows the tool chain's own libraries stand beside ours, in the build tree and installed, so
# that programs start without a search path and exceptions cross from one module into another.
set(BRCORE8_RUNTIME_DLLS "")
if(MINGW)
    foreach(name IN ITEMS libstdc++-6 libgcc_s_seh-1 libgcc_s_dw2-1 libwinpthread-1)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}.dll
            OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
        # The compiler answers with the bare name for a library that it does not have.
        if(IS_ABSOLUTE "${path}")
            file(REAL_PATH "${path}" path)
            list(APPEND BRCORE8_RUNTIME_DLLS "${path}")
        endif()
    endforeach()
    file(COPY ${BRCORE8_RUNTIME_DLLS} DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
endif()
