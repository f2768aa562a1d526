# Cross-compiling for Windows with MinGW-w64 and its POSIX thread model; the two files that include
# this one say for which processor.
set(CMAKE_SYSTEM_NAME Windows)
set(BRCORE8_MINGW "${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32")
set(CMAKE_CXX_COMPILER "${BRCORE8_MINGW}-g++-posix")
set(CMAKE_RC_COMPILER "${BRCORE8_MINGW}-windres")
list(APPEND CMAKE_FIND_ROOT_PATH "/usr/${BRCORE8_MINGW}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Windows 7 and later; printf as the C and C++ standards have it.
set(CMAKE_CXX_FLAGS_INIT "-D_WIN32_WINNT=0x0601 -D__USE_MINGW_ANSI_STDIO=1")
# Linked into the library itself, so that no further DLL goes with it.
set(ZLIB_LIBRARY "/usr/${BRCORE8_MINGW}/lib/libz.a" CACHE FILEPATH "zlib")
