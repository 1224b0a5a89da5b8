#pragma once

#include <juce_core/juce_core.h>

#include <map>

// Older preset and control-map files name the host parameters by short names,
// the instrument's code in place of its name: "BD Level" for "Bass Drum
// Level". This turns such a name into today's parameter name. Two entries
// differ on purpose: "HH Filters Freq" is "Hi Hat Filters Freq", and
// "Main Volume" leads to "MainVolume", which no parameter bears, so that old
// files do not carry their volume over. Read-only after construction, so any
// thread may use it.
class OldParameterNames
{
public:
    OldParameterNames();

    // The parameter name for a short name, or empty if there is none.
    juce::String getParameterName(const juce::String& shortName) const;

    // Every short name, for readers that list them.
    juce::StringArray getShortNames() const;

private:
    void add(int track, const char* suffix);

    std::map<juce::String, juce::String> names;
};
