# What every target of the project is compiled with. The interface target keeps the flags out of the
# installed package.
add_library(krcore_options INTERFACE)
target_compile_options(krcore_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual -Wformat=2 -Wno-format-nonliteral)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # It sees overlaps in std::string concatenations where there are none.
    target_compile_options(krcore_options INTERFACE -Wno-restrict)
endif()
if(KRCORE_WERROR)
    target_compile_options(krcore_options INTERFACE -Werror)
endif()
if(KRCORE_SANITIZE)
    target_compile_options(krcore_options INTERFACE
        -fsanitize=${KRCORE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(krcore_options INTERFACE -fsanitize=${KRCORE_SANITIZE})
endif()
if(WIN32)
    # The DLL and the programs carry the compiler's run time, so that nothing but system DLLs is needed.
    target_link_options(krcore_options INTERFACE -static)
endif()
