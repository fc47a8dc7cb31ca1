include_guard(GLOBAL)

# vellumor_headers(NAME HEADER...): a target for libraries of headers alone. Debian keeps them in the native include
# folder, where a cross compiler must not look, so a folder of links to them alone is made.
function(vellumor_headers name)
    add_library(${name} INTERFACE)
    set(folder ${PROJECT_BINARY_DIR}/headers/${name})
    file(MAKE_DIRECTORY ${folder})
    foreach(header IN LISTS ARGN)
        string(MAKE_C_IDENTIFIER "include_of_${header}" place)
        find_path(${place} ${header} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
        cmake_path(GET header PARENT_PATH library)
        file(CREATE_LINK ${${place}}/${library} ${folder}/${library} SYMBOLIC)
    endforeach()
    target_include_directories(${name} SYSTEM INTERFACE ${folder})
endfunction()
