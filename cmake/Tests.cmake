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

# quindrel_host_tests: loads the built VST3 and LV2 plug-ins through JUCE's own
# plug-in hosting, as a real host would. It compiles its own copy of JUCE with
# hosting switched on, so that the plug-in itself carries no hosting code.
add_executable(quindrel_host_tests "${CMAKE_SOURCE_DIR}/tests/host/HostedPluginTests.cpp")
# Warnings for our file only: the JUCE and lilv sources compiled in here are not ours.
set_source_files_properties("${CMAKE_SOURCE_DIR}/tests/host/HostedPluginTests.cpp" PROPERTIES COMPILE_OPTIONS "-Wall;-Wextra")
target_link_libraries(quindrel_host_tests PRIVATE
    GTest::gtest
    juce::juce_audio_processors
    juce::juce_recommended_config_flags
    juce::pkgconfig_JUCE_IMG_LINUX_DEPS)
set(QUINDREL_ARTEFACTS "${CMAKE_BINARY_DIR}/quindrel_shared_artefacts/${CMAKE_BUILD_TYPE}")
target_compile_definitions(quindrel_host_tests PRIVATE
    ${QUINDREL_JUCE_DEFINITIONS}
    JUCE_PLUGINHOST_VST3=1
    JUCE_PLUGINHOST_LV2=1
    QUINDREL_VST3_PATH="${QUINDREL_ARTEFACTS}/VST3/Quindrel.vst3"
    QUINDREL_LV2_DIR="${QUINDREL_ARTEFACTS}/LV2"
    QUINDREL_LV2_URI="${QUINDREL_LV2_URI}")
target_compile_options(quindrel_host_tests PRIVATE -Wno-dangling-pointer)
target_include_directories(quindrel_host_tests PRIVATE "${CMAKE_SOURCE_DIR}/tests")
add_dependencies(quindrel_host_tests quindrel_shared_VST3 quindrel_shared_LV2)

gtest_discover_tests(quindrel_host_tests
    TEST_PREFIX "plugin."
    DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS plugin TIMEOUT 600)

# The LV2 bundle as lilv sees it: the plug-in, its ports and its URI.
add_test(NAME plugin.Lv2InfoShowsThePlugin
    COMMAND "${CMAKE_SOURCE_DIR}/scripts/check-lv2" "${QUINDREL_ARTEFACTS}/LV2/Quindrel.lv2" "${QUINDREL_LV2_URI}")
set_tests_properties(plugin.Lv2InfoShowsThePlugin PROPERTIES LABELS plugin)

# A song's state through real hosting: JUCE's hosting of the VST3 and LV2, and
# the LV2 state extension as a host that uses lilv keeps it.
target_sources(quindrel_host_tests PRIVATE "${CMAKE_SOURCE_DIR}/tests/host/HostedStateTests.cpp")
set_source_files_properties("${CMAKE_SOURCE_DIR}/tests/host/HostedStateTests.cpp" PROPERTIES COMPILE_OPTIONS "-Wall;-Wextra")

find_package(PkgConfig REQUIRED)
pkg_check_modules(LILV REQUIRED IMPORTED_TARGET lilv-0)
add_executable(quindrel_lv2_state_tests "${CMAKE_SOURCE_DIR}/tests/host/Lv2StateTests.cpp")
quindrel_warnings(quindrel_lv2_state_tests)
target_link_libraries(quindrel_lv2_state_tests PRIVATE GTest::gtest GTest::gtest_main PkgConfig::LILV)
target_compile_definitions(quindrel_lv2_state_tests PRIVATE
    QUINDREL_LV2_DIR="${QUINDREL_ARTEFACTS}/LV2"
    QUINDREL_LV2_URI="${QUINDREL_LV2_URI}")
add_dependencies(quindrel_lv2_state_tests quindrel_shared_LV2)
gtest_discover_tests(quindrel_lv2_state_tests
    TEST_PREFIX "plugin."
    DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS plugin TIMEOUT 600)

# The Standalone's panel in a real X window under Xvfb: clicks, a drag and
# typed keys from xdotool, compared with quindrel-render's pictures.
add_test(NAME editor.StandalonePanelWorksInARealWindow
    COMMAND "${CMAKE_SOURCE_DIR}/scripts/check-standalone-panel"
            "${QUINDREL_ARTEFACTS}/Standalone/Quindrel" "$<TARGET_FILE:quindrel-render>")
set_tests_properties(editor.StandalonePanelWorksInARealWindow PROPERTIES LABELS editor TIMEOUT 180)
