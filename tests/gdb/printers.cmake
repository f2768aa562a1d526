# One row a variable of printed.cpp: its name and what gdb shows.
set(rows
    [[text = "Hello"]]
    [[empty = ""]]
    [[quoted = "say \"\\\""]]
    [[zero = "a\000b"]]
    [[bytes = "\377\001"]]
    [[shared = "Hello"]]
    [[table = 2 of 2 = {"Hello", "two"}]]
    [[list = 2 elements = {7, 8}]]
    [[map = 2 elements = {["one"] = 1, ["two"] = 2}]]
    [[nothing = 0 elements]]
    [[null = <no text: null>]]
    [[garbage = <no text: unreadable>]])
set(commands "")
foreach(row IN LISTS rows)
    string(REGEX REPLACE " =.*" "" name "${row}")
    list(APPEND commands -ex "printf \"${name} = \"" -ex "output ${name}" -ex "echo \\n")
endforeach()
execute_process(
    COMMAND ${GDB} -batch -nx -q -ex "set disable-randomization off" -x "${PRINTERS}"
        -ex "break stop_here" -ex run -ex up ${commands} -ex kill "${PROGRAM}"
    OUTPUT_VARIABLE output ERROR_VARIABLE output)
foreach(row IN LISTS rows)
    string(FIND "${output}" "\n${row}\n" place)
    if(place EQUAL -1)
        message(SEND_ERROR "gdb does not show: ${row}")
        set(failed ON)
    endif()
endforeach()
if(failed)
    message(FATAL_ERROR "${output}")
endif()
