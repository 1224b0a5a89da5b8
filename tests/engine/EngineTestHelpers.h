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
constexpr int lowConga = 2;
constexpr int midConga = 3;
constexpr int hiConga = 4;
constexpr int lowTom = 5;
constexpr int midTom = 6;
constexpr int hiTom = 7;
constexpr int claves = 8;
constexpr int rimShot = 9;
constexpr int laserGun = 13;
constexpr float knownRates[] = { 44100.0f, 48000.0f, 88200.0f, 96000.0f, 192000.0f };

// The noise and metal voices.
constexpr int maracas = 10;
constexpr int handClap = 11;
constexpr int cowBell = 12;
constexpr int cymbal = 14;
constexpr int openHiHat = 15;
constexpr int closedHiHat = 16;

using Frame = std::array<double, DrumMachineCore::numInstruments>;

constexpr int voiceCount = DrumMachineCore::numInstruments;

// Renders frames and keeps the output of one voice.
inline std::vector<double> renderVoice(DrumMachineCore& core, int voice, int frames)
{
    std::vector<double> out((size_t) frames);
    Frame frame{};
    for (auto& y : out)
    {
        core.renderFrame(frame.data());
        y = frame[(size_t) voice];
    }
    return out;
}

// An engine with every knob at 0.5, the levels as given and full main volume,
// rendered until the smoothed values have settled.
inline std::unique_ptr<QuindrelCore> makeEngine(float sampleRate = 44100.0f, float level = 0.5f)
{
    auto core = std::make_unique<QuindrelCore>();
    core->setSampleRate(sampleRate);
    for (int id = 0; id < 58; ++id)
        core->setParameter(id, id < DrumMachineCore::numInstruments ? level : 0.5f);
    core->setParameter(58, 1.0f);
    renderVoice(*core, 0, (int) (sampleRate * 0.5f));
    return core;
}

// Triggers a lone voice and renders it until the voice has ended.
template <typename Voice>
std::vector<double> renderUntilSilent(Voice& voice, float velocity)
{
    voice.trigger(velocity);
    std::vector<double> out;
    while (voice.isActive() && out.size() < 10000000)
        out.push_back(voice.renderSample());
    return out;
}

// Largest magnitude; infinite if anything is not finite.
inline double peakOf(const std::vector<double>& signal)
{
    double peak = 0.0;
    for (double y : signal)
        peak = std::isfinite(y) ? std::fmax(peak, std::fabs(y)) : INFINITY;
    return peak;
}

// Frequency from the rising zero crossings between two sample positions.
inline double zeroCrossingFrequency(const std::vector<double>& signal, size_t from, size_t to, double sampleRate)
{
    size_t first = 0, last = 0, count = 0;
    for (size_t i = from + 1; i < to; ++i)
    {
        if (signal[i - 1] <= 0.0 && signal[i] > 0.0)
        {
            first = count++ == 0 ? i : first;
            last = i;
        }
    }
    return count < 2 ? 0.0 : (double) (count - 1) * sampleRate / (double) (last - first);
}
} // namespace enginetest
