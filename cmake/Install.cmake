# Installs the library, its public headers, and what CMake and pkg-config need to find them.
include(CMakePackageConfigHelpers)

install(TARGETS KivFisheye EXPORT KivFisheyeTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/KivFisheye)
install(EXPORT KivFisheyeTargets
  NAMESPACE KivFisheye::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KivFisheye)

configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/KivFisheyeConfig.cmake.in
  ${PROJECT_BINARY_DIR}/cmake/KivFisheyeConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KivFisheye)
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/cmake/KivFisheyeConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/cmake/KivFisheyeConfig.cmake
  ${PROJECT_BINARY_DIR}/cmake/KivFisheyeConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KivFisheye)

# The prefix is found from where the file lies, so that an installed tree can be moved.
file(RELATIVE_PATH KIVFISHEYE_PREFIX_FROM_PC
  /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${PROJECT_SOURCE_DIR}/cmake/kivfisheye.pc.in
  ${PROJECT_BINARY_DIR}/cmake/kivfisheye.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/cmake/kivfisheye.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
