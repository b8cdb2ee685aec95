# The installed library as a package: a CMake package (find_package(ParameterCollection) giving
# ParameterCollection::ParameterCollection), a pkg-config file, and CPack settings for Debian packages
# split as Debian splits a library (scripts/build-packages.sh builds them).
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

# One Debian package per install component: name, section and description (summary, then the long text).
set(PC_DEBIAN_RELEASE 1)
set(PC_DEBIAN_VERSION ${PROJECT_VERSION}-${PC_DEBIAN_RELEASE})
string(CONCAT PC_DEBIAN_COMMON_TEXT
    "ParameterCollection gives a camera application one uniform view of every\n"
    "configurable feature of a GenICam camera and of the software layers around\n"
    "it: typed parameters that read, write, report access, keep snapshots and\n"
    "emit Qt signals when features change.")

function(pc_debian_package component package section summary text)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${PC_DEBIAN_COMMON_TEXT}\n\n${text}" PARENT_SCOPE)
    # Every package carries the copyright and the changelog where Debian looks for them.
    install(FILES ${CMAKE_CURRENT_LIST_DIR}/debian/copyright ${PC_DEBIAN_CHANGELOG}
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package} COMPONENT ${component})
endfunction()

# The changelog is compressed without a name or time stamp, so that a rebuild gives the same bytes.
set(PC_DEBIAN_CHANGELOG ${CMAKE_CURRENT_BINARY_DIR}/debian/changelog.Debian.gz)
file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/debian)
execute_process(COMMAND gzip -9 -n -c ${CMAKE_CURRENT_LIST_DIR}/debian/changelog
    OUTPUT_FILE ${PC_DEBIAN_CHANGELOG} RESULT_VARIABLE pc_gzip_result)
if(NOT pc_gzip_result EQUAL 0)
    message(FATAL_ERROR "gzip of the Debian changelog failed: ${pc_gzip_result}")
endif()

pc_debian_package(engine libgenapi3 libs "GenApi-compatible GenICam engine on Aravis"
    "This package holds the engine: a GenICam GenApi implementation that parses\ncamera descriptions, evaluates their formulas and reaches GigE Vision and\nUSB3 Vision cameras through Aravis.")
pc_debian_package(engine_development libgenapi-dev libdevel "GenApi-compatible GenICam engine (development files)"
    "This package holds the engine's GenApi-compatible headers, in a folder of\ntheir own (include/parametercollection-genapi) so that they never meet the\nheaders of a vendor's GenICam SDK.")
pc_debian_package(services libtavrinbase1 libs "Camera SDK services for ParameterCollection"
    "This package holds the camera SDK services the library calls: wait objects\nand feature persistence.")
pc_debian_package(library libparametercollection1 libs "Typed GenICam camera parameters for Qt"
    "This package holds the shared library.")
pc_debian_package(development libparametercollection-dev libdevel
    "Typed GenICam camera parameters for Qt (development files)"
    "This package holds the headers, the CMake package\n(find_package(ParameterCollection)) and the pkg-config file\n(parametercollection).")
pc_debian_package(tools parametercollection-tools utils "Camera parameters from the command line and a viewer"
    "This package holds camera-parameters (list, read, write, watch, save and\nload the features of a camera, the simulated one by default),\ncamera-parameters-viewer (a window with the feature tree) and\nparameter-names (typed name constants for a camera description).")

set(CPACK_COMPONENTS_ALL engine engine_development services library development tools)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
include(CPackComponent)
cpack_add_component(engine)
cpack_add_component(engine_development DEPENDS engine)
cpack_add_component(services DEPENDS engine)
cpack_add_component(library DEPENDS engine services)
cpack_add_component(development DEPENDS library engine_development)
cpack_add_component(tools DEPENDS library engine)
# What the headers need of other packages (the engine's need nothing: Aravis stays behind its library);
# the libraries' own needs come from dpkg-shlibdeps.
if(PC_QT_MAJOR EQUAL 6)
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "qt6-base-dev")
else()
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "qtbase5-dev")
endif()

# Each package's own description begins with its summary, so no common summary is set.
set(CPACK_PACKAGE_NAME "parametercollection")
set(CPACK_PACKAGE_VENDOR "ParameterCollection developers")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(PC_DEBIAN_MAINTAINER "ParameterCollection developers <maintainers@parametercollection.org>"
    CACHE STRING "Maintainer field of the Debian packages")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${PC_DEBIAN_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_RELEASE ${PC_DEBIAN_RELEASE})
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://parametercollection.org")
set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Libraries of this build that another package of it provides are found here, not on the system.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/genapi ${CMAKE_BINARY_DIR}/tavrin
    ${CMAKE_BINARY_DIR}/parametercollection)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# The libraries let ldconfig run through its trigger, as Debian's libraries do.
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
foreach(component ENGINE SERVICES LIBRARY)
    set(CPACK_DEBIAN_${component}_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_BINARY_DIR}/debian/triggers)
endforeach()
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Stripped programs and libraries, their debug symbols in -dbgsym packages beside them.
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
include(CPack)
