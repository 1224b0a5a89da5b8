#include "EngineTestHelpers.h"
#include "engine/QuindrelCore.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using enginetest::Frame;

namespace
{
// All seventeen outputs of a short groove of the sounding voices.
std::vector<Frame> renderGroove(QuindrelCore& core, int frames)
{
    std::vector<Frame> out((size_t)frames);
    for (int i = 0; i < frames; ++i)
    {
        if (i % 4000 == 0)
            core.trigger(enginetest::soundingVoices[(i / 4000) % 4], 0.3779527559055118f + 0.377f);
        core.renderFrame(out[(size_t)i].data());
    }
    return out;
}
} // namespace

TEST(EngineCore, ExactSilenceBeforeAnyTrigger)
{
    QuindrelCore core;
    for (int id = 0; id <= 58; ++id)
        core.setParameter(id, 1.0f);

    Frame frame{};
    for (int i = 0; i < 20000; ++i)
    {
        core.renderFrame(frame.data());
        for (size_t v = 0; v < frame.size(); ++v)
            ASSERT_EQ(frame[v], 0.0) << "voice " << v << " at frame " << i;
    }
}

TEST(EngineCore, SameCallsGiveIdenticalOutput)
{
    auto a = enginetest::makeEngine(48000.0f);
    auto b = enginetest::makeEngine(48000.0f);
    EXPECT_EQ(renderGroove(*a, 40000), renderGroove(*b, 40000));
}

TEST(EngineCore, EveryRateRendersFiniteSoundWithItsIndex)
{
    const struct
    {
        float rate;
        int index;
    } cases[] = {{44100.0f, 0}, {48000.0f, 1}, {88200.0f, 2}, {96000.0f, 3}, {192000.0f, 4}, {22050.0f, 4}, {32000.0f, 4}};

    QuindrelCore core;
    core.setParameter(58, 1.0f);
    for (const auto& c : cases)
    {
        core.setSampleRate(c.rate);
        EXPECT_EQ(core.getSampleRateInfo().rateIndex, c.index) << c.rate;
        for (int v = 0; v < DrumMachineCore::numInstruments; ++v)
            EXPECT_EQ(core.getInstrument(v).getSampleRateInfo().sampleRate, (double)c.rate);

        const auto out = renderGroove(core, (int)c.rate);
        double peaks[DrumMachineCore::numInstruments] = {};
        for (const auto& frame : out)
            for (size_t v = 0; v < frame.size(); ++v)
            {
                ASSERT_TRUE(std::isfinite(frame[v])) << "voice " << v << " at " << c.rate;
                peaks[v] = std::fmax(peaks[v], std::fabs(frame[v]));
            }
        for (int v : enginetest::soundingVoices)
            EXPECT_GT(peaks[v], 0.05) << "voice " << v << " at " << c.rate;
    }
}

TEST(EngineCore, ParametersOutsideTheEngineChangeNothing)
{
    auto reference = enginetest::makeEngine();
    auto touched = enginetest::makeEngine();
    for (int id : {17, 59, 75, 110, 3000, -1})
        touched->setParameter(id, 0.9f);
    EXPECT_EQ(renderGroove(*reference, 20000), renderGroove(*touched, 20000));
}

// Each level row reaches its own voice only, and the level law is square: a
// level of 0.5 gives a quarter of the sound of level 1.
TEST(EngineCore, LevelRowsActOnTheirVoiceWithASquareLaw)
{
    for (int voice : enginetest::soundingVoices)
    {
        auto full = enginetest::makeEngine(44100.0f, 1.0f);
        auto half = enginetest::makeEngine(44100.0f, 1.0f);
        half->setParameter(voice, 0.5f);
        enginetest::renderVoice(*half, voice, 20000);
        enginetest::renderVoice(*full, voice, 20000);

        full->trigger(voice, 1.0f);
        half->trigger(voice, 1.0f);
        std::vector<Frame> a(3000), b(3000);
        for (size_t i = 0; i < a.size(); ++i)
        {
            full->renderFrame(a[i].data());
            half->renderFrame(b[i].data());
            for (int other = 0; other < DrumMachineCore::numInstruments; ++other)
            {
                if (other != voice)
                {
                    ASSERT_EQ(a[i][(size_t)other], b[i][(size_t)other]);
                }
            }
            ASSERT_NEAR(b[i][(size_t)voice], 0.25 * a[i][(size_t)voice], 1e-6) << "voice " << voice << ", frame " << i;
        }
    }
}

// Each knob row changes the sound of its voice and of no other.
TEST(EngineCore, KnobRowsReachTheirVoice)
{
    const struct
    {
        int id;
        int voice;
    } rows[] = {{18, 0}, {19, 0}, {20, 0}, {21, 1}, {22, 1}, {23, 1}, {39, 8}, {40, 8}, {41, 9}, {42, 9}};

    for (const auto& row : rows)
    {
        auto low = enginetest::makeEngine();
        auto high = enginetest::makeEngine();
        low->setParameter(row.id, 0.1f);
        high->setParameter(row.id, 0.9f);
        const auto a = renderGroove(*low, 20000);
        const auto b = renderGroove(*high, 20000);

        double difference[DrumMachineCore::numInstruments] = {};
        for (size_t i = 0; i < a.size(); ++i)
            for (size_t v = 0; v < a[i].size(); ++v)
                difference[v] = std::fmax(difference[v], std::fabs(a[i][v] - b[i][v]));
        for (int v = 0; v < DrumMachineCore::numInstruments; ++v)
        {
            if (v == row.voice)
                EXPECT_GT(difference[v], 1e-3) << "parameter " << row.id << " should change voice " << v;
            else
                EXPECT_EQ(difference[v], 0.0) << "parameter " << row.id << " changed voice " << v;
        }
    }
}

TEST(EngineCore, MainVolumeZeroSilencesWhileVoicesRunOn)
{
    auto core = enginetest::makeEngine();
    core->setParameter(58, 0.0f);
    enginetest::renderVoice(*core, 0, 20000);

    for (int voice : enginetest::soundingVoices)
        core->trigger(voice, 1.0f);
    Frame frame{};
    for (int i = 0; i < 1000; ++i)
    {
        core->renderFrame(frame.data());
        for (double y : frame)
            ASSERT_LT(std::fabs(y), 1e-12) << "frame " << i;
    }
    EXPECT_TRUE(core->getInstrument(enginetest::bassDrum).isActive());

    for (int i = 0; i < 441000 && core->getInstrument(enginetest::bassDrum).isActive(); ++i)
        core->renderFrame(frame.data());
    EXPECT_FALSE(core->getInstrument(enginetest::bassDrum).isActive()) << "the voice should end on its own";
}

TEST(EngineCore, AccentTrackSoundsNothing)
{
    auto reference = enginetest::makeEngine();
    auto accented = enginetest::makeEngine();
    accented->trigger(DrumMachineCore::accentTrack, 1.0f);
    accented->trigger(-1, 1.0f);
    accented->trigger(18, 1.0f);
    EXPECT_EQ(renderGroove(*reference, 12000), renderGroove(*accented, 12000));
}
