# Finds the 16-bit build of Expat (XML_UNICODE), which has no package configuration of its own.
#
# Defines Expat::ExpatW and ExpatW_VERSION.
find_path(ExpatW_INCLUDE_DIR expat.h)
find_library(ExpatW_LIBRARY expatw)

if(ExpatW_INCLUDE_DIR)
    file(STRINGS "${ExpatW_INCLUDE_DIR}/expat.h" version_lines REGEX "#define XML_(MAJOR|MINOR|MICRO)_VERSION")
    string(REGEX REPLACE "[^0-9;]" "" ExpatW_VERSION "${version_lines}")
    string(REPLACE ";" "." ExpatW_VERSION "${ExpatW_VERSION}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(ExpatW REQUIRED_VARS ExpatW_LIBRARY ExpatW_INCLUDE_DIR VERSION_VAR ExpatW_VERSION)

if(ExpatW_FOUND AND NOT TARGET Expat::ExpatW)
    add_library(Expat::ExpatW UNKNOWN IMPORTED)
    set_target_properties(Expat::ExpatW PROPERTIES
        IMPORTED_LOCATION "${ExpatW_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${ExpatW_INCLUDE_DIR}"
        INTERFACE_COMPILE_DEFINITIONS "XML_UNICODE;$<$<PLATFORM_ID:Windows>:XML_STATIC>")
endif()
mark_as_advanced(ExpatW_INCLUDE_DIR ExpatW_LIBRARY)
