# quindrel_bench: Google Benchmark. Speed and memory figures live here, never in tests.

if(NOT EXISTS "${CMAKE_SOURCE_DIR}/bench/CMakeLists.txt")
    return()
endif()

find_package(benchmark REQUIRED)

add_executable(quindrel_bench)
quindrel_warnings(quindrel_bench)
quindrel_use_shared_code(quindrel_bench)
target_link_libraries(quindrel_bench PRIVATE benchmark::benchmark benchmark::benchmark_main)
add_subdirectory("${CMAKE_SOURCE_DIR}/bench" "${CMAKE_BINARY_DIR}/bench")
