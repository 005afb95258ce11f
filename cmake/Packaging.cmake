# CMake package configs and pkg-config files, so that applications write
#   find_package(veitikgip) + target_link_libraries(app veitikgip::veitikgip)
include(CMakePackageConfigHelpers)

set(VEITIKGIP_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake)

foreach(pkg vocore veitikgip)
    install(EXPORT ${pkg}Targets
        NAMESPACE ${pkg}::
        DESTINATION ${VEITIKGIP_CMAKE_DIR}/${pkg})
    configure_package_config_file(
        ${PROJECT_SOURCE_DIR}/cmake/${pkg}Config.cmake.in
        ${PROJECT_BINARY_DIR}/${pkg}Config.cmake
        INSTALL_DESTINATION ${VEITIKGIP_CMAKE_DIR}/${pkg})
    write_basic_package_version_file(
        ${PROJECT_BINARY_DIR}/${pkg}ConfigVersion.cmake
        VERSION ${PROJECT_VERSION}
        COMPATIBILITY SameMajorVersion)
    install(FILES
        ${PROJECT_BINARY_DIR}/${pkg}Config.cmake
        ${PROJECT_BINARY_DIR}/${pkg}ConfigVersion.cmake
        DESTINATION ${VEITIKGIP_CMAKE_DIR}/${pkg})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/${pkg}.pc.in ${PROJECT_BINARY_DIR}/${pkg}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${pkg}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
