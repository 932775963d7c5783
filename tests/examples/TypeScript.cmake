# Has the real TypeScript compiler read the declarations that krhost makes, together with a script that uses them
# rightly, and wrongly where it says so. Variables: KRHOST (the program, behind its emulator if it needs one), NODE,
# COMPILER (the script that NODE runs), SOURCES (this folder) and DIRECTORY, a folder to write in.
if(NOT NODE OR NOT EXISTS "${COMPILER}")
    message("skipped: no TypeScript compiler here; scripts/setup.sh typescript installs it")
    return()
endif()

# accept(<name> <krhost's arguments, as a list> <other file>...)
function(accept name arguments)
    set(declarations "${DIRECTORY}/${name}.d.ts")
    execute_process(COMMAND ${KRHOST} ${arguments} OUTPUT_FILE "${declarations}" RESULT_VARIABLE status)
    if(NOT status STREQUAL 0)
        message(FATAL_ERROR "krhost ${arguments}: status ${status}")
    endif()
    execute_process(COMMAND "${NODE}" "${COMPILER}" --strict --noEmit --lib es5 "${declarations}" ${ARGN}
        RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    if(NOT status STREQUAL 0)
        message(FATAL_ERROR "tsc refuses ${name}.d.ts:\n${output}${errors}")
    endif()
endfunction()

accept(krhost "--describe=ts" "${SOURCES}/declarations.ts" "${SOURCES}/oddities.d.ts")
accept(file "--describe=ts;File")
