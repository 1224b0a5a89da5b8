#include "plugin/PluginTestHost.h"

#include "parameters/ParameterIds.h"
#include "sequencer/QuindrelSeq.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace
{
// An engine that renders silence and notes each trigger with its sample.
struct RecordingCore : DrumMachineCore
{
    struct Hit
    {
        int track;
        long sample;
        float velocity;
    };
    void trigger(int track, float velocity) override
    {
        hits.push_back({ track, frame, velocity });
        if (onTrigger)
            onTrigger(track);
    }
    void renderFrame(double* outputs) override
    {
        std::fill(outputs, outputs + numInstruments, 0.0);
        ++frame;
    }
    std::vector<Hit> hits;
    long frame = 0;
    std::function<void(int track)> onTrigger;
};

// Hit times compared within a sample: the clock counts in beats.
MATCHER(WithinASample, "") { return std::abs(std::get<0>(arg) - std::get<1>(arg)) <= 1; }
::testing::Matcher<std::vector<long>> hitsAt(const std::vector<long>& expected) { return ::testing::Pointwise(WithinASample(), expected); }

// Notes the pattern, variation and part in which each native pass or part begins.
struct LoggingSeq : QuindrelSeq
{
    using QuindrelSeq::QuindrelSeq;

    void playNativeStep(bool late) override
    {
        if (!late && getNativeStep() == 0)
        {
            char token[16];
            std::snprintf(token, sizeof token, " %d%c%d", getNativePattern(), "AB"[getNativeVariation()], getNativePart() + 1);
            passes += token;
        }
        QuindrelSeq::playNativeStep(late);
    }

    std::string passes;
};

struct TestQuindrel : Quindrel
{
    using Quindrel::Quindrel;
    std::unique_ptr<DrumMachineCore> createCore() override { return std::make_unique<RecordingCore>(); }
    std::unique_ptr<DrumMachineSeq> createSequencer() override { return std::make_unique<LoggingSeq>(this, getCore()); }
};

// A plug-in with no transport, started and stopped by the panel's requests.
// Every native pattern runs at 300 bpm and 8 steps a beat: 1200 samples a step.
struct Rig
{
    static constexpr int stepSamples = 1200;

    PluginTestHost host{ 48000.0, 256, {}, PluginTestHost::factoryFor<TestQuindrel>() };
    TestQuindrel& plugin = static_cast<TestQuindrel&>(*host.plugin);
    LoggingSeq& seq = static_cast<LoggingSeq&>(*plugin.getSequencer());
    RecordingCore& core = static_cast<RecordingCore&>(*plugin.getCore());

    // Starts from empty patterns, whatever the factory banks hold.
    Rig()
    {
        host.playHead.present = false;
        for (int n = 0; n < QuindrelSeq::hostPatternCount; ++n)
            seq.getHostPatternAt(n) = Pattern();
        for (int n = 0; n < QuindrelSeq::nativePatternCount; ++n)
        {
            seq.getNativePatternAt(n) = NativePattern();
            shape(n, 1, 0);
        }
    }

    void shape(int pattern, int length1, int length2)
    {
        for (int v = 0; v < 2; ++v)
        {
            auto& variation = seq.getNativePatternAt(pattern).getVariation(v);
            variation.setTempo(300.0);
            variation.getPart(0).setLength(length1);
            variation.getPart(1).setLength(length2);
            variation.getPart(0).setScale(8);
            variation.getPart(1).setScale(8);
        }
    }

    void set(int id, float normalised) { plugin.getParameterManager().setNormalised(id, normalised); }
    std::string passes() const { return seq.passes.empty() ? seq.passes : seq.passes.substr(1); }

    // Starts a run, plays `steps` steps, stops, and gives the passes begun.
    std::string run(int steps)
    {
        seq.passes.clear();
        plugin.runRequest = 1;
        host.render(steps * stepSamples - stepSamples / 2);
        plugin.runRequest = 2;
        host.render(256);
        return passes();
    }

    std::vector<RecordingCore::Hit> hitsOf(int track) const
    {
        std::vector<RecordingCore::Hit> result;
        std::copy_if(core.hits.begin(), core.hits.end(), std::back_inserter(result), [track](const auto& hit)
                     { return hit.track == track; });
        return result;
    }

    std::vector<long> samplesOf(int track) const
    {
        std::vector<long> result;
        for (const auto& hit : hitsOf(track))
            result.push_back(hit.sample);
        return result;
    }
};
} // namespace

