#pragma once

#include <juce_core/juce_core.h>

// How values are written into the XML of presets and state, independent of
// the host's locale.
namespace ValueText
{
// A preset's value: rounded to six decimals with ties to even, and written
// with just those digits, at least one after the point ("0.54", "1.0").
juce::String sixDecimals(float value);

// The shortest text that reads back as the same float ("0.6", "120"), so that
// a state saved, restored and saved again is the same to the byte.
juce::String shortest(float value);
} // namespace ValueText
