# krcore_add_tests(<name> [INTERNAL] [MULTI_THREADED] [OWN_MAIN] SOURCES <file>...)
#
# One test program of one family, run as one CTest test. Its main starts the library once, in multi-threaded
# mode when asked, and checks the heap's statistics after shut-down. INTERNAL gives the tests the private
# include path, for rules that live in a private header; name the rule's own .cpp among the sources then.
# OWN_MAIN leaves all of that to the test.
find_package(GTest REQUIRED)

# Everything that starts threads, for the thread sanitizer.
add_custom_target(multi_threaded_tests)

function(krcore_add_tests name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "INTERNAL;MULTI_THREADED;OWN_MAIN" "" "SOURCES")
    add_executable(${name} ${arg_SOURCES})
    if(NOT arg_OWN_MAIN)
        target_sources(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests/support/TestMain.cpp")
    endif()
    target_link_libraries(${name} PRIVATE krcore_options KrCore::krcore GTest::gtest)
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    if(arg_INTERNAL)
        target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
    endif()
    if(arg_MULTI_THREADED)
        target_compile_definitions(${name} PRIVATE KR_TEST_MULTI_THREADED)
        add_dependencies(multi_threaded_tests ${name})
    endif()
    if(WIN32)
        # Beside the DLL, where Windows looks first.
        set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "$<TARGET_FILE_DIR:krcore>")
    endif()
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
    if(arg_MULTI_THREADED)
        set_tests_properties(${name} PROPERTIES LABELS multi_threaded)
    endif()
    if(WIN32)
        set_tests_properties(${name} PROPERTIES ENVIRONMENT "WINEDEBUG=-all")
    endif()
endfunction()
