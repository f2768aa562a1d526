# Other modules import these by exactly their names; what else is exported are C++ names, variables
# and the C library's own.
set(entry_points CoreLibMain SAssert SBuildNumber SExceptionActivateDialog SExceptionDialog
    SExceptionHasDialog SGetCoreInstance SGetProcAddress SIsValidAddress SMajorVersion
    SMinorVersion SPlatform STrace STraceAssert STraceEx STraceWarning SWarning)
execute_process(COMMAND ${LISTER} "${LIBRARY}" OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
# Of a library for Windows the names that it imports are listed too, before its own.
string(REGEX REPLACE ".*\\[Ordinal/Name Pointer\\] Table" "" listing "${listing}")
# A name ends its line; a bracket or a blank stands before it.
string(REGEX MATCHALL "[] ] ?(S[A-Z]|Core)[A-Za-z0-9_@]*\n" exported "${listing}")
list(TRANSFORM exported REPLACE "[] \n]" "")
list(SORT exported)
if(NOT exported STREQUAL entry_points)
    message(FATAL_ERROR "exported:\n${exported}\nwanted:\n${entry_points}")
endif()
