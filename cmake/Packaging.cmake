# The installed library as a package: a CMake package (find_package(ParameterCollection) giving
# ParameterCollection::ParameterCollection), a pkg-config file, and CPack settings for a Debian package.
include(CMakePackageConfigHelpers)

set(PC_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ParameterCollection)
install(EXPORT ParameterCollectionTargets NAMESPACE ParameterCollection:: DESTINATION ${PC_CMAKE_DIR}
    COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/ParameterCollectionConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/ParameterCollectionConfig.cmake INSTALL_DESTINATION ${PC_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ParameterCollectionConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ParameterCollectionConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/ParameterCollectionConfigVersion.cmake
    DESTINATION ${PC_CMAKE_DIR} COMPONENT development)

# The pkg-config file finds its prefix from where it lies, so that the installed tree can be moved.
file(RELATIVE_PATH PC_PKGCONFIG_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(${CMAKE_CURRENT_LIST_DIR}/parametercollection.pc.in
    ${CMAKE_CURRENT_BINARY_DIR}/parametercollection.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/parametercollection.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

set(CPACK_PACKAGE_NAME "parametercollection")
set(CPACK_PACKAGE_VENDOR "ParameterCollection developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "Typed, signal-emitting parameters over the GenICam features of a camera")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "parametercollection@localhost")
set(CPACK_GENERATOR "DEB;TGZ")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qtbase5-dev")
set(CPACK_DEBIAN_PACKAGE_SECTION "libdevel")
include(CPack)
