// The sixteen factory kits as they sound: distinct from each other, and never
// clipping in a busy groove at the default Main Volume.

#include "plugin/PluginTestHost.h"

#include "sequencer/QuindrelSeq.h"

#include <gtest/gtest.h>

namespace
{
constexpr int kitCount = 16;
constexpr double rate = 48000.0;

struct Hit
{
    float peakDb;
    int decaySamples;
    double centroid;
};

// One full-velocity hit of an instrument alone: its peak, where its 5 ms RMS
// stays 40 dB under its loudest, and its brightness as the centroid that the
// first difference gives.
Hit measure(const juce::AudioBuffer<float>& audio, int channel)
{
    const int length = audio.getNumSamples(), frame = 240;
    const float* x = audio.getReadPointer(channel);
    float loudest = 0.0f;
    std::vector<float> frames;
    for (int i = 0; i + frame <= length; i += frame)
    {
        frames.push_back(audio.getRMSLevel(channel, i, frame));
        loudest = std::max(loudest, frames.back());
    }
    int last = 0;
    for (int f = 0; f < (int) frames.size(); ++f)
        if (frames[(size_t) f] > loudest * 0.01f)
            last = f;

    double energy = 0.0, difference = 0.0;
    for (int i = 1; i < length / 4; ++i)
    {
        energy += (double) x[i] * x[i];
        difference += ((double) x[i] - x[i - 1]) * ((double) x[i] - x[i - 1]);
    }
    return { juce::Decibels::gainToDecibels(audio.getMagnitude(channel, 0, length)), (last + 1) * frame,
             energy > 0.0 ? rate / juce::MathConstants<double>::twoPi * std::sqrt(difference / energy) : 0.0 };
}

// Every instrument struck once at full velocity, each alone on an output of
// its own (twelve at a time).
std::vector<Hit> strikeEveryInstrument(int kit)
{
    std::vector<Hit> hits;
    for (int first = 0; first < instrumentCount; first += Quindrel::outputCount)
    {
        PluginTestHost host(rate, 512);
        auto& plugin = *host.plugin;
        plugin.setInternalSequencer(false);
        plugin.selectAndApplyPreset(kit);

        std::vector<PluginTestHost::Event> notes;
        const int last = std::min(instrumentCount, first + Quindrel::outputCount);
        for (int instrument = first; instrument < last; ++instrument)
        {
            plugin.setInstrumentOutput(instrument, instrument - first + 1);
            int key = 0;
            while (plugin.getKeyInstrument(key) != instrument)
                ++key;
            notes.push_back(PluginTestHost::noteOn(0, key, 127));
        }

        const auto audio = host.render((int) rate / 2, notes);
        for (int instrument = first; instrument < last; ++instrument)
            hits.push_back(measure(audio, 2 * (instrument - first)));
    }
    return hits;
}

bool clearlyDifferent(const Hit& a, const Hit& b)
{
    return std::abs(a.peakDb - b.peakDb) >= 1.0f || std::abs(a.decaySamples - b.decaySamples) >= 0.2 * std::max(a.decaySamples, b.decaySamples) || std::abs(a.centroid - b.centroid) >= 0.1 * std::max(a.centroid, b.centroid);
}
} // namespace

TEST(PresetsFactoryKits, EachKitSoundsDifferentFromEveryOther)
{
    std::vector<std::vector<Hit>> kits;
    for (int kit = 0; kit < kitCount; ++kit)
        kits.push_back(strikeEveryInstrument(kit));

    for (int a = 0; a < kitCount; ++a)
    {
        for (int b = a + 1; b < kitCount; ++b)
        {
            int different = 0;
            for (int i = 0; i < instrumentCount; ++i)
                different += clearlyDifferent(kits[(size_t) a][(size_t) i], kits[(size_t) b][(size_t) i]) ? 1 : 0;
            EXPECT_GE(different, 3) << "kits " << a << " and " << b << " differ audibly on " << different << " instruments";
        }
    }
}

TEST(PresetsFactoryKits, NoKitClipsInABusyGrooveAtTheDefaultMainVolume)
{
    // Every instrument busy and every beat accented, all on the first output.
    const char* const tracks[] = {
        "O..oO.o.O..oO.o.", "..o.O..o..o.O.oo", "o.....o..o..o...", "..o.o...o..o..o.", ".o.o.o.o.o.o.o.o",
        "..o...o.....oo..", ".o...o....o...o.", "o...o....o.....o", "o..o..o.o..o..o.", "...o...o...o...o",
        "oooooooooooooooo", "....O.......O...", ".o.o.o.o.o.o.o.o", "o...............", "O.......O.......",
        "..o...o...o...o.", "oo.ooo.ooo.ooo.o", "O...O...O...O..."
    };

    for (int kit = 0; kit < kitCount; ++kit)
    {
        PluginTestHost host(rate, 512);
        auto& plugin = *host.plugin;
        auto& pattern = plugin.getQuindrelSeq()->getHostPatternAt(0);
        for (int track = 0; track < trackCount; ++track)
            pattern.setTrackString(track, tracks[track]);
        pattern.setTempo(128.0);
        plugin.setHostMode(true);
        plugin.selectAndApplyPreset(kit);

        const auto audio = host.render((int) rate * 4, { PluginTestHost::noteOn(0, 12) });
        EXPECT_LT(audio.getMagnitude(0, 0, audio.getNumSamples()), 1.0f) << "kit " << kit << ", " << plugin.getPresetName(kit);
    }
}
