# The library for programs of other projects: find_package(vorant_gis) and vorant_gis::vorant_gis, its headers by their folders as here.
include(CMakePackageConfigHelpers)
set(LIBRARY_PACKAGE ${CMAKE_INSTALL_LIBDIR}/cmake/vorant_gis)
add_library(vorant_gis::vorant_gis ALIAS vorant_gis)

install(TARGETS vorant_gis hdf5_library EXPORT vorant_gis_targets COMPONENT library
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vorant_gis)
install(EXPORT vorant_gis_targets NAMESPACE vorant_gis:: COMPONENT library DESTINATION ${LIBRARY_PACKAGE})
install(DIRECTORY src/ COMPONENT library DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vorant_gis
    FILES_MATCHING PATTERN "*.h" PATTERN "h5_*.h" EXCLUDE PATTERN "module" EXCLUDE PATTERN "manual" EXCLUDE PATTERN "routines" EXCLUDE)

configure_package_config_file(cmake/vorant_gis-config.cmake.in vorant_gis-config.cmake INSTALL_DESTINATION ${LIBRARY_PACKAGE})
write_basic_package_version_file(vorant_gis-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vorant_gis-config.cmake ${CMAKE_CURRENT_BINARY_DIR}/vorant_gis-config-version.cmake
    COMPONENT library DESTINATION ${LIBRARY_PACKAGE})
