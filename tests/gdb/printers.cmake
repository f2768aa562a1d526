# One row a variable of printed.cpp: its name and what gdb shows, addresses as a bare 0x.
set(item "_vptr.SDListItem = 0x <vtable for (anonymous namespace)::Item+16>, next_ = 0x, previous_ = 0x")
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
    [[texts = 2 of 4 = {"b", "a"}]]
    "items = 2 elements = {{<SDListItem> = {${item}}, number = 1}, {<SDListItem> = {${item}}, number = 2}}"
    [[sorted = 2 elements = {[1] = "one", [2] = "two"}]]
    [[unsorted = 2 elements = {["two"] = 2, ["one"] = 1}]]
    [[folded = 2 elements = {["a"] = "3", ["b"] = "1"}]]
    [[settings = 2 elements = {["b"] = "1", ["a"] = "2"}]]
    [[unset = 0 elements]]
    [[keywords = 1 elements = {["if"] = {id = 7}}]]
    [[symbols = 1 elements = {[3] = 1 elements = {["A"] = {category = 3, numeric = 1, name = "A", value = "5"}}}]]
    [[null = <no text: null>]]
    [[garbage = <no text: unreadable>]])
set(commands "")
foreach(row IN LISTS rows)
    string(REGEX REPLACE " =.*" "" name "${row}")
    list(APPEND commands -ex "printf \"${name} = \"" -ex "output ${name}" -ex "echo \\n")
endforeach()
# Once with the script that the library carries, once with the file.
function(check way)
    execute_process(
        COMMAND ${GDB} -batch -nx -q ${ARGN} -ex "set disable-randomization off"
            -ex "break stop_here" -ex run -ex up ${commands} -ex kill "${PROGRAM}"
        OUTPUT_VARIABLE output ERROR_VARIABLE output)
    string(REGEX REPLACE "0x[0-9a-f]+" "0x" output "${output}")
    foreach(row IN LISTS rows)
        string(FIND "${output}" "\n${row}\n" place)
        if(place EQUAL -1)
            message(SEND_ERROR "gdb ${way} does not show: ${row}")
            set(failed ON)
        endif()
    endforeach()
    if(failed)
        message(FATAL_ERROR "${output}")
    endif()
endfunction()
check("by itself" -iex "set auto-load safe-path /")
check("with the file" -iex "set auto-load no" -x "${PRINTERS}")
