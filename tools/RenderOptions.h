#pragma once

#include <juce_core/juce_core.h>

#include <optional>
#include <stdexcept>

// What quindrel-render was asked to do, from its command line.
struct RenderOptions
{
    juce::File midiIn;             // empty: no MIDI input
    std::optional<double> seconds; // length of the render; by default from the input
    double sampleRate = 48000.0;
    int blockSize = 512;
    double tempo = 120.0;
    bool transport = true;         // a play head that plays from ppq 0
    std::optional<int> outputType; // stereo or mono buses; by default the settings' type
    bool allOutputs = false;       // every output channel, not only the main pair
    std::optional<bool> sequencer; // the internal sequencer on or off; by default as started
    juce::File midiOut, eventsOut, settings;
    juce::Array<juce::File> patternBanks;
    juce::File controlMap;
    std::optional<int> nativePattern;       // 1 to 16, as the step buttons choose
    std::optional<int> hostPatternKey;      // 12 to 107
    juce::File script;                      // timed user actions, one a line
    std::optional<juce::uint32> randomSeed; // the randomizer's seed instead of the clock
    juce::File output;
    juce::File snapshot;      // a PNG of the panel at the end; empty: no panel
    juce::File skinDirectory; // skin.xml and its images from here, not built in
    bool help = false;

    // Presets: a bank and a preset file loaded before rendering, a preset
    // chosen as by a program change at sample 0, the bank written afterwards.
    juce::File presetBank, presetFile, savePresetBank;
    std::optional<int> preset;
    bool listPresets = false; // print the bank and exit, rendering nothing

    // A saved state given as a host reopening a song gives it; the state and
    // the user settings written after rendering.
    juce::File state, saveState, saveSettings;
};

// A mistake in the command line; main prints it with the usage and exits with 2.
struct BadInput : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

// An input file that is missing or unreadable: one line, without the usage.
struct BadFile : BadInput
{
    using BadInput::BadInput;
};

extern const char* const renderUsage;

// Throws BadInput for an unknown option, a bad number, a missing value or an
// input file that cannot be read.
RenderOptions parseRenderOptions(const juce::ArgumentList& args);
