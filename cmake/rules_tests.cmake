file(GLOB VELLUMOR_RULES_TESTS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/rules/*.cpp)

# Debian keeps doctest's header in the native include folder, where a cross compiler does not look.
find_path(DOCTEST_INCLUDE doctest/doctest.h PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
add_library(vellumor_doctest INTERFACE)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/include)
file(CREATE_LINK ${DOCTEST_INCLUDE}/doctest ${PROJECT_BINARY_DIR}/include/doctest SYMBOLIC)
target_include_directories(vellumor_doctest SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/include)

add_executable(rules_tests ${VELLUMOR_RULES_TESTS})
target_link_libraries(rules_tests PRIVATE vellumor_rules vellumor_doctest)
