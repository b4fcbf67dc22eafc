# Installs the library, its public headers, and what CMake and pkg-config need to find them. Every install
# rule of the project names one of these components, and each of them is a Debian package:
#   libkivfisheye1     the library under its soname, which programs run with
#   libkivfisheye-dev  headers, the link libKivFisheye.so and what finds them, to build programs with
#   kivfisheye-tools   the command-line tool, its manual pages and completions
include(CMakePackageConfigHelpers)
set(runtime_component libkivfisheye${PROJECT_VERSION_MAJOR})
set(development_component libkivfisheye-dev)
set(tools_component kivfisheye-tools)

install(TARGETS KivFisheye EXPORT KivFisheyeTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    COMPONENT ${runtime_component} NAMELINK_COMPONENT ${development_component}
  PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/KivFisheye
    COMPONENT ${development_component})
install(EXPORT KivFisheyeTargets
  NAMESPACE KivFisheye::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KivFisheye
  COMPONENT ${development_component})

configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/KivFisheyeConfig.cmake.in
  ${PROJECT_BINARY_DIR}/cmake/KivFisheyeConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KivFisheye)
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/cmake/KivFisheyeConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/cmake/KivFisheyeConfig.cmake
  ${PROJECT_BINARY_DIR}/cmake/KivFisheyeConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KivFisheye
  COMPONENT ${development_component})

# The prefix is found from where the file lies, so that an installed tree can be moved.
file(RELATIVE_PATH KIVFISHEYE_PREFIX_FROM_PC
  /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${PROJECT_SOURCE_DIR}/cmake/kivfisheye.pc.in
  ${PROJECT_BINARY_DIR}/cmake/kivfisheye.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/cmake/kivfisheye.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT ${development_component})

if(KIVFISHEYE_PACKAGES)
  include(${PROJECT_SOURCE_DIR}/cmake/Packages.cmake)
endif()
