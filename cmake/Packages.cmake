# Tells CPack how the components become Debian packages; scripts/package builds them.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  message(FATAL_ERROR "Packages are for the prefix /usr, not for ${CMAKE_INSTALL_PREFIX}.")
endif()

# Debian expects a folder with the copyright and the changes in every package.
foreach(component IN ITEMS ${runtime_component} ${development_component} ${tools_component})
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/packages/copyright
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${component} COMPONENT ${component})
  install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md RENAME changelog
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${component} COMPONENT ${component})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_COMPONENTS_ALL ${runtime_component} ${development_component} ${tools_component})
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/packages/Compress.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE libkivfisheye)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The libKivFisheye developers")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

# Sets what CPack wants to know of the component: CPACK_DEBIAN_<COMPONENT>_<key>.
function(describe_package component key)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_${key} ${ARGN} PARENT_SCOPE)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  describe_package(${component} PACKAGE_NAME ${component})
endforeach()

# A minor version may add symbols, so what is built with this one may need it or a newer one.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
describe_package(${runtime_component} PACKAGE_SECTION libs)
# CPack makes scripts that call ldconfig unless it is given scripts. The trigger does it, once for all
# packages that are installed together, so the two that are named beside it do not exist.
set(control_files ${PROJECT_SOURCE_DIR}/cmake/packages)
describe_package(${runtime_component} PACKAGE_CONTROL_EXTRA
  ${control_files}/triggers ${control_files}/postinst ${control_files}/postrm)
describe_package(${runtime_component} DESCRIPTION
"shared library that flattens fisheye pictures
libKivFisheye flattens the picture of a fisheye camera on the CPU, frame by
frame: virtual cameras that pan, tilt and zoom, and full and dual panoramas,
of cameras on a wall, under a ceiling and on a table.
.
This package holds what programs need to run that are built with the library.")

describe_package(${development_component} PACKAGE_SECTION libdevel)
describe_package(${development_component} PACKAGE_DEPENDS "${runtime_component} (= ${PROJECT_VERSION})")
describe_package(${development_component} DESCRIPTION
"library that flattens fisheye pictures - development files
libKivFisheye flattens the picture of a fisheye camera on the CPU, frame by
frame: virtual cameras that pan, tilt and zoom, and full and dual panoramas,
of cameras on a wall, under a ceiling and on a table.
.
This package holds the headers, and what CMake and pkg-config need to find
the library.")

describe_package(${tools_component} PACKAGE_SECTION graphics)
describe_package(${tools_component} PACKAGE_DEPENDS "${runtime_component} (>= ${PROJECT_VERSION})")
describe_package(${tools_component} DESCRIPTION
"flatten fisheye pictures and videos from the command line
The command kivfisheye turns pictures and videos of a fisheye camera into
flat views and panoramas, draws on the fisheye picture what a view shows, and
writes meshes with which a graphics processor draws panoramas. It also makes
pictures of a room to try all that with.")

include(CPack)
