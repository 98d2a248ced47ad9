# Runs PROGRAM, which must succeed and, unless EXPECTED is an empty file, print what is in it.
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE printed COMMAND_ERROR_IS_FATAL ANY)
file(READ ${EXPECTED} expected)
if(NOT expected STREQUAL "" AND NOT printed STREQUAL expected)
    message(FATAL_ERROR "The README promises:\n${expected}\nThe example printed:\n${printed}")
endif()
