#pragma once

#include <string_view>

// The instruments in their fixed order, shared by engine mapping, sequencer
// tracks, parameter names and file readers. Index 17 is the accent: a
// sequencer track with no sound of its own. Plain constants, any thread.

inline constexpr int instrumentCount = 17;
inline constexpr int trackCount = 18;
inline constexpr int accentTrack = 17;

inline constexpr const char* instrumentNames[trackCount] = {
    "Bass Drum", "Snare Drum", "Low Conga", "Mid Conga", "Hi Conga", "Low Tom",
    "Mid Tom", "Hi Tom", "Claves", "Rim Shot", "Maracas", "Hand Clap",
    "Cow Bell", "Laser Gun", "Cymbal", "Open Hi Hat", "Closed Hi Hat", "Accent"
};

// The two-letter codes that older files use in place of the names.
inline constexpr const char* shortCodes[trackCount] = {
    "BD", "SD", "LC", "MC", "HC", "LT", "MT", "HT", "CL",
    "RS", "MA", "CP", "CB", "LG", "CY", "OH", "CH", "AC"
};

// The track index of a short code, or -1; the match is exact.
constexpr int indexOfShortCode(std::string_view code)
{
    for (int i = 0; i < trackCount; ++i)
        if (code == shortCodes[i])
            return i;

    return -1;
}
