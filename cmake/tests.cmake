# One test program per home. It runs as a whole: one process, not one per test case.
enable_testing()
# From its sources every target gets its own build with its own flags; a library made elsewhere would bring a C++ runtime
# of its own into a program that has one already. Debian has them there.
set(NXCLIP_GOOGLETEST /usr/src/googletest CACHE PATH "GoogleTest's sources")
if(NOT EXISTS ${NXCLIP_GOOGLETEST}/CMakeLists.txt)
  message(STATUS "GoogleTest's sources are not in ${NXCLIP_GOOGLETEST}: the tests are not built")
  return()
endif()
set(INSTALL_GTEST OFF)
set(BUILD_GMOCK OFF)
add_subdirectory(${NXCLIP_GOOGLETEST} ${CMAKE_CURRENT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)

file(GLOB_RECURSE TEST_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/tests/*_test.cpp)
list(FILTER TEST_SOURCES EXCLUDE REGEX "/tests/desktop/")
if(NOT WIN32)
  list(FILTER TEST_SOURCES EXCLUDE REGEX "/tests/platform/win32/")
endif()
add_executable(nxclip_tests ${TEST_SOURCES})
# The machine that the contract suite runs on.
if(WIN32)
  target_sources(nxclip_tests PRIVATE tests/contract/Home_win.cpp)
  target_link_libraries(nxclip_tests PRIVATE desktop_driver)
else()
  target_sources(nxclip_tests PRIVATE tests/contract/Home_native.cpp)
endif()
target_link_libraries(nxclip_tests PRIVATE nxclip_commandline nxclip_fakes GTest::gtest GTest::gtest_main)
add_test(NAME nxclip_tests COMMAND nxclip_tests)
