# What drives the finished program from outside: the test program, the small programs that stand for the rest of
# the world, and the one that lets a script drive. All of it lies in <build>/desktop/.
set(DRIVER ${CMAKE_CURRENT_SOURCE_DIR}/tools/desktop)
set(DESKTOP ${CMAKE_CURRENT_SOURCE_DIR}/tests/desktop)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/desktop)

# A unit of the driver begins with a capital, a program of its own does not.
file(GLOB DRIVER_SOURCES CONFIGURE_DEPENDS ${DRIVER}/[A-Z]*.cpp)
add_library(desktop_driver STATIC ${DRIVER_SOURCES})
target_include_directories(desktop_driver PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/tools)
# Of the engine it has what looks at the program's files.
target_link_libraries(desktop_driver PUBLIC nxclip_engine comctl32 gdi32 user32 advapi32)

foreach(trial copies kill measure monkey)
  add_executable(${trial} ${DRIVER}/${trial}.cpp)
  target_link_libraries(${trial} PRIVATE desktop_driver)
  target_link_options(${trial} PRIVATE -municode)
endforeach()
target_link_libraries(measure PRIVATE psapi)
# The program's own tree in a program that counts.
add_executable(steps ${DRIVER}/steps.cpp
  $<FILTER:$<TARGET_OBJECTS:NXClip>,INCLUDE,windows/controls/.*\\.obj$>)
target_link_libraries(steps PRIVATE nxclip_engine)
target_link_options(steps PRIVATE -municode)
# What the program is measured against.
add_executable(floor WIN32 ${DRIVER}/floor.cpp)
target_link_libraries(floor PRIVATE nxclip_flags comctl32 gdi32 user32)
target_link_options(floor PRIVATE -municode)

add_custom_target(desktop_tools)
foreach(tool clipput clipget drive peer)
  add_executable(${tool} ${DRIVER}/${tool}.cpp)
  target_link_libraries(${tool} PRIVATE desktop_driver)
  target_link_options(${tool} PRIVATE -municode)
  add_dependencies(desktop_tools ${tool})
endforeach()

if(TARGET GTest::gtest)
  # The other program of the contract suite.
  add_dependencies(nxclip_tests desktop_tools)
  file(GLOB DESKTOP_TESTS CONFIGURE_DEPENDS ${DESKTOP}/*_test.cpp)
  add_executable(nxclip_desktop_tests ${DESKTOP}/DesktopMain.cpp ${DESKTOP_TESTS})
  target_include_directories(nxclip_desktop_tests PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/tests)
  target_link_libraries(nxclip_desktop_tests PRIVATE desktop_driver GTest::gtest)

  # The program once more, with doors that throw when a test wants it. What has a door is compiled with another
  # header in front of the program's own; everything else is the program's.
  foreach(source ${WINDOW_SOURCES} ${PORT_SOURCES})
    file(STRINGS ${source} GUARDS REGEX "platform/Guard\\.h")
    if(GUARDS)
      list(APPEND DOOR_SOURCES ${source})
      get_filename_component(name ${source} NAME)
      list(APPEND DOOR_NAMES ${name})
    endif()
  endforeach()
  list(JOIN DOOR_NAMES "|" DOOR_NAMES)
  string(REPLACE "." "\\." DOOR_NAMES "${DOOR_NAMES}")
  add_executable(NXClipThrowing WIN32 ${DOOR_SOURCES} ${DESKTOP}/doors/Doors.cpp
    $<FILTER:$<TARGET_OBJECTS:NXClip>,EXCLUDE,/\(${DOOR_NAMES}\)\\.obj$>)
  target_include_directories(NXClipThrowing BEFORE PRIVATE ${DESKTOP}/doors ${CMAKE_CURRENT_SOURCE_DIR}/tests)
  target_link_libraries(NXClipThrowing PRIVATE nxclip_engine)
  target_link_options(NXClipThrowing PRIVATE -municode)
  add_dependencies(nxclip_desktop_tests NXClipThrowing nxclip-files peer)
endif()
