include("${CMAKE_CURRENT_LIST_DIR}/steps.cmake")
build_client("${AREA}/find_package" "-DCMAKE_PREFIX_PATH=${AREA}/prefix"
    "-DCMAKE_FIND_ROOT_PATH=${AREA}/prefix")
run_client("${AREA}/find_package/client" "${AREA}/prefix/bin")
