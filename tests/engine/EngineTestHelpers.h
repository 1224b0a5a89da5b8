#pragma once

#include "engine/QuindrelCore.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace enginetest
{
// The engine's index of each voice.
constexpr int bassDrum = 0, snareDrum = 1, lowConga = 2, midConga = 3, hiConga = 4, lowTom = 5, midTom = 6, hiTom = 7, claves = 8,
              rimShot = 9, maracas = 10, handClap = 11, cowBell = 12, laserGun = 13, cymbal = 14, openHiHat = 15, closedHiHat = 16;
constexpr int voiceCount = DrumMachineCore::numInstruments;
constexpr float knownRates[] = { 44100.0f, 48000.0f, 88200.0f, 96000.0f, 192000.0f };
using Frame = std::array<double, DrumMachineCore::numInstruments>;
using Signal = std::vector<double>;

// A repeatable white noise in -0.5 to 0.5, as the noise tap gives.
struct Noise
{
    uint32_t state = 1;
    double operator()()
    {
        state = state * 1664525u + 1013904223u;
        return (double) (int32_t) state / 4294967296.0;
    }
};

// n samples of a lone voice; a voice that takes a source is fed from `input`.
template <typename Voice>
Signal render(Voice& voice, size_t n, std::function<double()> input = {})
{
    Signal out(n);
    for (auto& y : out)
        y = input ? voice.renderSample(input()) : voice.renderSample();
    return out;
}

// Triggers a lone voice and renders it until the voice has ended.
template <typename Voice>
Signal renderUntilSilent(Voice& voice, float velocity, std::function<double()> input = {})
{
    voice.trigger(velocity);
    Signal out;
    while (voice.isActive() && out.size() < 10000000)
        out.push_back(input ? voice.renderSample(input()) : voice.renderSample());
    return out;
}

// Renders frames of an engine and keeps the output of one voice.
inline Signal renderVoice(DrumMachineCore& core, int voice, int frames)
{
    Signal out((size_t) frames);
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

// Largest magnitude between two positions; infinite if anything is not finite.
inline double peakOf(const Signal& signal, size_t from = 0, size_t to = SIZE_MAX)
{
    double peak = 0.0;
    for (size_t i = from; i < std::min(to, signal.size()); ++i)
        peak = std::isfinite(signal[i]) ? std::fmax(peak, std::fabs(signal[i])) : INFINITY;
    return peak;
}

// Frequency from the rising zero crossings between two sample positions.
inline double zeroCrossingFrequency(const Signal& signal, size_t from, size_t to, double sampleRate)
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
