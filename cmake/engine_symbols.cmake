cmake_minimum_required(VERSION 3.25)

# Writes the functions that some libraries leave to the linker as C texts, one on each line:
# cmake -D NM=... -D LIBRARIES=a.a,b.a -D OUTPUT=... -P engine_symbols.cmake
string(REPLACE "," ";" libraries "${LIBRARIES}")
execute_process(COMMAND ${NM} --undefined-only --format=posix ${libraries}
    OUTPUT_VARIABLE listing ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+ U" lines "${listing}")
set(names "")
foreach(line IN LISTS lines)
    # On x86 a name has an underscore in front, and its arguments' size behind.
    string(REGEX REPLACE "^(__imp_)?(.*) U$" "\\2" name "${line}")
    string(REGEX REPLACE "@[0-9]+$" "" name "${name}")
    list(APPEND names "${name}")
    string(REGEX REPLACE "^_" "" name "${name}")
    list(APPEND names "${name}")
endforeach()
list(REMOVE_DUPLICATES names)
list(FILTER names INCLUDE REGEX "^[A-Za-z_][A-Za-z0-9_]*$")
list(FILTER names EXCLUDE REGEX "^_*Z")
list(SORT names)
list(JOIN names "\",\n\"" text)
file(CONFIGURE OUTPUT "${OUTPUT}" CONTENT "\"${text}\"\n" @ONLY)
