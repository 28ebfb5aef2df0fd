# One test program per home. It runs as a whole: one process, not one per test case.
enable_testing()
if(EXISTS /usr/src/googletest/CMakeLists.txt)
  # Debian brings the sources; so every target gets its own build with its own flags.
  set(INSTALL_GTEST OFF)
  set(BUILD_GMOCK OFF)
  add_subdirectory(/usr/src/googletest ${CMAKE_CURRENT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
else()
  find_package(GTest)
endif()
if(NOT TARGET GTest::gtest_main)
  message(STATUS "GoogleTest is not there: the tests are not built")
  return()
endif()

file(GLOB_RECURSE TEST_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/tests/*_test.cpp)
list(FILTER TEST_SOURCES EXCLUDE REGEX "/tests/desktop/")
add_executable(nxclip_tests ${TEST_SOURCES})
# The machine that the contract suite runs on.
if(WIN32)
  target_sources(nxclip_tests PRIVATE tests/contract/Home_win.cpp tests/contract/OtherProgram_win.cpp
    tests/contract/OtherData_win.cpp)
  target_link_libraries(nxclip_tests PRIVATE desktop_driver)
else()
  target_sources(nxclip_tests PRIVATE tests/contract/Home_native.cpp)
endif()
target_link_libraries(nxclip_tests PRIVATE nxclip_fakes $<TARGET_NAME_IF_EXISTS:nxclip_ports> GTest::gtest GTest::gtest_main)
add_test(NAME nxclip_tests COMMAND nxclip_tests)
