cmake_minimum_required(VERSION 3.25)

# Writes the commit of a source tree into a header: cmake -D SOURCE=... -D HEADER=... [-D COMMIT=...] -P commit.cmake
# An unchanged header keeps its time, so that nothing is compiled anew.
if(NOT COMMIT)
    set(COMMIT "unknown")
    execute_process(COMMAND git -C "${SOURCE}" rev-parse --short=12 HEAD
        OUTPUT_VARIABLE hash OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE result)
    if(result EQUAL 0)
        set(COMMIT "${hash}")
        execute_process(COMMAND git -C "${SOURCE}" status --porcelain --untracked-files=no
            OUTPUT_VARIABLE changes ERROR_QUIET)
        if(changes)
            string(APPEND COMMIT "+")
        endif()
    endif()
endif()
file(CONFIGURE OUTPUT "${HEADER}" CONTENT "#define VELLUMOR_COMMIT \"@COMMIT@\"\n" @ONLY)
