# The icons are made from the drawings; the resource script finds them below the build directory.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(IMAGEMAGICK NAMES magick convert REQUIRED)
find_program(SH sh REQUIRED)

set(PICTURE_SCRIPT ${CMAKE_CURRENT_SOURCE_DIR}/tools/build-pictures)
file(GLOB DRAWINGS CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/src/resources/pictures/*.svg)
set(SMALL_DRAWINGS ${DRAWINGS})
list(FILTER SMALL_DRAWINGS EXCLUDE REGEX "-large\\.svg$")
file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/pictures)
foreach(drawing ${SMALL_DRAWINGS})
  get_filename_component(name ${drawing} NAME_WE)
  set(large ${DRAWINGS})
  list(FILTER large INCLUDE REGEX "/${name}-large\\.svg$")
  set(icon ${CMAKE_CURRENT_BINARY_DIR}/pictures/${name}.ico)
  add_custom_command(
    OUTPUT ${icon}
    COMMAND ${CMAKE_COMMAND} -E env CONVERT=${IMAGEMAGICK} ${SH} ${PICTURE_SCRIPT} ${drawing} ${icon}
    DEPENDS ${drawing} ${large} ${PICTURE_SCRIPT}
    COMMENT "Drawing ${name}.ico"
    VERBATIM)
  list(APPEND ICONS ${icon})
endforeach()
add_custom_target(nxclip_pictures DEPENDS ${ICONS})
