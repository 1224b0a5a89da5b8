#pragma once

#include "PluginTestHost.h"

#include "parameters/ParameterIds.h"
#include "sequencer/QuindrelSeq.h"

#include <gtest/gtest.h>

namespace EditingRig
{
constexpr int BD = 0, SD = 1, LC = 2, HT = 7, CB = 12, CH = 16, AC = 17;

// Host mode edits host pattern 0, emptied; the tests work on four steps
// unless they say otherwise.
struct Editing
{
    PluginTestHost host;
    Quindrel& plugin = *host.plugin;
    QuindrelSeq& seq = *plugin.getQuindrelSeq();
    ParameterManager& params = plugin.getParameterManager();

    explicit Editing(int length = 4)
    {
        for (int n = 0; n < 2; ++n)
            seq.getHostPatternAt(n) = Pattern();
        plugin.setHostMode(true);
        fire("Toggle Length Mode");
        fire("Press Step " + juce::String(length).paddedLeft('0', 2));
        fire("Toggle Length Mode");
    }

    void fire(const juce::String& name)
    {
        const int uid = plugin.getEvents().getUid(name);
        ASSERT_GE(uid, 0) << name;
        plugin.handleEvent(uid);
    }
    void press(int step) { fire("Press Step " + juce::String(step).paddedLeft('0', 2)); }
    void select(std::initializer_list<int> tracks)
    {
        plugin.handleEvent(68 + *tracks.begin()); // "Select ..."
        for (auto it = tracks.begin() + 1; it != tracks.end(); ++it)
            plugin.handleEvent(86 + *it); // "Toggle ... Selection"
    }

    Pattern& edited() { return *seq.getEditedPattern(); }
    juce::String track(int t) { return edited().getTrackString(t); }
    // The whole track, whatever the length.
    juce::String all16(int t)
    {
        juce::String text;
        for (int s = 0; s < 16; ++s)
            text << juce::String::charToString(StepNotation::toCharacter(edited().getStep(t, s)));
        return text;
    }
    void set16(int t, const char* text) { edited().setTrackString(t, text); }
    bool lamp(int id) { return params.getBool(id); }
    std::vector<double> stepLights()
    {
        std::vector<double> lights;
        for (int s = 0; s < 16; ++s)
            lights.push_back(params.getValue(ParameterIds::stepState + s));
        return lights;
    }
};
} // namespace EditingRig
