# CLI11 is headers only, so the package of the building machine serves every target; it is taken
# by a path of its own because the system's other headers must not reach a cross compiler.
find_path(BRCORE8_CLI11_HEADERS CLI/CLI.hpp NO_CMAKE_FIND_ROOT_PATH)
if(NOT BRCORE8_CLI11_HEADERS)
    message(FATAL_ERROR "CLI11 is missing: install the package libcli11-dev")
endif()
file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/cli11")
file(CREATE_LINK "${BRCORE8_CLI11_HEADERS}/CLI" "${PROJECT_BINARY_DIR}/cli11/CLI" SYMBOLIC)
add_library(brcore8_cli11 INTERFACE)
target_include_directories(brcore8_cli11 SYSTEM INTERFACE "${PROJECT_BINARY_DIR}/cli11")
