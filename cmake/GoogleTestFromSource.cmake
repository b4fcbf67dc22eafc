# GoogleTest built along with the tests: the library that is installed is for this machine alone.
set(KIVFISHEYE_GOOGLETEST_SOURCES /usr/src/googletest CACHE PATH "GoogleTest's source tree")
set(BUILD_GMOCK OFF)
set(INSTALL_GTEST OFF)
add_subdirectory(${KIVFISHEYE_GOOGLETEST_SOURCES} ${PROJECT_BINARY_DIR}/googletest
  EXCLUDE_FROM_ALL SYSTEM)