TEST(SequencerNativeRun, PassOrderWithPartsFillInsIntroAndVariationModes)
{
    Rig rig;
    rig.shape(0, 2, 3);
    EXPECT_EQ(rig.run(10), "0A1 0A2 0A1 0A2") << "Part 2 follows Part 1 in each pass";

    rig.seq.choosePattern(1); // Part 2 of length 0 is skipped
    EXPECT_EQ(rig.run(3), "1A1 1A1 1A1");

    rig.set(ParameterIds::autoFillIn, 1.0f); // every 2nd pass
    EXPECT_EQ(rig.seq.getAutoFill(), 2);
    EXPECT_EQ(rig.run(6), "1A1 12A1 1A1 12A1 1A1 12A1");
    rig.set(ParameterIds::autoFillIn, 0.75f); // rounds to the 4th position: every 4th pass
    EXPECT_EQ(rig.run(8), "1A1 1A1 1A1 12A1 1A1 1A1 1A1 12A1");
    rig.set(ParameterIds::autoFillIn, 0.11f);
    EXPECT_EQ(rig.seq.getAutoFill(), 16);
    rig.set(ParameterIds::autoFillIn, 0.09f);
    EXPECT_EQ(rig.seq.getAutoFill(), 0);

    // Manual mode: a fill-in requested during a run comes once, at the end of the pass.
    rig.set(ParameterIds::autoFillIn, 0.0f);
    rig.shape(1, 4, 0);
    rig.seq.passes.clear();
    rig.plugin.runRequest = 1;
    rig.host.render(Rig::stepSamples);
    rig.seq.introOrFillIn();
    rig.host.render(6 * Rig::stepSamples);
    EXPECT_EQ(rig.passes(), "1A1 12A1 1A1");

    // Variation modes and the intro, from pattern 0.
    Rig intro;
    intro.set(ParameterIds::basicVariationMode, 0.3f); // rounds to the middle position, AB
    EXPECT_EQ(intro.run(4), "0A1 0B1 0A1 0B1");
    intro.set(ParameterIds::basicVariationMode, 1.0f); // B
    EXPECT_EQ(intro.run(2), "0B1 0B1");

    // The intro button while stopped: the run begins with the fill pattern,
    // in its own variation, and in manual mode AB no longer alternates after it.
    intro.set(ParameterIds::basicVariationMode, 0.5f);
    intro.set(ParameterIds::introFillInVariationMode, 0.6f); // B
    intro.seq.introOrFillIn();
    EXPECT_EQ(intro.seq.getNativePattern(), 12);
    EXPECT_EQ(intro.run(4), "12B1 0A1 0A1 0A1");

    // With automatic fill-ins the count starts after the intro.
    intro.set(ParameterIds::basicVariationMode, 0.0f);
    intro.set(ParameterIds::autoFillIn, 0.8f);
    EXPECT_EQ(intro.run(9), "12B1 0A1 0A1 0A1 12B1 0A1 0A1 0A1 12B1");
}

TEST(SequencerNativeRun, SelectionWaitsForTheEndOfThePassAndBlinksUntilThen)
{
    Rig rig;
    rig.shape(0, 4, 0);
    rig.shape(3, 4, 0);
    auto& params = rig.plugin.getParameterManager();

    rig.seq.choosePattern(11 + 5); // out of range for either kind: ignored
    EXPECT_EQ(rig.seq.getFillPattern(), 12);

    rig.plugin.runRequest = 1;
    rig.host.render(Rig::stepSamples + 100);
    rig.seq.choosePattern(3);
    EXPECT_EQ(rig.seq.getNativePattern(), 0);
    EXPECT_TRUE(params.getBool(ParameterIds::stepBlinking + 3)) << "queued pattern should blink";
    EXPECT_FALSE(params.getBool(ParameterIds::stepBlinking + 0));

    rig.host.render(3 * Rig::stepSamples);
    EXPECT_EQ(rig.seq.getNativePattern(), 3);
    EXPECT_FALSE(params.getBool(ParameterIds::stepBlinking + 3)) << "still blinking after the change";
    EXPECT_EQ(rig.passes(), "0A1 3A1");

    // A stop inside a fill-in leaves the panel's selection to start with.
    rig.seq.requestFillIn();
    rig.host.render(4 * Rig::stepSamples);
    ASSERT_EQ(rig.seq.getNativePattern(), 12);
    rig.plugin.runRequest = 2;
    rig.host.render(256);
    EXPECT_EQ(rig.seq.getNativePattern(), 3);
}

