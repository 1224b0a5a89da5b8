#include "sequencer/ShuffledClock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace
{
struct Event
{
    int sample, state;
    bool first;
};

// Ticks a clock sample by sample and records its changes of state.
struct Harness
{
    explicit Harness(Clock& c, double sr = 44100.0, double bpm = 120.0, double stepsPerBeat = 4, double pulseWidth = 0.5)
        : clock(c)
    {
        clock.setSampleRate(sr);
        clock.setTempo(bpm);
        clock.setStepsPerBeat(stepsPerBeat);
        clock.setPulseWidth(pulseWidth);
        clock.start();
    }

    void run(int samples)
    {
        for (const int end = sample + samples; sample < end; ++sample)
            if (clock.tick())
                events.push_back({ sample, clock.state, clock.firstTick });
    }

    Event next()
    {
        for (const auto seen = events.size(); events.size() == seen;)
            run(1);
        return events.back();
    }

    Clock& clock;
    int sample = 0;
    std::vector<Event> events;
};
} // namespace

// Each change comes on the first sample at or past its boundary in beats
// (either neighbour where the boundary falls on a whole sample), in state
// order. A plain clock ends each step's pulse halfway; a shuffled one moves
// the second step of each pair late by the shuffle and ends each pulse
// halfway through its (longer or shorter) step.
TEST(SequencerClock, EventsFallOnTheFirstSamplePastEachBoundary)
{
    const std::pair<double, double> rates[] = { { 44100.0, 120.0 }, { 48000.0, 133.0 }, { 96000.0, 87.5 }, { 192000.0, 300.0 }, { 88200.0, 30.0 } };
    for (const auto& [sr, bpm] : rates)
        for (int scale : { 3, 4, 6, 8 })
            for (double shuffle : { -1.0, 0.0, 0.25, 0.5, 0.8 }) // -1: plain clock
            {
                const double step = 1.0 / scale;
                std::vector<double> boundaries{ 0.0 };
                for (int pair = 0; pair < scale; ++pair) // two beats
                {
                    const double start = 2 * pair * step, late = start + step * (1.0 + std::max(shuffle, 0.0)), end = start + 2 * step;
                    if (shuffle < 0.0)
                        boundaries.insert(boundaries.end(), { start + step / 2, start + step, start + 1.5 * step, end });
                    else
                        boundaries.insert(boundaries.end(), { (start + late) / 2, late, (late + end) / 2, end });
                }
                ShuffledClock shuffled;
                shuffled.setShuffle(shuffle);
                Clock plain;
                Harness h(shuffle < 0.0 ? plain : shuffled, sr, bpm, scale, 0.5);
                for (size_t i = 0; i < boundaries.size(); ++i)
                {
                    const auto e = h.next();
                    const double exact = boundaries[i] * sr * 60.0 / bpm;
                    const auto where = "rate " + std::to_string(sr) + " bpm " + std::to_string(bpm) + " scale " + std::to_string(scale) + " shuffle " + std::to_string(shuffle) + " change " + std::to_string(i);
                    EXPECT_TRUE(e.sample >= std::ceil(exact - 1e-6) && e.sample <= std::ceil(exact + 1e-6)) << where << " at " << e.sample;
                    EXPECT_EQ(e.state, (int) i % (shuffle < 0.0 ? 2 : 4)) << where;
                    EXPECT_EQ(e.first, i == 0) << where;
                }
            }
}

TEST(SequencerClock, ZeroPulseWidthZeroTempoTempoChangesStopAndRestart)
{
    // 44.1 kHz, 120 bpm: a step every 5512.5 samples. Restarted at any sample,
    // as block processing does with its gate clocks, the clock fires there.
    Clock clock;
    Harness h(clock, 44100.0, 120.0, 4, 0.0);
    for (int sample : { 0, 1, 5513, 5514 })
        EXPECT_EQ(h.next().sample, sample) << "a zero pulse ends on the next sample";
    h.run(777);
    clock.restart();
    for (int sample : { 6292, 6293 })
        EXPECT_EQ(h.next().sample, sample);
    EXPECT_TRUE(!h.events.back().first && clock.isOffState());

    clock.stop();
    EXPECT_EQ(clock.state, -1);
    h.run(10000);
    EXPECT_EQ(h.events.size(), 6u) << "a stopped clock fires nothing";
    EXPECT_EQ(clock.position, 0.0) << "and does not move";

    Clock still;
    Harness withoutTempo(still, 44100.0, 0.0);
    withoutTempo.run(100000);
    EXPECT_EQ(withoutTempo.events.size(), 1u) << "without a tempo only the first step fires";
    EXPECT_GT(still.samplesToChange, 0) << "it waits for ever, without overflow";

    // 120 bpm at 48 kHz for 4000 samples, then 90: the step at 0.25 beat and
    // its pulse end at 0.375 come at the new pace.
    Clock changed;
    Harness paced(changed, 48000.0, 120.0);
    paced.run(4000);
    changed.setTempo(90.0);
    EXPECT_NEAR(paced.next().sample, 4000 + (0.25 - 4000.0 / 24000.0) * 32000.0, 1.0);
    EXPECT_NEAR(paced.next().sample, 4000 + (0.375 - 4000.0 / 24000.0) * 32000.0, 1.0);
}

