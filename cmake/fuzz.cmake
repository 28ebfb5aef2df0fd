# Every fuzz/<name>_fuzz.cpp is one target; its committed seeds lie in fuzz/seeds/<name>/.
file(GLOB FUZZ_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/fuzz/*_fuzz.cpp)
foreach(source ${FUZZ_SOURCES})
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE nxclip_fakes)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
endforeach()
