# The program for scripts. Only it uses libraries that are not ours, which are headers alone.
vellumor_folder(console vellumor_framework vellumor_analysis vellumor_repair vellumor_hives)
include(cmake/headers.cmake)
vellumor_headers(vellumor_console_headers CLI/CLI.hpp nlohmann/json.hpp)
target_link_libraries(vellumor_console PUBLIC vellumor_console_headers)
target_compile_definitions(vellumor_console PRIVATE CLI11_HAS_FILESYSTEM=0)
add_library(vellumor_console_resources OBJECT resources/console.rc)
target_include_directories(vellumor_console_resources PRIVATE ${PROJECT_SOURCE_DIR})
set_source_files_properties(resources/console.rc PROPERTIES OBJECT_DEPENDS "${resource_files}")
add_executable(vellumor_cli console/main.cpp $<TARGET_OBJECTS:vellumor_console_resources>
    $<TARGET_OBJECTS:vellumor_xp_imports>)
set_target_properties(vellumor_cli PROPERTIES OUTPUT_NAME vellumor-cli)
target_link_libraries(vellumor_cli PRIVATE vellumor_console)
