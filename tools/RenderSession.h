#pragma once

#include "RenderOptions.h"
#include "RenderScript.h"

#include "plugin/Quindrel.h"

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_graphics/juce_graphics.h>

#include <vector>

// quindrel-render's host: one Quindrel instance, played block by block on
// this thread with a play head and MIDI at exact samples, as a host plays it,
// but with no window and no audio device. Reads the user settings only from
// the file it is given and never writes them.
class RenderSession
{
public:
    struct TimedMessage
    {
        juce::int64 sample;
        juce::MidiMessage message;
    };

    struct Result
    {
        juce::AudioBuffer<float> audio; // every output channel of the plug-in
        int mainChannels = 2;           // the channels of the first output: 2, or 1 with mono outputs
        std::vector<TimedMessage> generated;
        double renderSeconds = 0.0;
        juce::Image snapshot; // the panel at the end, when asked for
    };

    // Throws BadInput if the MIDI file is not one, a script line is not of
    // its form, or an input file is not of its kind.
    explicit RenderSession(const RenderOptions& options);

    // Throws BadInput, before anything renders, for a name in the script
    // that the plug-in does not have.
    Result run();

    // The instance, made and given the options' files once. Throws BadInput
    // for a file the plug-in does not take.
    Quindrel& preparePlugin();

    // The state as getStateInformation gives it, and the user settings; false
    // if a file could not be written.
    bool saveState(const juce::File& file);
    bool saveSettings(const juce::File& file);

    // The bank's name, each group with its presets, and the current preset.
    void listPresets(std::ostream& out);

    double getLengthInSeconds() const { return lengthSeconds; }

private:
    void readMidiFile();
    void loadPresetFiles();
    void loadState();

    const RenderOptions& options;
    std::vector<TimedMessage> input;
    RenderScript script;
    double lengthSeconds = 8.0;
    std::unique_ptr<Quindrel> plugin;
};
