# The Windows programs, static executables, and the tests that run them and their parts under Wine.
target_compile_definitions(vellumor_options INTERFACE
    _WIN32_WINNT=0x0501 WINVER=0x0501 _WIN32_IE=0x0600 WIN32_LEAN_AND_MEAN NOMINMAX STRICT)
target_compile_options(vellumor_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-flto=auto -fno-ident>)
# No time stamp: two builds of one commit are byte-identical. The deep scan recurses once per key level, each
# level with its own buffers, so the stack is reserved for the deepest tree that a key path can name.
target_link_options(vellumor_options INTERFACE -static -s -flto=auto -Wl,--no-insert-timestamp
    -Wl,--dynamicbase,--nxcompat -Wl,--stack,8388608)

# Archives of objects for link-time optimisation need the compiler's own archiver.
if(CMAKE_CXX_COMPILER_AR)
    set(CMAKE_AR ${CMAKE_CXX_COMPILER_AR})
endif()
include(cmake/rules.cmake)

# One library per folder; each names the folders that it may include from.
function(vellumor_folder name)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${name}/*.cpp)
    list(FILTER sources EXCLUDE REGEX "_rules\\.cpp$|/main\\.cpp$|/xp_imports\\.cpp$")
    add_library(vellumor_${name} STATIC ${sources})
    target_link_libraries(vellumor_${name} PUBLIC vellumor_options vellumor_rules ${ARGN})
endfunction()

vellumor_folder(platform shell32)
vellumor_folder(framework vellumor_platform comctl32 gdi32)
vellumor_folder(registry vellumor_platform)
vellumor_folder(analysis vellumor_registry shlwapi)
vellumor_folder(repair vellumor_registry)
vellumor_folder(hives vellumor_registry)
vellumor_folder(ui vellumor_framework vellumor_analysis vellumor_repair vellumor_hives)
vellumor_folder(app vellumor_ui)

# The about box tells which commit it was built from. A copy of the sources without a history is told by hand.
set(VELLUMOR_COMMIT "" CACHE STRING "The commit that the about box names; empty: the one that is checked out")
add_custom_target(vellumor_commit BYPRODUCTS ${PROJECT_BINARY_DIR}/include/commit_text.h
    COMMAND ${CMAKE_COMMAND} -D SOURCE=${PROJECT_SOURCE_DIR} -D HEADER=${PROJECT_BINARY_DIR}/include/commit_text.h
        -D COMMIT=${VELLUMOR_COMMIT} -P ${PROJECT_SOURCE_DIR}/cmake/commit.cmake)
target_include_directories(vellumor_platform PRIVATE ${PROJECT_BINARY_DIR}/include)
add_dependencies(vellumor_platform vellumor_commit)

add_library(vellumor_resources OBJECT resources/vellumor.rc)
target_include_directories(vellumor_resources PRIVATE ${PROJECT_SOURCE_DIR})
file(GLOB resource_files CONFIGURE_DEPENDS resources/*.h resources/*.manifest resources/*.ico resources/*.bmp)
set_source_files_properties(resources/vellumor.rc PROPERTIES OBJECT_DEPENDS "${resource_files}")

# Its symbol must be there before the run-time libraries ask for it, which an archive cannot promise.
add_library(vellumor_xp_imports OBJECT platform/xp_imports.cpp)
target_link_libraries(vellumor_xp_imports PRIVATE vellumor_options)
target_compile_options(vellumor_xp_imports PRIVATE -fno-lto)

add_executable(vellumor WIN32 app/main.cpp $<TARGET_OBJECTS:vellumor_resources> $<TARGET_OBJECTS:vellumor_xp_imports>)
target_link_libraries(vellumor PRIVATE vellumor_app)

option(VELLUMOR_CONSOLE "Build the program for scripts, which needs CLI11 and nlohmann/json" ON)
if(VELLUMOR_CONSOLE)
    include(cmake/console.cmake)
endif()
include(cmake/help.cmake)

option(VELLUMOR_TESTS "Build the tests, which run under Wine" ON)
if(VELLUMOR_TESTS)
    include(cmake/windows_tests.cmake)
endif()
