# Measures the programs; ./bench runs it. It counts the calls of the engine, which is linked into it for that.
file(GLOB bench_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/benchmark/*.cpp)
add_executable(vellumor_bench ${bench_sources} $<TARGET_OBJECTS:vellumor_resources>)
target_link_libraries(vellumor_bench PRIVATE vellumor_app vellumor_driver vellumor_test_support
    vellumor_console_headers psapi)
add_dependencies(vellumor_bench vellumor vellumor_cli)
