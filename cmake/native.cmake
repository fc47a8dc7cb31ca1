# Everything that needs no Windows, under the sanitizers.
target_compile_options(vellumor_options INTERFACE -g -O1 -fno-omit-frame-pointer
    -fsanitize=address,undefined -fno-sanitize-recover=all)
target_link_options(vellumor_options INTERFACE -fsanitize=address,undefined)
include(cmake/rules.cmake)
if(VELLUMOR_FUZZ)
    include(cmake/fuzz.cmake)
    return()
endif()
include(cmake/corpus.cmake)
include(cmake/rules_tests.cmake)
add_test(NAME native.rules COMMAND rules_tests)

add_test(NAME checks.format COMMAND ${PROJECT_SOURCE_DIR}/tools/check-format)
add_test(NAME checks.includes COMMAND ${PROJECT_SOURCE_DIR}/tools/check-includes)
add_test(NAME checks.help COMMAND ${PROJECT_SOURCE_DIR}/tools/check-help)
add_test(NAME checks.tidy COMMAND ${PROJECT_SOURCE_DIR}/tools/check-tidy ${PROJECT_BINARY_DIR})
set_tests_properties(checks.tidy PROPERTIES PROCESSORS 2)

# Needs what the builds for Windows have made, so it is run together with them.
add_test(NAME checks.package COMMAND ${PROJECT_SOURCE_DIR}/tools/check-package)
set_tests_properties(checks.package PROPERTIES PROCESSORS 2)
