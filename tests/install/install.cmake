include("${CMAKE_CURRENT_LIST_DIR}/steps.cmake")
file(REMOVE_RECURSE "${AREA}")
step(${CMAKE_COMMAND} --install "${BUILD}" --prefix "${AREA}/first")
# Nothing in it may remember where it was installed.
file(RENAME "${AREA}/first" "${AREA}/prefix")
