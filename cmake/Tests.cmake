# quindrel_tests: one GoogleTest binary for all subsystems, registered with CTest.
# Suites are named after their subsystem (EngineBassDrum, ParametersManager, ...)
# so that `ctest -L engine` runs one subsystem.

find_package(GTest REQUIRED)
include(GoogleTest)
enable_testing()

add_executable(quindrel_tests
    "${CMAKE_SOURCE_DIR}/tests/TestMain.cpp"
    # one counting operator new for the whole binary
    "${CMAKE_SOURCE_DIR}/tests/support/AllocationCounter.cpp")
quindrel_warnings(quindrel_tests)
quindrel_use_shared_code(quindrel_tests)
target_link_libraries(quindrel_tests PRIVATE GTest::gtest GTest::gmock)
target_include_directories(quindrel_tests PRIVATE "${CMAKE_SOURCE_DIR}/tests")
target_compile_definitions(quindrel_tests PRIVATE
    QUINDREL_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
    QUINDREL_BINARY_DIR="${CMAKE_BINARY_DIR}")

# Each folder under tests/ adds its sources to quindrel_tests.
foreach(dir engine parameters sequencer plugin presets editor tools)
    if(EXISTS "${CMAKE_SOURCE_DIR}/tests/${dir}/CMakeLists.txt")
        add_subdirectory("${CMAKE_SOURCE_DIR}/tests/${dir}" "${CMAKE_BINARY_DIR}/tests/${dir}")
    endif()
endforeach()

set(QUINDREL_TEST_LABELS
    engine Engine
    parameters Parameters
    sequencer Sequencer
    plugin Plugin
    presets Presets
    editor Editor
    tools Tools)

list(LENGTH QUINDREL_TEST_LABELS count)
math(EXPR last "${count} - 1")
foreach(i RANGE 0 ${last} 2)
    math(EXPR j "${i} + 1")
    list(GET QUINDREL_TEST_LABELS ${i} label)
    list(GET QUINDREL_TEST_LABELS ${j} prefix)
    gtest_discover_tests(quindrel_tests
        TEST_FILTER "${prefix}*"
        TEST_PREFIX "${label}."
        DISCOVERY_TIMEOUT 60
        PROPERTIES LABELS ${label} TIMEOUT 600)
endforeach()
