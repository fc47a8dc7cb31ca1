# Measures the programs; ./bench runs it. It counts the calls of the engine, which is linked into it for that.
file(GLOB bench_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/benchmark/*.cpp)
add_executable(vellumor_bench ${bench_sources} $<TARGET_OBJECTS:vellumor_resources>)
target_link_libraries(vellumor_bench PRIVATE vellumor_app vellumor_driver vellumor_test_support
    vellumor_console psapi)
add_dependencies(vellumor_bench vellumor vellumor_cli)

# The rows over that registry, a small one here; nothing is measured.
if(VELLUMOR_ARCH STREQUAL "x86")
    add_test(NAME x86.bench_rows COMMAND vellumor_bench --scale 0.02 --rounds 1 --only rows)
    set_tests_properties(x86.bench_rows PROPERTIES PASS_REGULAR_EXPRESSION "Rows are equal" PROCESSORS 2)
endif()
