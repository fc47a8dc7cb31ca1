# One libFuzzer program for each parser of registry text:
#   cmake --preset native -B build/fuzz -DVELLUMOR_FUZZ=ON -DCMAKE_CXX_COMPILER=clang++
#   cmake --build build/fuzz
# Each keeps the input that broke a claim as crash-*; CTest runs each for a minute.
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "VELLUMOR_FUZZ needs clang: add -DCMAKE_CXX_COMPILER=clang++")
endif()

target_compile_options(vellumor_rules PRIVATE -fsanitize=fuzzer-no-link)

file(GLOB VELLUMOR_FUZZ_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/fuzz/*.cpp)
foreach(source IN LISTS VELLUMOR_FUZZ_SOURCES)
    cmake_path(GET source STEM parser)
    add_executable(fuzz_${parser} ${source})
    target_link_libraries(fuzz_${parser} PRIVATE vellumor_rules)
    target_compile_options(fuzz_${parser} PRIVATE -fsanitize=fuzzer)
    target_link_options(fuzz_${parser} PRIVATE -fsanitize=fuzzer)
    add_test(NAME fuzz.${parser} COMMAND fuzz_${parser} -max_total_time=60 -max_len=1024
        -dict=${PROJECT_SOURCE_DIR}/tests/fuzz/tokens.dict)
endforeach()
