# Installation: headers, library, a CMake package (KrCore::krcore) and a pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS krcore EXPORT KrCoreTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/krcore DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(EXPORT KrCoreTargets NAMESPACE KrCore:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KrCore)

configure_package_config_file(cmake/KrCoreConfig.cmake.in "${PROJECT_BINARY_DIR}/KrCoreConfig.cmake"
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KrCore)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/KrCoreConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/KrCoreConfig.cmake" "${PROJECT_BINARY_DIR}/KrCoreConfigVersion.cmake"
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KrCore)

configure_file(cmake/krcore.pc.in "${PROJECT_BINARY_DIR}/krcore.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/krcore.pc" DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
