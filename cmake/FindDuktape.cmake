# Finds Duktape, the JavaScript engine that krhost embeds: the system's library, or the static one among
# the cross-built KRCORE_DEPENDENCIES. Defines the target Duktape::Duktape.
find_path(Duktape_INCLUDE_DIR duktape.h HINTS "${KRCORE_DEPENDENCIES}/include")
find_library(Duktape_LIBRARY duktape HINTS "${KRCORE_DEPENDENCIES}/lib")

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Duktape REQUIRED_VARS Duktape_LIBRARY Duktape_INCLUDE_DIR)
mark_as_advanced(Duktape_INCLUDE_DIR Duktape_LIBRARY)

if(Duktape_FOUND AND NOT TARGET Duktape::Duktape)
    add_library(Duktape::Duktape UNKNOWN IMPORTED)
    set_target_properties(Duktape::Duktape PROPERTIES
        IMPORTED_LOCATION "${Duktape_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${Duktape_INCLUDE_DIR}")
    if(UNIX)
        set_target_properties(Duktape::Duktape PROPERTIES INTERFACE_LINK_LIBRARIES m)
    endif()
endif()
