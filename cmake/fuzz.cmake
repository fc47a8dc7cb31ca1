# One libFuzzer program for each target of tests/fuzz; tools/fuzz builds and runs them. Each keeps the input that
# broke a claim as crash-*.
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "VELLUMOR_FUZZ needs clang: add -DCMAKE_CXX_COMPILER=clang++")
endif()

target_compile_options(vellumor_rules PRIVATE -fsanitize=fuzzer-no-link)

file(GLOB VELLUMOR_FUZZ_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/fuzz/*.cpp)
foreach(source IN LISTS VELLUMOR_FUZZ_SOURCES)
    cmake_path(GET source STEM target)
    add_executable(fuzz_${target} ${source})
    target_link_libraries(fuzz_${target} PRIVATE vellumor_rules)
    target_compile_options(fuzz_${target} PRIVATE -fsanitize=fuzzer)
    target_link_options(fuzz_${target} PRIVATE -fsanitize=fuzzer)
endforeach()
