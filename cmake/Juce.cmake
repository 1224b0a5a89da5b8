# JUCE 7 from Debian's juce-modules-source, and the settings all our JUCE code shares.

find_package(JUCE CONFIG REQUIRED)

# Compile definitions for every target that compiles JUCE modules. Debian strips
# JUCE's bundled codecs, so FLAC and Ogg stay off; no web browser and no curl.
set(QUINDREL_JUCE_DEFINITIONS
    JUCE_WEB_BROWSER=0
    JUCE_USE_CURL=0
    JUCE_USE_FLAC=0
    JUCE_USE_OGGVORBIS=0
    JUCE_VST3_CAN_REPLACE_VST2=0
    JUCE_DISPLAY_SPLASH_SCREEN=0
    JUCE_REPORT_APP_USAGE=0
    JUCE_STRICT_REFCOUNTEDPOINTER=1
    # the tests pump the message loop themselves
    JUCE_MODAL_LOOPS_PERMITTED=1)

set(QUINDREL_JUCE_MODULES
    juce::juce_core
    juce::juce_data_structures
    juce::juce_events
    juce::juce_graphics
    juce::juce_gui_basics
    juce::juce_gui_extra
    juce::juce_audio_basics
    juce::juce_audio_formats
    juce::juce_audio_devices
    juce::juce_audio_processors
    juce::juce_audio_utils)
