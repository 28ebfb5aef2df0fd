# The program nxclip-files, which needs the engine and files alone: natively for the system that builds it, and for
# Windows as a console program. What it does is an archive, so that the tests can call it.
file(GLOB COMMANDLINE_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/src/commandline/*.cpp)
list(FILTER COMMANDLINE_SOURCES EXCLUDE REGEX "_(native|win)\\.cpp$")
add_library(nxclip_commandline STATIC ${COMMANDLINE_SOURCES})
target_link_libraries(nxclip_commandline PUBLIC nxclip_engine)

if(WIN32)
  add_executable(nxclip-files src/commandline/FilesProgram_win.cpp)
  target_link_options(nxclip-files PRIVATE -municode -Wl,--no-insert-timestamp $<$<CONFIG:Release>:-s>)
else()
  file(GLOB POSIX_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/src/platform/posix/*.cpp)
  target_sources(nxclip_commandline PRIVATE ${POSIX_SOURCES})
  add_executable(nxclip-files src/commandline/FilesProgram_native.cpp)
endif()
target_link_libraries(nxclip-files PRIVATE nxclip_commandline)
