# GoogleTest for both targets, built from Debian's source package with the target's own compiler and
# flags (the sanitizers among them). Gives GTest::gtest, GTest::gtest_main, GTest::gmock and
# GTest::gmock_main.
if(NOT EXISTS /usr/src/googletest/CMakeLists.txt)
  message(FATAL_ERROR "The package googletest is missing; scripts/setup installs what is needed.")
endif()
set(INSTALL_GTEST OFF CACHE INTERNAL "")
set(BUILD_GMOCK ON CACHE INTERNAL "")
set(gtest_force_shared_crt ON CACHE INTERNAL "")
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
# CMake's own module of this name, which this file hides, offers gtest_discover_tests.
include(${CMAKE_ROOT}/Modules/GoogleTest.cmake)
