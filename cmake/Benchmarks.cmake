# quindrel_bench: Google Benchmark. Speed and memory figures live here, never in tests.
# Each folder under bench/ adds its sources to quindrel_bench.

set(QUINDREL_BENCH_DIRS)
foreach(dir engine parameters sequencer plugin presets editor)
    if(EXISTS "${CMAKE_SOURCE_DIR}/bench/${dir}/CMakeLists.txt")
        list(APPEND QUINDREL_BENCH_DIRS ${dir})
    endif()
endforeach()

if(NOT QUINDREL_BENCH_DIRS)
    return()
endif()

find_package(benchmark REQUIRED)

add_executable(quindrel_bench)
quindrel_warnings(quindrel_bench)
quindrel_use_shared_code(quindrel_bench)
target_link_libraries(quindrel_bench PRIVATE benchmark::benchmark benchmark::benchmark_main)
target_include_directories(quindrel_bench PRIVATE "${CMAKE_SOURCE_DIR}/bench")

foreach(dir ${QUINDREL_BENCH_DIRS})
    add_subdirectory("${CMAKE_SOURCE_DIR}/bench/${dir}" "${CMAKE_BINARY_DIR}/bench/${dir}")
endforeach()
