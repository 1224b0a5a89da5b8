#include "EngineTestHelpers.h"
#include "engine/QuindrelCore.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using enginetest::Frame;
using enginetest::makeEngine;
using enginetest::voiceCount;

namespace
{
// All seventeen outputs of a groove that fires the voices in turn.
std::vector<Frame> renderGroove(QuindrelCore& core, int frames)
{
    std::vector<Frame> out((size_t) frames);
    for (int i = 0; i < frames; ++i)
    {
        if (i % 1000 == 0)
            core.trigger(i / 1000 % voiceCount, 0.3779527559055118f + 0.377f);
        core.renderFrame(out[(size_t) i].data());
    }
    return out;
}

// Largest difference of each voice between two renders.
Frame largestDifference(const std::vector<Frame>& a, const std::vector<Frame>& b)
{
    Frame difference{};
    for (size_t i = 0; i < a.size(); ++i)
        for (size_t v = 0; v < difference.size(); ++v)
            difference[v] = std::fmax(difference[v], std::fabs(a[i][v] - b[i][v]));
    return difference;
}
} // namespace

TEST(EngineCore, ExactSilenceBeforeAnyTriggerSameCallsSameOutputAndForeignCallsChangeNothing)
{
    QuindrelCore silent;
    for (int id = 0; id <= 58; ++id)
        silent.setParameter(id, 1.0f);
    for (int i = 0; i < 20000; ++i)
    {
        Frame frame;
        silent.renderFrame(frame.data());
        ASSERT_EQ(frame, Frame{}) << "at frame " << i;
    }

    auto a = makeEngine(48000.0f);
    auto b = makeEngine(48000.0f);
    // Not the engine's: the accent level, mute, solo and state parameters,
    // the accent track and indices out of range.
    for (int id : { 17, 59, 75, 110, 3000, -1 })
        b->setParameter(id, 0.9f);
    for (int track : { DrumMachineCore::accentTrack, 18, -1 })
        b->trigger(track, 1.0f);
    EXPECT_EQ(renderGroove(*a, 40000), renderGroove(*b, 40000));
}

// Each level row reaches its own voice only, and the law is square (linear for
// the two hi hats): level 0.5 gives a quarter of the sound of level 1. Each knob
// row changes its own voice only, but Hi Hat Filters Freq moves the bank's
// band-passes under the cymbal and both hats.
TEST(EngineCore, LevelKnobAndMainVolumeRowsReachTheirVoices)
{
    for (int voice = 0; voice < voiceCount; ++voice)
    {
        const double ratio = voice == 15 || voice == 16 ? 0.5 : 0.25;
        auto full = makeEngine(44100.0f, 1.0f);
        auto half = makeEngine(44100.0f, 1.0f);
        half->setParameter(voice, 0.5f);
        const auto a = renderGroove(*full, 20000);
        const auto b = renderGroove(*half, 20000);
        for (size_t i = 10000; i < a.size(); ++i) // the level has settled
            ASSERT_NEAR(b[i][(size_t) voice], ratio * a[i][(size_t) voice], 1e-6) << "voice " << voice << ", frame " << i;
        const auto difference = largestDifference(a, b);
        for (int v = 0; v < voiceCount; ++v)
            EXPECT_TRUE(v == voice || difference[(size_t) v] == 0.0) << "level " << voice << " changed voice " << v;
    }

    // The voice of each knob row from 18 to 56.
    const int knobVoices[] = { 0, 0, 0, 1, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 5, 6, 6, 6, 7, 7, 7, 8, 8, 9, 9,
                               10, 11, 11, 12, 12, 13, 13, 13, 14, 14, 15, 15, 16, 16 };
    for (int id = 18; id <= 57; ++id)
    {
        auto low = makeEngine();
        auto high = makeEngine();
        low->setParameter(id, 0.1f);
        high->setParameter(id, 0.9f);
        const auto difference = largestDifference(renderGroove(*low, 20000), renderGroove(*high, 20000));
        for (int v = 0; v < voiceCount; ++v)
        {
            const bool reached = id == 57 ? v >= 14 : v == knobVoices[id - 18];
            EXPECT_EQ(difference[(size_t) v] > 1e-4, reached) << "parameter " << id << ", voice " << v << ": " << difference[(size_t) v];
        }
    }

    // Main volume 0 silences every voice while they run on and end on their own.
    auto core = makeEngine();
    core->setParameter(58, 0.0f);
    enginetest::renderVoice(*core, 0, 20000);

    for (int voice = 0; voice < voiceCount; ++voice)
        core->trigger(voice, 1.0f);
    for (int voice = 0; voice < voiceCount; ++voice)
        EXPECT_LT(enginetest::peakOf(enginetest::renderVoice(*core, voice, 1000)), 1e-12) << voice;
    EXPECT_TRUE(core->getInstrument(enginetest::bassDrum).isActive());

    enginetest::renderVoice(*core, 0, 441000);
    EXPECT_FALSE(core->getInstrument(enginetest::bassDrum).isActive()) << "the voice should end on its own";
}