TEST(SequencerClock, PositionWrittenFromOutsideAndNearnessToThePreviousStep)
{
    // 44.1 kHz, 120 bpm, steps of 0.25 beat, a tolerance of 0.00125 beat
    // either side of a boundary. Written below 0, the clock is silent until
    // the position reaches 0; then the first step fires as a first step.
    const double tol = 0.25 * 0.005, spb = 22050.0;
    const struct
    {
        bool shuffled;
        int skip;        // changes to let pass first
        double position; // then written
        int states[3];   // the next changes
        double waitFor;  // the boundary the first change waits for; -1: at once
        bool oneASample; // the three changes on consecutive samples
        const char* what;
    } cases[] = {
        { false, 3, -0.125, { 0, 1, 0 }, 0.0, false, "below 0: silent until 0" },
        { false, 2, 0.25 + 0.4 * tol, { 0, 1, 0 }, -1, false, "just past an awaited step: it fires at once" },
        { false, 2, 0.25 + 2.0 * tol, { 0, 1, 0 }, 0.5, false, "further past: that step is lost" },
        { false, 3, 0.25 - 0.4 * tol, { 1, 0, 1 }, 0.375, false, "set back just before a step that fired: not again" },
        { false, 3, 0.25 - 2.0 * tol, { 1, 0, 1 }, -1, false, "set back further: the step comes twice" },
        { true, 4, 0.5 + 0.4 * tol, { 0, 1, 2 }, -1, false, "just past an awaited pair" },
        { true, 5, 0.5 - 0.4 * tol, { 1, 2, 3 }, 0.625, false, "set back just before a pair that fired" },
        { true, 1, 0.47, { 1, 2, 3 }, -1, true, "far ahead: the missed states one a sample" },
    };
    for (const auto& c : cases)
    {
        ShuffledClock shuffled;
        Clock plain;
        Harness h(c.shuffled ? shuffled : plain);
        for (int i = 0; i < c.skip; ++i)
            h.next();
        h.clock.setPosition(c.position);
        const int at = h.sample;
        const auto e = h.next();
        EXPECT_EQ(e.sample, c.waitFor < 0 ? at : at + (int) std::ceil((c.waitFor - c.position) * spb)) << c.what;
        EXPECT_TRUE(e.state == c.states[0] && e.first == (c.position < 0.0)) << c.what;
        EXPECT_EQ(h.next().state, c.states[1]) << c.what;
        EXPECT_EQ(h.next().state, c.states[2]) << c.what;
        EXPECT_TRUE(!c.oneASample || h.events.back().sample == at + 2) << c.what;
    }

    // Near the previous step: strictly before halfway.
    // Shuffle 0.5: a pair's first step lasts 1.5 steps, the second 0.5.
    ShuffledClock shuffled;
    shuffled.setShuffle(0.5);
    Clock plain;
    const std::tuple<Clock*, double, bool> nearness[] = { { &plain, 0.35, true }, { &plain, 0.375, false }, { &plain, 0.4, false }, { &plain, 0.25, false }, { &shuffled, 0.18, true }, { &shuffled, 0.1875, false }, { &shuffled, 0.2, false }, { &shuffled, 0.43, true }, { &shuffled, 0.4375, false } };
    for (const auto& [clock, position, near] : nearness)
    {
        clock->position = position;
        EXPECT_EQ(clock->isNearPreviousStep(), near) << (clock == &plain ? "plain" : "shuffled") << " at " << position;
    }
}

TEST(SequencerClock, ListenersHearCoalescedNewsOnTheMessageThread)
{
    struct Counter : Clock::Listener
    {
        int started = 0, ticked = 0;
        void clockStateChanged(Clock&) override { ++started; }
        void clockTicked(Clock&) override { ++ticked; }
    } counter;
    auto pump = []
    { juce::MessageManager::getInstance()->runDispatchLoopUntil(20); };

    ShuffledClock clock;
    clock.addListener(&counter);
    Harness h(clock);
    h.run(44100);
    ASSERT_EQ(h.events.size(), 16u);
    EXPECT_EQ(counter.started + counter.ticked, 0) << "nothing before the loop runs";
    pump();
    EXPECT_TRUE(counter.started == 1 && counter.ticked == 1) << "16 changes arrive as one";
    clock.stop();
    pump();
    EXPECT_TRUE(counter.started == 2 && counter.ticked == 1);
    clock.removeListener(&counter);
    clock.start();
    h.run(10);
    pump();
    EXPECT_EQ(counter.started + counter.ticked, 3);
}