TEST(SequencerHostPlay, StepVelocitiesTheAccentTrackTheLoopAndShuffle)
{
    Rig rig;
    rig.plugin.setHostMode(true);
    rig.set(17, 0.5f); // Accent Level
    auto& pattern = rig.seq.getHostPatternAt(0);
    pattern.setLength(4);
    pattern.setTrackString(0, "oOoO");
    pattern.setTrackString(1, "....o"); // beyond the length
    pattern.setTrackString(17, "..oO");
    rig.host.render(6 * 6000 - 100, { PluginTestHost::noteOn(0, 12) }); // 120 bpm, 4 steps a beat

    const double base = 48.0 / 127, strong = 0.377, boost = 0.623 * 0.5;
    const double velocities[] = { base, base + strong, base + boost, base + strong + boost };
    EXPECT_THAT(rig.samplesOf(0), hitsAt({ 0, 6000, 12000, 18000, 24000, 30000 })) << "the loop comes round after step 3";
    EXPECT_TRUE(rig.hitsOf(1).empty()) << "a step beyond the length played";
    const auto drums = rig.hitsOf(0), accents = rig.hitsOf(17);
    for (size_t i = 0; i < drums.size(); ++i)
        EXPECT_NEAR(drums[i].velocity, velocities[i % 4], 1.0e-6) << "step " << i;

    // The accent track fires at the step and again at its late event, a sample on.
    const auto at = rig.samplesOf(0);
    EXPECT_EQ(rig.samplesOf(17), (std::vector<long>{ at[2], at[2] + 1, at[3], at[3] + 1 }));
    for (const auto& accent : accents)
        EXPECT_NEAR(accent.velocity, base + strong + boost, 1.0e-6);

    // Shuffle delays every second step, of the host pattern or of the native variation.
    for (const bool host : { true, false }) // shuffle of the host pattern, or of the native variation
    {
        Rig shuffled;
        shuffled.plugin.setHostMode(host);
        auto& variation = shuffled.seq.getNativePatternAt(0).getVariation(0);
        auto& pattern = host ? shuffled.seq.getHostPatternAt(0) : variation.getPart(0);
        pattern.setScale(4);
        pattern.setLength(16);
        pattern.setTrackString(16, "oooooo");
        variation.setTempo(120.0);
        (host ? pattern.setShuffle(0.5) : variation.setShuffle(0.5));
        shuffled.plugin.runRequest = host ? 0 : 1;
        shuffled.host.render(6 * 6000, { PluginTestHost::noteOn(0, 12) });

        EXPECT_THAT(shuffled.samplesOf(16), hitsAt({ 0, 9000, 12000, 21000, 24000, 33000 })) << (host ? "host" : "native");
    }
}

TEST(SequencerHostPlay, TapsAreRecordedOnTheNearerStepInBothModes)
{
    for (const bool hostMode : { true, false })
    {
        const char* mode = hostMode ? "host" : "native";
        Rig rig;
        rig.plugin.setHostMode(hostMode);
        rig.plugin.setWriteMode(!hostMode); // taps need the editor
        rig.shape(0, 4, 0);
        auto& pattern = hostMode ? rig.seq.getHostPatternAt(0) : rig.seq.getNativePatternAt(0).getVariation(0).getPart(0);
        pattern.setLength(4);
        const int step = hostMode ? 6000 : Rig::stepSamples;
        auto tap = [&rig](int track, int value)
        {
            for (int t = 0; t < Tracks::count; ++t)
                rig.seq.tapValues[(size_t) t] = t == track ? value : 0;
            rig.seq.tapRequested = true;
        };

        tap(1, 1); // stopped: it sounds and nothing is recorded
        rig.host.render(1000);
        EXPECT_EQ(pattern.getStep(1, 0), 0) << mode;

        // Early in step 0 it lands on step 0 and sounds at once; past half a
        // step it waits for step 1, where it is recorded before that step plays.
        rig.plugin.runRequest = hostMode ? 0 : 1;
        rig.host.render(step / 6, { PluginTestHost::noteOn(0, 12) }); // step 0 at 1000
        tap(1, 1);
        rig.host.render(step * 3 / 4 - step / 6);
        tap(2, 3);
        rig.host.render(step / 2);
        EXPECT_EQ(pattern.getTrackString(1) + pattern.getTrackString(2), "o....O..") << mode;
        EXPECT_EQ(rig.samplesOf(1), (std::vector<long>{ 0, 1000 + step / 6 })) << mode;
        EXPECT_THAT(rig.samplesOf(2), hitsAt({ 1000 + step })) << mode << ": a deferred tap sounds once, with its step";
    }

    // A second tap, of the snare, comes while the audio thread sounds the first, of the hi tom.
    Rig rig;
    rig.core.onTrigger = [&rig](int track)
    {
        if (track != 7)
            return;
        rig.plugin.selectTrack(1);
        rig.plugin.requestTap(false);
    };
    rig.plugin.setHostMode(true);
    rig.plugin.selectTrack(7);
    rig.plugin.requestTap(false);
    rig.host.render(256);
    EXPECT_TRUE(rig.hitsOf(7).size() == 1 && rig.hitsOf(1).size() == 1) << "the second tap was lost";
}

