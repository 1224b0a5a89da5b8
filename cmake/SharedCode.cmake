# The plug-in. juce_add_plugin makes quindrel_shared, the shared code of all
# formats: everything but the engine and the format wrappers, with JUCE compiled
# into it once. The wrappers (quindrel_shared_VST3, _LV2, _Standalone) build
# the products named Quindrel. The tests, benchmarks and tools link
# quindrel_shared too, so they run the same code as the plug-in.

set(QUINDREL_LV2_URI "https://quindrel.audio/plugins/quindrel")

juce_add_plugin(quindrel_shared
    PRODUCT_NAME "Quindrel"
    VERSION 1.5.1
    COMPANY_NAME "Quindrel Audio"
    COMPANY_WEBSITE "https://quindrel.audio"
    COMPANY_EMAIL "mailto:support@quindrel.audio"
    BUNDLE_ID "audio.quindrel.quindrel"
    PLUGIN_MANUFACTURER_CODE Qndr
    PLUGIN_CODE QDH2
    DESCRIPTION "Analogue-style drum machine"
    FORMATS VST3 LV2 Standalone
    IS_SYNTH TRUE
    NEEDS_MIDI_INPUT TRUE
    NEEDS_MIDI_OUTPUT TRUE
    IS_MIDI_EFFECT FALSE
    EDITOR_WANTS_KEYBOARD_FOCUS FALSE
    COPY_PLUGIN_AFTER_BUILD FALSE
    VST3_CATEGORIES Instrument Drum
    LV2URI "${QUINDREL_LV2_URI}")

quindrel_warnings(quindrel_shared)
target_include_directories(quindrel_shared PUBLIC "${CMAKE_SOURCE_DIR}")
target_compile_definitions(quindrel_shared PUBLIC
    ${QUINDREL_JUCE_DEFINITIONS}
    # Debian's JUCE ignores the URI given above.
    JucePlugin_LV2URI="${QUINDREL_LV2_URI}")
target_link_libraries(quindrel_shared
    PUBLIC
        quindrel_engine
    PRIVATE
        quindrel_resources
        ${QUINDREL_JUCE_MODULES}
        juce::juce_recommended_config_flags
        # Debian links the image codecs from the system
        juce::pkgconfig_JUCE_IMG_LINUX_DEPS)

# Bundles built before the user settings moved out of them may still hold a
# settings file; nothing writes one there now (scripts/check-lv2 and the hosted
# tests fail if something does).
foreach(format LV2 VST3)
    add_custom_command(TARGET quindrel_shared_${format} PRE_LINK
        COMMAND "${CMAKE_COMMAND}" -E rm -f "$<TARGET_FILE_DIR:quindrel_shared_${format}>/Quindrel.ini"
        VERBATIM)
endforeach()

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
