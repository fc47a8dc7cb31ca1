# VellumorHelp.chm beside the program. Its tools are programs of Debian; a build on Windows mostly has none of them.
find_program(VELLUMOR_BASH bash)
find_program(VELLUMOR_MARKDOWN cmark-gfm)
find_program(VELLUMOR_HELP_COMPILER chmcmd)
mark_as_advanced(VELLUMOR_BASH VELLUMOR_MARKDOWN VELLUMOR_HELP_COMPILER)
if(NOT VELLUMOR_BASH OR NOT VELLUMOR_MARKDOWN OR NOT VELLUMOR_HELP_COMPILER)
    message(WARNING "VellumorHelp.chm will not be made: that takes bash, cmark-gfm and chmcmd (Debian's packages "
        "cmark-gfm and fp-utils). Everything else is built; the program's Help command then has nothing to show.")
    return()
endif()

file(GLOB help_sources CONFIGURE_DEPENDS docs/help/* tools/lib/help_*.awk)
add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/VellumorHelp.chm
    COMMAND ${VELLUMOR_BASH} ${PROJECT_SOURCE_DIR}/tools/build-help ${PROJECT_BINARY_DIR}
    DEPENDS ${help_sources} docs/checks.md tools/build-help
    COMMENT "Making VellumorHelp.chm" VERBATIM)
add_custom_target(vellumor_help ALL DEPENDS ${PROJECT_BINARY_DIR}/VellumorHelp.chm)
