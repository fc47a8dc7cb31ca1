file(GLOB VELLUMOR_RULES_TESTS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/rules/*.cpp)

include(cmake/headers.cmake)
vellumor_headers(vellumor_doctest doctest/doctest.h)

add_executable(rules_tests ${VELLUMOR_RULES_TESTS})
target_link_libraries(rules_tests PRIVATE vellumor_rules vellumor_doctest)
