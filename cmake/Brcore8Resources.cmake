# String resources of a program or library, from one list for every system (see
# brcore8/platform/resources.h). On Windows the project must have enabled the language RC.
#
#     brcore8_string_resources(my_program strings.def)
function(brcore8_string_resources target list)
    get_filename_component(list "${list}" ABSOLUTE)
    get_filename_component(name "${list}" NAME_WE)
    set(base "${CMAKE_CURRENT_BINARY_DIR}/${target}_${name}_resources")
    if(WIN32)
        set(source "${base}.rc")
        file(CONFIGURE OUTPUT "${source}" @ONLY CONTENT [[
#define BRSTRING(id, text) id text
STRINGTABLE
BEGIN
#include "@list@"
END
]])
    else()
        set(source "${base}.cpp")
        # Early, because static initialisers may load strings.
        file(CONFIGURE OUTPUT "${source}" @ONLY CONTENT [==[
#include <brcore8/platform/resources.h>
namespace {
#define BRSTRING(id, text) {id, text},
constexpr brcore8::StringResource kStrings[] = {
#include "@list@"
};
[[gnu::init_priority(101)]] brcore8::StringResources registration(
    SThisModule(), kStrings, sizeof kStrings / sizeof kStrings[0]);
}  // namespace
]==])
    endif()
    set_source_files_properties("${source}" PROPERTIES OBJECT_DEPENDS "${list}")
    target_sources(${target} PRIVATE "${source}")
endfunction()
