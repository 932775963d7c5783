# The shared library itself: what it is called, what it shows, what it links.
set_target_properties(krcore PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    DEFINE_SYMBOL KRCORE_BUILDING
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
target_compile_features(krcore PUBLIC cxx_std_20)
target_include_directories(krcore
    PUBLIC
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>"
    PRIVATE "${PROJECT_SOURCE_DIR}")
target_link_libraries(krcore PRIVATE "$<BUILD_INTERFACE:krcore_options>")

# The build of Expat whose characters are 16 bits wide: it hands text over as it stands in a String.
find_package(ExpatW 2.4 REQUIRED)
target_link_libraries(krcore PRIVATE "$<BUILD_INTERFACE:Expat::ExpatW>")

if(WIN32)
    target_link_libraries(krcore PRIVATE comdlg32 ole32 shell32 uuid)
    set_target_properties(krcore PROPERTIES PREFIX "" IMPORT_PREFIX "lib")
    enable_language(RC)
    configure_file("${PROJECT_SOURCE_DIR}/cmake/krcore.rc.in" "${PROJECT_BINARY_DIR}/krcore.rc" @ONLY)
    target_sources(krcore PRIVATE "${PROJECT_BINARY_DIR}/krcore.rc")
else()
    find_package(Threads REQUIRED)
    target_link_libraries(krcore PRIVATE Threads::Threads)
    # Exported functions call each other directly: nobody replaces one of them from outside.
    target_compile_options(krcore PRIVATE -fno-semantic-interposition)
    target_link_options(krcore PRIVATE -Wl,-Bsymbolic-functions)
    # Templates of the standard library are visible whatever the options say; the map hides them.
    target_link_options(krcore PRIVATE "-Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/krcore.map")
    set_property(TARGET krcore APPEND PROPERTY LINK_DEPENDS "${PROJECT_SOURCE_DIR}/cmake/krcore.map")
    if(NOT KRCORE_SANITIZE)
        target_link_options(krcore PRIVATE -Wl,--no-undefined)
    endif()
endif()
