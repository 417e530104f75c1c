# The packages for Debian, one for each component of the install rules. DEBIAN_FILES is the folder that scripts/build_deb.sh
# fills: changelog.gz and copyright.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "VORANT_to_GIS maintainers")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${DEBIAN_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_COMPONENTS_ALL program)

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME vorant-to-gis)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS "vorant-to-gis-gdal, gdal-bin")
set(CPACK_DEBIAN_PROGRAM_DESCRIPTION "results of a 2D flood model as grids and layers of a GIS
VORANT_to_GIS turns meshes (.2dm) and results (.dat, .xmdf) of a 2D flood
model into raster grids (.asc, .flt), vector layers (.mif, .shp), profiles
along lines and tables at gauges.")

if(TARGET vorant_gdal)
    list(APPEND CPACK_COMPONENTS_ALL gdal)
    set(CPACK_DEBIAN_GDAL_PACKAGE_NAME vorant-to-gis-gdal)
    set(CPACK_DEBIAN_GDAL_PACKAGE_SECTION science)
    # the module and the program that loads it are of one build
    set(CPACK_DEBIAN_GDAL_PACKAGE_DEPENDS "vorant-to-gis (= ${PROJECT_VERSION})")
    set(CPACK_DEBIAN_GDAL_DESCRIPTION "GeoTIFF, GeoPackage and FlatGeobuf for VORANT_to_GIS
With this module VORANT_to_GIS writes the formats of GDAL, takes coordinate
systems by name, any raster as a template and any layer for its profiles.")
endif()

if(BUILD_ROUTINES)
    list(APPEND CPACK_COMPONENTS_ALL routines routines_dev)
    set(CPACK_DEBIAN_ROUTINES_PACKAGE_NAME libvorant-routines1)
    set(CPACK_DEBIAN_ROUTINES_PACKAGE_SECTION libs)
    set(CPACK_DEBIAN_ROUTINES_DESCRIPTION "text and planar geometry routines of VORANT_to_GIS
The routines by which VORANT_to_GIS reads text and intersects lines and
polygons, as a shared library for programs in C and Fortran.")
    file(WRITE ${DEBIAN_FILES}/triggers "activate-noawait ldconfig\n")
    file(WRITE ${DEBIAN_FILES}/shlibs "libvorant_routines 1 libvorant-routines1 (>= ${PROJECT_VERSION})\n")
    set(CPACK_DEBIAN_ROUTINES_PACKAGE_CONTROL_EXTRA "${DEBIAN_FILES}/triggers;${DEBIAN_FILES}/shlibs")
    set(CPACK_DEBIAN_ROUTINES_DEV_PACKAGE_NAME libvorant-routines-dev)
    set(CPACK_DEBIAN_ROUTINES_DEV_PACKAGE_SECTION libdevel)
    set(CPACK_DEBIAN_ROUTINES_DEV_PACKAGE_DEPENDS "libvorant-routines1 (= ${PROJECT_VERSION})")
    set(CPACK_DEBIAN_ROUTINES_DEV_DESCRIPTION "header of the routines of VORANT_to_GIS
What a program in C or Fortran is built with that calls the text and
geometry routines of VORANT_to_GIS: the header and the pkg-config file.")
endif()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    install(FILES ${DEBIAN_FILES}/changelog.gz ${DEBIAN_FILES}/copyright COMPONENT ${component}
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
endforeach()
include(CPack)
