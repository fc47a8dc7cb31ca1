# Everything that needs no Windows, under the sanitizers.
target_compile_options(vellumor_options INTERFACE -g -O1 -fno-omit-frame-pointer
    -fsanitize=address,undefined -fno-sanitize-recover=all)
target_link_options(vellumor_options INTERFACE -fsanitize=address,undefined)
include(cmake/rules.cmake)
add_test(NAME native.rules COMMAND rules_tests)
