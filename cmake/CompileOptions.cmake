# How every target of the project is compiled. The order of floating-point operations is part of the
# results, so products and sums are never contracted.
add_library(KivFisheyeOptions INTERFACE)
target_compile_features(KivFisheyeOptions INTERFACE cxx_std_17)
target_compile_options(KivFisheyeOptions INTERFACE
  -ffp-contract=off
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast
  # GoogleTest lets the last argument of its macros be left out.
  $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>
  $<$<BOOL:${KIVFISHEYE_WARNINGS_ARE_ERRORS}>:-Werror>)

# Tests take half the time to compile so, and what they share with the library is linked as the library's.
add_library(KivFisheyeTestOptions INTERFACE)
target_link_libraries(KivFisheyeTestOptions INTERFACE KivFisheyeOptions)
target_compile_options(KivFisheyeTestOptions INTERFACE $<$<CONFIG:Release>:-O1>)

if(KIVFISHEYE_SANITIZE)
  target_compile_options(KivFisheyeOptions INTERFACE
    -fsanitize=${KIVFISHEYE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(KivFisheyeOptions INTERFACE -fsanitize=${KIVFISHEYE_SANITIZE})
  if(KIVFISHEYE_DO_NOT_SANITIZE)
    target_compile_options(KivFisheyeOptions INTERFACE -fno-sanitize=${KIVFISHEYE_DO_NOT_SANITIZE})
  endif()
endif()

if(KIVFISHEYE_COVERAGE)
  target_compile_options(KivFisheyeOptions INTERFACE --coverage)
  target_link_options(KivFisheyeOptions INTERFACE --coverage)
endif()
