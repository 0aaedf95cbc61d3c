# GoogleTest is built from the sources that its package installs.
include(FindPackageHandleStandardArgs)

find_path(GTest_SOURCE CMakeLists.txt PATHS /usr/src/googletest NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
mark_as_advanced(GTest_SOURCE)
find_package_handle_standard_args(GTest REQUIRED_VARS GTest_SOURCE)
if(GTest_FOUND AND NOT TARGET GTest::gmock_main)
  set(INSTALL_GTEST OFF)
  set(BUILD_SHARED_LIBS OFF)
  add_subdirectory("${GTest_SOURCE}" "${PROJECT_BINARY_DIR}/foreign/googletest" EXCLUDE_FROM_ALL SYSTEM)
  if(NOT TARGET GTest::gmock_main)
    add_library(GTest::gmock_main ALIAS gmock_main)
  endif()
endif()
