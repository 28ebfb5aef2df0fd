# The profile templates are made from their texts by the program's own tree, in a converter for this machine.
if(CMAKE_CROSSCOMPILING)
  include(ExternalProject)
  set(TEMPLATE_TOOL ${CMAKE_CURRENT_BINARY_DIR}/vorlagen/vorlagen)
  ExternalProject_Add(nxclip_vorlagen
    SOURCE_DIR ${CMAKE_CURRENT_SOURCE_DIR}/tools/vorlagen
    BINARY_DIR ${CMAKE_CURRENT_BINARY_DIR}/vorlagen
    CMAKE_ARGS -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}
    BUILD_ALWAYS ON
    BUILD_BYPRODUCTS ${TEMPLATE_TOOL}
    INSTALL_COMMAND "")
else()
  add_executable(nxclip_vorlagen tools/vorlagen/vorlagen.cpp tools/vorlagen/TemplateText.cpp)
  target_link_libraries(nxclip_vorlagen PRIVATE nxclip_fakes)
  set(TEMPLATE_TOOL $<TARGET_FILE:nxclip_vorlagen>)
endif()

file(GLOB TEMPLATE_TEXTS CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/vorlagen/*.txt)
file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/Templates)
foreach(text ${TEMPLATE_TEXTS})
  get_filename_component(name ${text} NAME_WE)
  set(template ${CMAKE_CURRENT_BINARY_DIR}/Templates/${name}.nxp)
  add_custom_command(
    OUTPUT ${template}
    COMMAND ${TEMPLATE_TOOL} ${text} ${template}
    DEPENDS ${text} nxclip_vorlagen ${TEMPLATE_TOOL}
    COMMENT "Making ${name}.nxp"
    VERBATIM)
  list(APPEND TEMPLATES ${template})
endforeach()
add_custom_target(nxclip_templates DEPENDS ${TEMPLATES})
foreach(user NXClip nxclip_tests)
  if(TARGET ${user})
    add_dependencies(${user} nxclip_templates)
  endif()
endforeach()
