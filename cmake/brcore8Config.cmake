# The installed package: the target brcore8::brcore8 and the function brcore8_string_resources.
include("${CMAKE_CURRENT_LIST_DIR}/brcore8Targets.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/Brcore8Resources.cmake")
