include("${CMAKE_CURRENT_LIST_DIR}/steps.cmake")
build_client("${BUILD}-client" "-DBRCORE8_SOURCE=${SOURCE}" "-DBRCORE8_WERROR=ON")
run_client("${BUILD}-client/client" "${BUILD}-client/brcore8/bin")
