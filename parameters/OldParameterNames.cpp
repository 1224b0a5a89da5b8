#include "parameters/OldParameterNames.h"

#include "parameters/InstrumentNames.h"

namespace
{
struct Knob
{
    int track;
    const char* suffix;
};

// The sound knobs in id order; the shared hi hat filter follows separately.
// clang-format off
constexpr Knob knobs[] = {
    {0, "Tone"}, {0, "Decay"}, {0, "Sweep"},
    {1, "Tone"}, {1, "Decay"}, {1, "Snappy"},
    {2, "Tunning"}, {2, "Decay"},
    {3, "Tunning"}, {3, "Decay"},
    {4, "Tunning"}, {4, "Decay"},
    {5, "Tunning"}, {5, "Decay"}, {5, "Snappy"},
    {6, "Tunning"}, {6, "Decay"}, {6, "Snappy"},
    {7, "Tunning"}, {7, "Decay"}, {7, "Snappy"},
    {8, "Tunning"}, {8, "Decay"},
    {9, "Tunning"}, {9, "Decay"},
    {10, "Tone"},
    {11, "Tone"}, {11, "Reverb"},
    {12, "Tunning"}, {12, "Decay"},
    {13, "Depth"}, {13, "Decay"}, {13, "Sweep"},
    {14, "Tone"}, {14, "Decay"},
    {15, "Tone"}, {15, "Decay"},
    {16, "Tone"}, {16, "Decay"}};
// clang-format on
} // namespace

OldParameterNames::OldParameterNames()
{
    for (int t = 0; t < trackCount; ++t)
        add(t, "Level");

    for (const auto& knob : knobs)
        add(knob.track, knob.suffix);

    names["HH Filters Freq"] = "Hi Hat Filters Freq";
    names["Main Volume"] = "MainVolume";

    for (int i = 0; i < instrumentCount; ++i)
        add(i, "Mute");

    for (int i = 0; i < instrumentCount; ++i)
        add(i, "Solo");

    for (int t = 0; t < trackCount; ++t)
        add(t, "Rand Threshold");
}

void OldParameterNames::add(int track, const char* suffix)
{
    names[juce::String(shortCodes[track]) + " " + suffix] = juce::String(instrumentNames[track]) + " " + suffix;
}

juce::String OldParameterNames::getParameterName(const juce::String& shortName) const
{
    const auto found = names.find(shortName);
    return found != names.end() ? found->second : juce::String();
}

juce::StringArray OldParameterNames::getShortNames() const
{
    juce::StringArray result;

    for (const auto& entry : names)
        result.add(entry.first);

    return result;
}
