# OpenCV's core and imgproc alone. Debian packs OpenCV's own CMake files with all of its modules, which
# bring hundreds of packages that the benchmarks do not use.
find_path(OpenCvRemap_INCLUDE_DIR opencv2/imgproc.hpp PATH_SUFFIXES opencv4)
find_library(OpenCvRemap_CORE opencv_core)
find_library(OpenCvRemap_IMGPROC opencv_imgproc)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCvRemap
  REQUIRED_VARS OpenCvRemap_INCLUDE_DIR OpenCvRemap_CORE OpenCvRemap_IMGPROC)

if(OpenCvRemap_FOUND AND NOT TARGET OpenCvRemap::OpenCvRemap)
  add_library(OpenCvRemap::OpenCvRemap INTERFACE IMPORTED)
  target_include_directories(OpenCvRemap::OpenCvRemap SYSTEM INTERFACE ${OpenCvRemap_INCLUDE_DIR})
  target_link_libraries(OpenCvRemap::OpenCvRemap INTERFACE
    ${OpenCvRemap_CORE} ${OpenCvRemap_IMGPROC})
endif()
