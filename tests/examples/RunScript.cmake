# Runs krhost on one script and compares what it prints with what is kept beside the script:
#   <script>.expected   the standard output
#   <script>.stderr     the standard error, where there is something to expect
#   <script>.in         the standard input, if the script reads any
# Variables: KRHOST (the program, behind its emulator if it needs one), DIRECTORY and NAME of the script,
# OPTIONS, ARGUMENTS, STATUS.
# Lines may end either way on both sides.
function(read_lines path result)
    file(READ "${path}" text)
    string(REPLACE "\r\n" "\n" text "${text}")
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

set(input "${DIRECTORY}/${NAME}.in")
if(NOT EXISTS "${input}")
    set(input "${DIRECTORY}/${NAME}.js") # something to read, for a script that does not
endif()
execute_process(COMMAND ${KRHOST} ${OPTIONS} "${NAME}.js" ${ARGUMENTS}
    WORKING_DIRECTORY "${DIRECTORY}"
    INPUT_FILE "${input}" OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)

set(failed FALSE)
foreach(stream expected stderr)
    if(stream STREQUAL "expected")
        set(actual "${output}")
    else()
        set(actual "${errors}")
        string(REGEX REPLACE "(^|\n)(wine:|[0-9a-f]+:(err|fixme|warn):)[^\n]*" "" actual "${actual}")
    endif()
    string(REPLACE "\r\n" "\n" actual "${actual}")
    set(wanted "")
    if(EXISTS "${DIRECTORY}/${NAME}.${stream}")
        read_lines("${DIRECTORY}/${NAME}.${stream}" wanted)
    endif()
    if(NOT actual STREQUAL wanted)
        message("${NAME}.${stream} differs. Expected:\n${wanted}\nGot:\n${actual}")
        set(failed TRUE)
    endif()
endforeach()
if(NOT status STREQUAL STATUS)
    message("exit status ${status} instead of ${STATUS}")
    set(failed TRUE)
endif()
if(failed)
    message(FATAL_ERROR "${NAME}.js: not as expected")
endif()
