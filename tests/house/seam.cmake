# Only the platform folders know which system they are compiled for.
file(GLOB_RECURSE sources
    "${SOURCE}/include/*.h" "${SOURCE}/src/*.h" "${SOURCE}/src/*.cpp"
    "${SOURCE}/tools/*.h" "${SOURCE}/tools/*.cpp" "${SOURCE}/examples/*.cpp")
list(FILTER sources EXCLUDE REGEX "/platform/")
set(found "")
foreach(source IN LISTS sources)
    file(STRINGS "${source}" lines REGEX
        "^ *# *(if|ifdef|ifndef|elif).*(WIN32|WIN64|MINGW|linux|LINUX|unix|MSC_VER|[^A-Z]_WINDOWS)")
    foreach(line IN LISTS lines)
        string(APPEND found "${source}: ${line}\n")
    endforeach()
endforeach()
if(found)
    message(FATAL_ERROR "a system is asked for outside the platform folders:\n${found}")
endif()
