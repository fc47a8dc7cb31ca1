# The inputs that are kept for each fuzz target, run by the ordinary compiler: one program and one test for each.
file(GLOB VELLUMOR_FUZZ_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/fuzz/*.cpp)
foreach(source IN LISTS VELLUMOR_FUZZ_SOURCES)
    cmake_path(GET source STEM target)
    add_executable(replay_${target} ${source} ${PROJECT_SOURCE_DIR}/tests/fuzz/replay/main.cpp)
    target_link_libraries(replay_${target} PRIVATE vellumor_rules)
    add_test(NAME native.corpus.${target} COMMAND replay_${target} ${PROJECT_SOURCE_DIR}/tests/corpus/${target})
endforeach()
