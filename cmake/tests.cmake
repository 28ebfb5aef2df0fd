enable_testing()
set(INSTALL_GTEST OFF)
add_subdirectory(/usr/src/googletest ${CMAKE_CURRENT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)

file(GLOB_RECURSE TEST_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/tests/*_test.cpp)
list(FILTER TEST_SOURCES EXCLUDE REGEX "/tests/desktop/")
add_executable(nxclip_tests ${TEST_SOURCES})
target_link_libraries(nxclip_tests PRIVATE nxclip_fakes $<TARGET_NAME_IF_EXISTS:nxclip_ports> GTest::gtest GTest::gtest_main)
