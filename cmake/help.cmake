# The help file and the help's pages, both from the same sources and checked against the list of topics.
# Not every system has what it takes; the program works without its help.
find_program(HALIBUT halibut)
find_package(Python3 COMPONENTS Interpreter)
if(NOT HALIBUT OR NOT Python3_FOUND)
  message(STATUS "halibut or Python is not there: the help is not built")
  set_source_files_properties(${CMAKE_CURRENT_SOURCE_DIR}/tests/hilfe/Help_test.cpp PROPERTIES HEADER_FILE_ONLY ON)
  return()
endif()

set(HELP_SCRIPT ${CMAKE_CURRENT_SOURCE_DIR}/tools/build-help)
set(HELP_TOPICS ${CMAKE_CURRENT_SOURCE_DIR}/src/engine/process/HelpTopics.h)
set(HELP_PICTURES ${CMAKE_CURRENT_SOURCE_DIR}/src/resources/pictures)
set(HELP_FILE ${CMAKE_CURRENT_BINARY_DIR}/Nxclip.hlp)
file(GLOB HELP_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/hilfe/* ${HELP_PICTURES}/*.svg)
add_custom_command(
  OUTPUT ${HELP_FILE}
  COMMAND Python3::Interpreter ${HELP_SCRIPT} ${CMAKE_CURRENT_SOURCE_DIR}/hilfe ${HELP_TOPICS} ${HELP_PICTURES}
          ${CMAKE_CURRENT_BINARY_DIR}
  DEPENDS ${HELP_SCRIPT} ${HELP_TOPICS} ${HELP_SOURCES}
  COMMENT "Building the help"
  VERBATIM)
add_custom_target(nxclip_help DEPENDS ${HELP_FILE})
foreach(user NXClip nxclip_tests)
  if(TARGET ${user})
    add_dependencies(${user} nxclip_help)
  endif()
endforeach()
