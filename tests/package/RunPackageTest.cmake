# Installs the build into a folder of its own, then builds and runs a program against it in both ways a user has.
set(stage "${BUILD}/package-test/stage")
set(work "${BUILD}/package-test/work")
file(REMOVE_RECURSE "${BUILD}/package-test")

macro(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endmacro()

run(${CMAKE_COMMAND} --install "${BUILD}" --prefix "${stage}")
run(${CMAKE_COMMAND} -S "${SOURCE}" -B "${work}" -DCMAKE_PREFIX_PATH=${stage} -DCMAKE_CXX_COMPILER=${COMPILER})
run(${CMAKE_COMMAND} --build "${work}")
run("${work}/consumer")

find_program(PKG_CONFIG pkg-config REQUIRED)
file(GLOB_RECURSE pc_file "${stage}/*/krcore.pc")
get_filename_component(pc_folder "${pc_file}" DIRECTORY)
get_filename_component(library_folder "${pc_folder}" DIRECTORY)
set(ENV{PKG_CONFIG_PATH} "${pc_folder}")
execute_process(COMMAND ${PKG_CONFIG} --define-variable=prefix=${stage}
    --define-variable=libdir=${library_folder} --define-variable=includedir=${stage}/include --cflags --libs krcore
    OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags)
run("${COMPILER}" -std=c++20 "${SOURCE}/main.cpp" -o "${work}/consumer-pkg-config" ${flags} -Wl,-rpath,${library_folder})
run("${work}/consumer-pkg-config")

execute_process(COMMAND ${PKG_CONFIG} --modversion krcore OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT found STREQUAL VERSION)
    message(FATAL_ERROR "pkg-config tells version ${found} instead of ${VERSION}")
endif()
