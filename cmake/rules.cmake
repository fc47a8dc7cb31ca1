# The pure text rules: standard library only, so they build for every target. A file that starts to need
# <windows.h> fails the native build, which is the fence.
file(GLOB_RECURSE VELLUMOR_RULES CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/registry/*_rules.cpp
    ${PROJECT_SOURCE_DIR}/analysis/*_rules.cpp
    ${PROJECT_SOURCE_DIR}/app/*_rules.cpp)
file(GLOB VELLUMOR_RULES_TESTS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/rules/*.cpp)

add_library(vellumor_rules STATIC ${VELLUMOR_RULES})
target_link_libraries(vellumor_rules PUBLIC vellumor_options)

# Debian keeps doctest's header in the native include folder, where a cross compiler does not look.
find_path(DOCTEST_INCLUDE doctest/doctest.h PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
add_library(vellumor_doctest INTERFACE)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/include)
file(CREATE_LINK ${DOCTEST_INCLUDE}/doctest ${PROJECT_BINARY_DIR}/include/doctest SYMBOLIC)
target_include_directories(vellumor_doctest SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/include)

add_executable(rules_tests ${VELLUMOR_RULES_TESTS})
target_link_libraries(rules_tests PRIVATE vellumor_rules vellumor_doctest)
