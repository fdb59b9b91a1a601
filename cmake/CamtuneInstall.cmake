# Installs libcamtune, its public headers and a CMake package, so another project can do
#   find_package(camtune REQUIRED)
#   target_link_libraries(app PRIVATE camtune::camtune)
# and, for tests of pipeline code on a host, camtune::testing.
include(CMakePackageConfigHelpers)

set(CAMTUNE_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/camtune)

install(TARGETS camtune camtune_testing
    EXPORT camtuneTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# Only include/camtune is public, with the host backend's framework types and the testing
# seams under the same camtune/ tree; subsystem-private headers stay in src/.
foreach(dir include src/platform/host/include src/platform/host/testing/include)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/${dir}/camtune
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h")
endforeach()

install(EXPORT camtuneTargets
    NAMESPACE camtune::
    DESTINATION ${CAMTUNE_INSTALL_CMAKEDIR})

configure_package_config_file(
    ${CMAKE_CURRENT_LIST_DIR}/camtuneConfig.cmake.in
    ${PROJECT_BINARY_DIR}/camtuneConfig.cmake
    INSTALL_DESTINATION ${CAMTUNE_INSTALL_CMAKEDIR})
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/camtuneConfigVersion.cmake
    VERSION ${PROJECT_VERSION}
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/camtuneConfig.cmake
    ${PROJECT_BINARY_DIR}/camtuneConfigVersion.cmake
    DESTINATION ${CAMTUNE_INSTALL_CMAKEDIR})

# The installed CLI finds the installed library wherever the prefix is.
if(TARGET camtune_cli)
    set_target_properties(camtune_cli PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
endif()
