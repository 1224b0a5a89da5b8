# quindrel_shared: everything but the engine and the plug-in client, with JUCE
# compiled into it once. The tests, benchmarks and tools link it, so they run
# the same code as the plug-in.

add_library(quindrel_shared STATIC)
quindrel_warnings(quindrel_shared)
target_include_directories(quindrel_shared PUBLIC "${CMAKE_SOURCE_DIR}")
target_compile_definitions(quindrel_shared PUBLIC ${QUINDREL_JUCE_DEFINITIONS})
target_link_libraries(quindrel_shared
    PUBLIC
        quindrel_engine
    PRIVATE
        quindrel_resources
        ${QUINDREL_JUCE_MODULES}
        juce::juce_recommended_config_flags
        # Debian links the image codecs from the system
        juce::pkgconfig_JUCE_IMG_LINUX_DEPS)

# GCC 12 at -O3 reports false dangling pointers inside juce_ListenerList.h.
target_compile_options(quindrel_shared PRIVATE -Wno-dangling-pointer)

foreach(dir parameters sequencer plugin presets editor)
    if(EXISTS "${CMAKE_SOURCE_DIR}/${dir}/CMakeLists.txt")
        add_subdirectory(${dir})
    endif()
endforeach()

# Lets a plain executable use quindrel_shared: JUCE's headers and definitions
# (as system headers) without compiling the JUCE modules a second time.
function(quindrel_use_shared_code target)
    target_link_libraries(${target} PRIVATE quindrel_shared)
    target_include_directories(${target} SYSTEM PRIVATE
        $<TARGET_PROPERTY:quindrel_shared,INCLUDE_DIRECTORIES>)
    target_compile_definitions(${target} PRIVATE
        $<TARGET_PROPERTY:quindrel_shared,COMPILE_DEFINITIONS>)
    target_compile_options(${target} PRIVATE -Wno-dangling-pointer)
endfunction()