TEST(SequencerNativeRun, TempoAndScaleAreReadAtEveryStepOrGivenByTheHost)
{
    // Pattern 0 at 300 bpm: part 1 of four eighth-of-a-beat steps (1200
    // samples), part 2 of two quarter steps (2400). Every second pass is the
    // fill-in, two quarter steps at 150 bpm (4800 samples each).
    Rig rig;
    rig.shape(0, 4, 2);
    for (int v = 0; v < 2; ++v)
    {
        rig.seq.getNativePatternAt(0).getVariation(v).getPart(1).setScale(4);
        auto& fill = rig.seq.getNativePatternAt(12).getVariation(v);
        fill.setTempo(150.0);
        fill.getPart(0).setLength(2);
        fill.getPart(0).setScale(4);
    }
    for (const int n : { 0, 12 })
        for (int p = 0; p < 2; ++p)
            rig.seq.getNativePatternAt(n).getVariation(0).getPart(p).setTrackString(0, "oooo");
    rig.set(ParameterIds::autoFillIn, 1.0f);

    rig.plugin.runRequest = 1;
    rig.host.render(27000);
    EXPECT_THAT(rig.samplesOf(0), hitsAt({ 0, 1200, 2400, 3600, 4800, 7200, 9600, 14400, 19200, 20400, 21600, 22800, 24000, 26400 }));

    // Without internal sync the host gives the tempo and the native position.
    // The host's transport starts at beat 0.05 at 100 bpm: 28800 samples a
    // beat, 3600 a step of an eighth. The native run starts with it and keeps
    // to the host's grid; a host pattern counts from its key, at the host's tempo.
    auto hostPlays = [](Rig& rig)
    {
        auto& head = rig.host.playHead;
        head.present = head.playing = true;
        head.bpm = 100.0;
        head.ppq = 0.05;
        rig.plugin.internalSync = false;
    };
    for (const bool lowestC : { false, true })
    {
        Rig rig;
        hostPlays(rig);
        rig.plugin.hostPlayDetection = lowestC ? DrumMachine::byLowestCNoteOn : DrumMachine::byTransportChange;
        rig.shape(0, 4, 0);
        rig.seq.getNativePatternAt(0).getVariation(0).getPart(0).setTrackString(0, "oooo");
        // By the lowest C, key 0 starts the run, not the transport; the run then joins the host's grid.
        rig.host.render(lowestC ? 1300 : 10000);
        EXPECT_EQ(rig.plugin.nativeClock.running.load(), !lowestC) << "lowest C " << lowestC;
        rig.host.render(lowestC ? 10000 - 1300 : 0, { PluginTestHost::noteOn(0, 0) });
        EXPECT_THAT(rig.samplesOf(0), hitsAt({ lowestC ? 1300 : 0, 2160, 5760, 9360 })) << "lowest C " << lowestC;
    }

    Rig hostRig;
    hostPlays(hostRig);
    hostRig.plugin.setHostMode(true);
    hostRig.seq.getHostPatternAt(0).setTrackString(1, "oooooooooooooooo");
    hostRig.host.render(10000, { PluginTestHost::noteOn(1000, 12) });
    EXPECT_THAT(hostRig.samplesOf(1), hitsAt({ 1000, 1000 + 7200 })) << "a host pattern is not aligned to the host's grid";
}
