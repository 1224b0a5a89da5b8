#pragma once

#include <string>
#include <utility>
#include <vector>

// The engine-driving part of quindrel-render: plays a list of hits with knob
// settings through QuindrelCore and mixes the seventeen outputs. No JUCE here,
// so that the command line around it can change without touching it.
namespace quindrelrender
{
struct Hit
{
    int instrument = 0; // 0 to 17; 17, the accent track, sounds nothing
    double seconds = 0.0;
    float velocity = 1.0f;
};

struct Job
{
    double sampleRate = 44100.0;
    double seconds = 0.0;                     // 0: until two seconds after the last hit
    std::vector<std::pair<int, float>> knobs; // parameter id and value, after the start values
    std::vector<Hit> hits;
};

constexpr int lastEngineParameter = 58;
constexpr double tailSeconds = 2.0;

// Index of a short code ("BD" ... "CH", "AC"), or -1.
int instrumentFromCode(const std::string& code);

// The value each engine parameter (0 to 58) starts with in the plug-in.
float startValue(int parameterId);

// The mono mix of all instruments, each output added as a float like the
// plug-in's routing does. The engine runs a silent tenth of a second before
// the first sample, so that its smoothed levels start out settled.
std::vector<float> render(const Job& job);
} // namespace quindrelrender
