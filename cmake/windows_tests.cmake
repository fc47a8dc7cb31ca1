include(cmake/rules_tests.cmake)

# One test program per layer and one CTest entry per program: each start under Wine costs more than its tests.
function(vellumor_test_program name)
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${name}/*.cpp)
    add_executable(${name}_tests ${sources})
    target_link_libraries(${name}_tests PRIVATE ${ARGN} vellumor_doctest)
    vellumor_add_test(${name} ${${name}_tests_arguments})
endfunction()

# A program that crashes under Wine can end with exit code 0, so success is what the program says of itself.
function(vellumor_add_test name)
    add_test(NAME ${VELLUMOR_ARCH}.${name} COMMAND ${name}_tests ${ARGN})
    set_tests_properties(${VELLUMOR_ARCH}.${name} PROPERTIES PASS_REGULAR_EXPRESSION "Status: SUCCESS!")
endfunction()

vellumor_add_test(rules)

# What tests of the platform-facing code share: scratch keys and folders, a stand-in for the view.
file(GLOB support_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/support/*.cpp)
add_library(vellumor_test_support STATIC ${support_sources})
target_link_libraries(vellumor_test_support PUBLIC vellumor_analysis vellumor_repair vellumor_doctest)

vellumor_test_program(windows vellumor_test_support vellumor_framework)
if(EXISTS ${PROJECT_SOURCE_DIR}/tests/checks/main.cpp)
    vellumor_test_program(checks vellumor_test_support)
endif()
if(EXISTS ${PROJECT_SOURCE_DIR}/tests/repair/main.cpp)
    vellumor_test_program(repair vellumor_test_support vellumor_driver)
endif()
vellumor_test_program(hives vellumor_test_support vellumor_hives)
vellumor_test_program(console vellumor_console vellumor_test_support $<TARGET_OBJECTS:vellumor_console_resources>)
vellumor_test_program(ui vellumor_app vellumor_test_support $<TARGET_OBJECTS:vellumor_resources>)

# Drives a running Vellumor from outside, through its window.
file(GLOB driver_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/driver/*.cpp)
add_library(vellumor_driver STATIC ${driver_sources})
target_link_libraries(vellumor_driver PUBLIC vellumor_options)

# Lets each call of the engine into the system fail, over what the tests of the real programs plant.
vellumor_test_program(faults vellumor_console vellumor_test_support vellumor_driver shlwapi winmm
    $<TARGET_OBJECTS:vellumor_console_resources>)
target_sources(faults_tests PRIVATE tests/console/console_bench.cpp tests/console/shared_modules.cpp tests/repair/repair_bench.cpp tests/repair/key_security.cpp tests/e2e/rule_plants.cpp
    tests/e2e/rule_plants_classes.cpp tests/e2e/rule_plants_machine.cpp tests/e2e/rule_plants_user.cpp)
# Which calls these are, the engine's own objects tell.
string(REGEX REPLACE "gcc-ar" "gcc-nm" engine_nm "${CMAKE_AR}")
set(engine_symbols ${PROJECT_BINARY_DIR}/engine/engine_symbols.inc)
set(engine vellumor_platform vellumor_registry vellumor_analysis vellumor_repair vellumor_hives)
list(TRANSFORM engine REPLACE "(.+)" "$<TARGET_FILE:\\1>" OUTPUT_VARIABLE engine_files)
list(JOIN engine_files "," engine_files)
add_custom_command(OUTPUT ${engine_symbols} VERBATIM
    COMMAND ${CMAKE_COMMAND} -D NM=${engine_nm} -D LIBRARIES=${engine_files} -D OUTPUT=${engine_symbols}
        -P ${PROJECT_SOURCE_DIR}/cmake/engine_symbols.cmake
    DEPENDS ${engine} ${PROJECT_SOURCE_DIR}/cmake/engine_symbols.cmake)
target_sources(faults_tests PRIVATE ${engine_symbols})
target_include_directories(faults_tests PRIVATE ${PROJECT_BINARY_DIR}/engine)

# The whole set runs the main architecture's program; the other one shows that it starts and analyses.
if(NOT VELLUMOR_ARCH STREQUAL "x86")
    set(e2e_tests_arguments --test-suite=smoke)
    set(load_tests_arguments --test-suite=smoke)
    set(hostile_tests_arguments --test-suite=smoke)
endif()
vellumor_test_program(e2e vellumor_driver vellumor_console vellumor_test_support shlwapi)
add_dependencies(e2e_tests vellumor vellumor_cli)
if(TARGET vellumor_help)
    add_dependencies(e2e_tests vellumor_help)
endif()

# What depends on when each thread runs is run on all processors too.
if(VELLUMOR_ARCH STREQUAL "x86")
    add_test(NAME x86.e2e_threads COMMAND e2e_tests --source-file=*busy_worker_test*,*cancel_test*,*closing_test*)
    set_tests_properties(x86.e2e_threads PROPERTIES PASS_REGULAR_EXPRESSION "Status: SUCCESS!" PROCESSORS 2
        RESOURCE_LOCK x86.backups)
endif()

# Runs the window on its own thread, again and again, over what the tests of the whole program plant.
vellumor_test_program(load vellumor_app vellumor_driver vellumor_test_support shlwapi $<TARGET_OBJECTS:vellumor_resources>)
foreach(source e2e/main e2e/program e2e/rule_plants e2e/rule_plants_classes e2e/rule_plants_machine e2e/rule_plants_user
        e2e/shown_rows e2e/whole_registry ui/shell)
    target_sources(load_tests PRIVATE ${PROJECT_SOURCE_DIR}/tests/${source}.cpp)
endforeach()

# Runs the real programs over a registry that means harm.
vellumor_test_program(hostile vellumor_driver vellumor_console vellumor_test_support shlwapi)
target_sources(hostile_tests PRIVATE tests/e2e/program.cpp tests/e2e/shown_rows.cpp)
add_dependencies(hostile_tests vellumor vellumor_cli)

# These make undo files and backups in the folder that they lie in, and empty it.
foreach(name repair hives console faults ui e2e load hostile)
    set_tests_properties(${VELLUMOR_ARCH}.${name} PROPERTIES RESOURCE_LOCK ${VELLUMOR_ARCH}.backups)
endforeach()

# These watch the clock, so they get the machine to themselves.
set_tests_properties(${VELLUMOR_ARCH}.ui ${VELLUMOR_ARCH}.e2e PROPERTIES PROCESSORS 2)

# In these many calls wait for Wine's server.
set_tests_properties(${VELLUMOR_ARCH}.repair ${VELLUMOR_ARCH}.e2e ${VELLUMOR_ARCH}.hostile ${VELLUMOR_ARCH}.load ${VELLUMOR_ARCH}.faults
    PROPERTIES ENVIRONMENT VELLUMOR_ONE_PROCESSOR=1)

include(cmake/bench.cmake)

# The demo's guide is such a driver too.
file(GLOB tour_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/demo/*.cpp)
add_executable(demo_tour ${tour_sources})
target_link_libraries(demo_tour PRIVATE vellumor_driver vellumor_platform)
add_dependencies(demo_tour vellumor)

add_test(NAME ${VELLUMOR_ARCH}.imports COMMAND ${PROJECT_SOURCE_DIR}/tools/check-imports ${VELLUMOR_TRIPLE}
    $<TARGET_FILE:vellumor> $<TARGET_FILE:vellumor_cli>)
add_test(NAME ${VELLUMOR_ARCH}.reproducible COMMAND ${PROJECT_SOURCE_DIR}/tools/check-reproducible ${VELLUMOR_ARCH}
    $<TARGET_FILE:vellumor> $<TARGET_FILE:vellumor_cli>)
set_tests_properties(${VELLUMOR_ARCH}.reproducible PROPERTIES PROCESSORS 2)

# The demo as a newcomer runs it, on the main architecture.
if(VELLUMOR_ARCH STREQUAL "x86")
    add_test(NAME x86.demo COMMAND ${PROJECT_SOURCE_DIR}/tools/check-demo)
    set_tests_properties(x86.demo PROPERTIES PROCESSORS 2)
endif()
