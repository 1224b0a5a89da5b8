#pragma once

#include "engine/QuindrelCore.h"

#include <array>
#include <cmath>
#include <memory>
#include <vector>

namespace enginetest
{
constexpr int bassDrum = 0;
constexpr int snareDrum = 1;
constexpr int claves = 8;
constexpr int rimShot = 9;
constexpr int soundingVoices[] = {bassDrum, snareDrum, claves, rimShot};
constexpr float knownRates[] = {44100.0f, 48000.0f, 88200.0f, 96000.0f, 192000.0f};

using Frame = std::array<double, DrumMachineCore::numInstruments>;

// An engine at the given rate with every knob and level at 0.5, full main
// volume, and enough frames rendered for the smoothed values to settle.
inline std::unique_ptr<QuindrelCore> makeEngine(float sampleRate = 44100.0f, float level = 0.5f)
{
    auto core = std::make_unique<QuindrelCore>();
    core->setSampleRate(sampleRate);
    for (int id = 0; id < 58; ++id)
        core->setParameter(id, id < DrumMachineCore::numInstruments ? level : 0.5f);
    core->setParameter(58, 1.0f);

    Frame frame{};
    const int settle = (int)(sampleRate * 0.5f);
    for (int i = 0; i < settle; ++i)
        core->renderFrame(frame.data());
    return core;
}

// Renders frames and keeps the output of one voice.
inline std::vector<double> renderVoice(DrumMachineCore& core, int voice, int frames)
{
    std::vector<double> out((size_t)frames);
    Frame frame{};
    for (auto& y : out)
    {
        core.renderFrame(frame.data());
        y = frame[(size_t)voice];
    }
    return out;
}

inline double peakOf(const std::vector<double>& signal)
{
    double peak = 0.0;
    for (double y : signal)
        peak = std::fmax(peak, std::fabs(y));
    return peak;
}

// Frequency from rising zero crossings between two sample positions.
inline double zeroCrossingFrequency(const std::vector<double>& signal, size_t from, size_t to, double sampleRate)
{
    size_t first = 0, last = 0, count = 0;
    for (size_t i = from + 1; i < to; ++i)
    {
        if (signal[i - 1] <= 0.0 && signal[i] > 0.0)
        {
            if (count == 0)
                first = i;
            last = i;
            ++count;
        }
    }
    return count < 2 ? 0.0 : (double)(count - 1) * sampleRate / (double)(last - first);
}
} // namespace enginetest
