find_package(benchmark REQUIRED)
file(GLOB BENCH_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/bench/*_bench.cpp)
add_executable(nxclip_bench ${BENCH_SOURCES})
target_link_libraries(nxclip_bench PRIVATE nxclip_fakes benchmark::benchmark_main)
