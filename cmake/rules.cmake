# The pure text rules: standard library only, so they build for every target. A file that starts to need
# <windows.h> fails the native build, which is the fence.
file(GLOB_RECURSE VELLUMOR_RULES CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/platform/*_rules.cpp
    ${PROJECT_SOURCE_DIR}/registry/*_rules.cpp
    ${PROJECT_SOURCE_DIR}/analysis/*_rules.cpp
    ${PROJECT_SOURCE_DIR}/repair/*_rules.cpp
    ${PROJECT_SOURCE_DIR}/hives/*_rules.cpp
    ${PROJECT_SOURCE_DIR}/app/*_rules.cpp
    ${PROJECT_SOURCE_DIR}/console/*_rules.cpp)

add_library(vellumor_rules STATIC ${VELLUMOR_RULES})
target_link_libraries(vellumor_rules PUBLIC vellumor_options)
