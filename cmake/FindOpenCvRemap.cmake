# OpenCV's core and imgproc alone, and calib3d where it is found. Debian packs OpenCV's own CMake files
# with all of its modules, which bring hundreds of packages that the benchmarks do not use.
find_path(OpenCvRemap_INCLUDE_DIR opencv2/imgproc.hpp PATH_SUFFIXES opencv4)
find_library(OpenCvRemap_CORE opencv_core)
find_library(OpenCvRemap_IMGPROC opencv_imgproc)
find_path(OpenCvRemap_CALIB3D_INCLUDE_DIR opencv2/calib3d.hpp PATH_SUFFIXES opencv4)
find_library(OpenCvRemap_CALIB3D opencv_calib3d)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCvRemap
  REQUIRED_VARS OpenCvRemap_INCLUDE_DIR OpenCvRemap_CORE OpenCvRemap_IMGPROC)

if(OpenCvRemap_FOUND AND NOT TARGET OpenCvRemap::OpenCvRemap)
  add_library(OpenCvRemap::OpenCvRemap INTERFACE IMPORTED)
  target_include_directories(OpenCvRemap::OpenCvRemap SYSTEM INTERFACE ${OpenCvRemap_INCLUDE_DIR})
  target_link_libraries(OpenCvRemap::OpenCvRemap INTERFACE
    ${OpenCvRemap_CORE} ${OpenCvRemap_IMGPROC})
  if(OpenCvRemap_CALIB3D AND OpenCvRemap_CALIB3D_INCLUDE_DIR)
    add_library(OpenCvRemap::Calib3d INTERFACE IMPORTED)
    target_include_directories(OpenCvRemap::Calib3d SYSTEM INTERFACE
      ${OpenCvRemap_CALIB3D_INCLUDE_DIR})
    target_link_libraries(OpenCvRemap::Calib3d INTERFACE
      ${OpenCvRemap_CALIB3D} OpenCvRemap::OpenCvRemap)
  endif()
endif()
