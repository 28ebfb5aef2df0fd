enable_language(RC)
include(cmake/pictures.cmake)
configure_file(src/resources/version.h.in ${CMAKE_CURRENT_BINARY_DIR}/version.h @ONLY)
file(GLOB_RECURSE RC_FRAGMENTS CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/src/*.rc)
file(GLOB RESOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/src/resources/*.*)
set(TOP_RC ${CMAKE_CURRENT_SOURCE_DIR}/src/resources/NXClip.rc)

add_executable(NXClip WIN32 ${WINDOW_SOURCES} ${TOP_RC})
target_link_libraries(NXClip PRIVATE nxclip_engine)
target_include_directories(NXClip PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
set_source_files_properties(${TOP_RC} PROPERTIES
  OBJECT_DEPENDS "${RC_FRAGMENTS};${RESOURCES};${ICONS};${CMAKE_CURRENT_BINARY_DIR}/version.h"
  COMPILE_OPTIONS "-I${CMAKE_CURRENT_SOURCE_DIR}/src;-I${CMAKE_CURRENT_BINARY_DIR};-c65001")
target_link_options(NXClip PRIVATE -municode -Wl,--no-insert-timestamp $<$<CONFIG:Release>:-s>)
target_compile_options(NXClip PRIVATE -municode)
# Windows 10 and 11 are what the program is made for; from version 6.0 on its windows have the borders and metrics of
# today. A 32-bit program may use 4 GB on a 64-bit Windows when it says that it can.
target_link_options(NXClip PRIVATE -Wl,--major-subsystem-version=6,--minor-subsystem-version=0)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  target_link_options(NXClip PRIVATE -Wl,--large-address-aware)
endif()
