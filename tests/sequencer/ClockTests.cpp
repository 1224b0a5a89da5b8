#include "sequencer/ShuffledClock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace
{
struct Event
{
    int sample;
    int state;
    bool first;
};

// Ticks a clock sample by sample and records every change of state.
struct Harness
{
    explicit Harness(Clock& c)
        : clock(c)
    {
    }

    Clock& clock;
    int sample = 0;
    std::vector<Event> events;

    void run(int samples)
    {
        for (int end = sample + samples; sample < end; ++sample)
            if (clock.tick())
                events.push_back({sample, clock.state, clock.firstTick});
    }

    // Runs until the next change and returns it.
    Event next()
    {
        const auto seen = events.size();
        for (int guard = 0; events.size() == seen && guard < 1000000; ++guard)
            run(1);
        return events.back();
    }
};

void prepare(Clock& clock, double sr, double bpm, double stepsPerBeat, double pulseWidth)
{
    clock.setSampleRate(sr);
    clock.setTempo(bpm);
    clock.setStepsPerBeat(stepsPerBeat);
    clock.setPulseWidth(pulseWidth);
    clock.start();
}

// Where the changes of a clock started at position 0 must fall. The first
// comes at once; each later one is worked out at the sample m after the
// previous change as m + ceil((T - position) * spb), the position having
// grown by 1 / spb with every tick.
std::vector<int> expectedSamples(const std::vector<double>& targets, double sr, double bpm)
{
    const double spb = sr * 60.0 / bpm;
    const double beatsPerSample = 1.0 / spb;
    std::vector<int> samples{0};
    double position = 0.0;
    int sample = 0;
    for (size_t i = 1; i < targets.size(); ++i)
    {
        for (; sample <= samples.back(); ++sample)
            position += beatsPerSample;
        samples.push_back(sample + (int)std::ceil((targets[i] - position) * spb));
    }
    return samples;
}

// Boundaries in beats of a plain clock: each step start and its pulse end.
std::vector<double> plainTargets(double stepsPerBeat, double pulseWidth, int steps)
{
    const double stepLen = 1.0 / stepsPerBeat;
    std::vector<double> targets{0.0};
    for (int k = 0; k < steps; ++k)
    {
        const double next = (k + 1) * stepLen;
        targets.push_back(next - stepLen + pulseWidth * stepLen);
        targets.push_back(next);
    }
    return targets;
}

// Boundaries of a shuffled clock: for each pair the first pulse end, the
// late second step, its pulse end and the next pair.
std::vector<double> shuffledTargets(double stepsPerBeat, double pulseWidth, double shuffle, int pairs)
{
    const double stepLen = 1.0 / stepsPerBeat;
    const double pairLen = 2.0 * stepLen;
    std::vector<double> targets{0.0};
    for (int j = 0; j < pairs; ++j)
    {
        const double pairEnd = (j + 1) * pairLen;
        const double pairStart = pairEnd - pairLen;
        const double mid = pairEnd - stepLen + shuffle * stepLen;
        targets.push_back(pairStart + (mid - pairStart) * pulseWidth);
        targets.push_back(mid);
        targets.push_back(mid + (pairEnd - mid) * pulseWidth);
        targets.push_back(pairEnd);
    }
    return targets;
}

// Runs the clock over all targets and checks each change: its state, its
// sample by the recurrence above, and, independently, that it is the first
// sample at or after the boundary (either neighbour when the boundary falls
// on a whole sample, where rounding may go either way).
void checkSchedule(Clock& clock, const std::vector<double>& targets, double sr, double bpm, int statesPerCycle, const std::string& label)
{
    const auto expected = expectedSamples(targets, sr, bpm);
    Harness h(clock);
    h.run(expected.back() + 2);
    ASSERT_EQ(h.events.size(), expected.size()) << label;
    const double spb = sr * 60.0 / bpm;
    for (size_t i = 0; i < expected.size(); ++i)
    {
        const auto& e = h.events[i];
        const double exact = targets[i] * spb;
        EXPECT_EQ(e.state, (int)i % statesPerCycle) << label << " change " << i;
        EXPECT_EQ(e.sample, expected[i]) << label << " change " << i;
        EXPECT_GE(e.sample, std::ceil(exact - 1e-6)) << label << " change " << i;
        EXPECT_LE(e.sample, std::ceil(exact + 1e-6)) << label << " change " << i;
        EXPECT_EQ(e.first, i == 0) << label << " change " << i;
    }
}

const struct
{
    double sr, bpm;
} rates[] = {{44100.0, 120.0}, {48000.0, 133.0}, {96000.0, 87.5}, {192000.0, 300.0}, {88200.0, 30.0}};
} // namespace

TEST(SequencerClock, EvenStepsAtEveryScaleTempoAndRate)
{
    for (const auto& r : rates)
        for (int scale : {3, 4, 6, 8})
        {
            const auto label = juce::String(r.sr) + " Hz " + juce::String(r.bpm) + " bpm scale " + juce::String(scale);
            Clock plain;
            prepare(plain, r.sr, r.bpm, scale, 0.5);
            checkSchedule(plain, plainTargets(scale, 0.5, 2 * scale), r.sr, r.bpm, 2, ("plain " + label).toStdString());

            ShuffledClock shuffled;
            prepare(shuffled, r.sr, r.bpm, scale, 0.5);
            checkSchedule(shuffled, shuffledTargets(scale, 0.5, 0.0, scale), r.sr, r.bpm, 4, ("shuffled " + label).toStdString());
        }
}

TEST(SequencerClock, ShuffleDelaysOnlyTheSecondStepOfEachPair)
{
    for (const auto& r : rates)
        for (double shuffle : {0.25, 0.5, 0.8})
        {
            ShuffledClock clock;
            prepare(clock, r.sr, r.bpm, 4, 0.5);
            clock.setShuffle(shuffle);
            const auto label = juce::String(r.sr) + " Hz shuffle " + juce::String(shuffle);
            checkSchedule(clock, shuffledTargets(4, 0.5, shuffle, 6), r.sr, r.bpm, 4, label.toStdString());
        }

    // Read off by hand at 44.1 kHz, 120 bpm (22050 samples a beat), shuffle
    // 0.5: first pulse ends at 0.1875 beat, the late step at 0.375, its pulse
    // at 0.4375, the next pair at 0.5.
    ShuffledClock clock;
    prepare(clock, 44100.0, 120.0, 4, 0.5);
    clock.setShuffle(0.5);
    Harness h(clock);
    h.run(11026);
    ASSERT_EQ(h.events.size(), 5u);
    const int expected[] = {0, 4135, 8269, 9647, 11025};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(h.events[(size_t)i].sample, expected[i]) << "change " << i;
}

TEST(SequencerClock, StartStopAndNegativePositions)
{
    Clock clock;
    clock.setSampleRate(44100.0);
    clock.setTempo(120.0);
    Harness h(clock);
    h.run(100);
    EXPECT_TRUE(h.events.empty()) << "a clock that never started";
    EXPECT_EQ(clock.position, 0.0);

    clock.start();
    h.run(6000);
    ASSERT_EQ(h.events.size(), 3u);
    EXPECT_EQ(h.events[0].sample, 100);
    EXPECT_TRUE(h.events[0].first);
    EXPECT_FALSE(h.events[1].first);

    clock.stop();
    EXPECT_EQ(clock.position, 0.0);
    EXPECT_EQ(clock.state, -1);
    h.run(10000);
    EXPECT_EQ(h.events.size(), 3u) << "a stopped clock";
    EXPECT_EQ(clock.position, 0.0);

    // Written below 0, the clock is silent until the position reaches 0,
    // which it does by adding one sample's beats per tick.
    clock.start();
    h.run(1);
    clock.setPosition(-0.1);
    double position = -0.1;
    int expected = h.sample;
    for (; position < 0.0; ++expected)
        position += 1.0 / 22050.0;
    const auto e = h.next();
    EXPECT_EQ(e.sample, expected);
    EXPECT_EQ(e.state, 0);
    EXPECT_TRUE(e.first);

    // restart() starts over from 0 even while running.
    h.run(1000);
    clock.restart();
    EXPECT_EQ(clock.position, 0.0);
    const int restartSample = h.sample;
    const auto again = h.next();
    EXPECT_EQ(again.sample, restartSample);
    EXPECT_TRUE(again.first);
}

TEST(SequencerClock, PositionWrittenNearABoundary)
{
    // 44.1 kHz at 120 bpm, steps of 0.25 beat, tolerance 0.00125 beat.
    const double tol = 0.25 * 0.005;
    const double spb = 22050.0;

    // Waiting for a step, the position lands just past it: within the
    // tolerance the step fires at once and only once; beyond it, it is lost.
    for (double past : {0.4 * tol, 2.0 * tol})
    {
        Clock clock;
        prepare(clock, 44100.0, 120.0, 4, 0.5);
        Harness h(clock);
        h.next();
        ASSERT_EQ(h.next().state, 1);
        h.run(100);
        clock.setPosition(0.25 + past);
        const int at = h.sample;
        const auto e = h.next();
        const double position = 0.25 + past + 1.0 / spb;
        if (past < tol)
        {
            EXPECT_EQ(e.sample, at);
            EXPECT_EQ(e.state, 0);
            const auto pulse = h.next();
            EXPECT_EQ(pulse.state, 1);
            EXPECT_EQ(pulse.sample, at + 1 + (int)std::ceil((0.375 - position) * spb));
        }
        else
        {
            EXPECT_EQ(e.state, 0);
            EXPECT_EQ(e.sample, at + (int)std::ceil((0.5 - (0.25 + past)) * spb)) << "step lost";
        }
    }

    // Just after a step fired, the position is set back to just before it:
    // within the tolerance nothing fires again before the pulse ends.
    for (double before : {0.4 * tol, 2.0 * tol})
    {
        Clock clock;
        prepare(clock, 44100.0, 120.0, 4, 0.5);
        Harness h(clock);
        h.next();
        h.next();
        ASSERT_EQ(h.next().state, 0); // the step at 0.25
        clock.setPosition(0.25 - before);
        const int at = h.sample;
        const auto e = h.next();
        if (before < tol)
        {
            EXPECT_EQ(e.state, 1);
            EXPECT_EQ(e.sample, at + (int)std::ceil((0.375 - (0.25 - before)) * spb));
        }
        else
        {
            EXPECT_EQ(e.sample, at) << "pulse ends at once";
            EXPECT_EQ(h.next().state, 0) << "and the step comes twice";
        }
    }

    // The shuffled clock: the same at the start of a pair, ...
    {
        ShuffledClock clock;
        prepare(clock, 44100.0, 120.0, 4, 0.5);
        Harness h(clock);
        while (h.next().state != 3)
        {
        }
        clock.setPosition(0.5 + 0.4 * tol);
        const int at = h.sample;
        const auto e = h.next();
        EXPECT_EQ(e.sample, at);
        EXPECT_EQ(e.state, 0);
        EXPECT_EQ(h.next().state, 1);
    }
    {
        ShuffledClock clock;
        prepare(clock, 44100.0, 120.0, 4, 0.5);
        Harness h(clock);
        while (h.next().state != 3)
        {
        }
        ASSERT_EQ(h.next().state, 0); // the pair at 0.5
        clock.setPosition(0.5 - 0.4 * tol);
        const int at = h.sample;
        const auto e = h.next();
        EXPECT_EQ(e.state, 1);
        EXPECT_EQ(e.sample, at + (int)std::ceil((0.625 - (0.5 - 0.4 * tol)) * spb));
    }
    // ... and a jump far ahead runs through the missed states, one a sample.
    {
        ShuffledClock clock;
        prepare(clock, 44100.0, 120.0, 4, 0.5);
        Harness h(clock);
        h.next();
        clock.setPosition(0.47);
        const int at = h.sample;
        for (int state : {1, 2, 3})
        {
            const auto e = h.next();
            EXPECT_EQ(e.state, state);
            EXPECT_EQ(e.sample, at + state - 1);
        }
        EXPECT_EQ(h.next().sample, at + 3 + (int)std::ceil((0.5 - (0.47 + 3.0 / spb)) * spb));
    }
}

TEST(SequencerClock, TempoChangeTakesEffectFromTheCurrentPosition)
{
    Clock clock;
    prepare(clock, 48000.0, 120.0, 4, 0.5);
    Harness h(clock);
    h.next();
    h.next(); // the pulse ends at 0.125 beat
    h.run(1000);
    double position = 0.0;
    for (int i = 0; i < h.sample; ++i)
        position += 1.0 / 24000.0;

    clock.setTempo(90.0); // now 32000 samples a beat
    int at = h.sample;
    const auto step = h.next();
    EXPECT_EQ(step.state, 0);
    EXPECT_EQ(step.sample, at + (int)std::ceil((0.25 - position) * 32000.0));

    for (; at <= step.sample; ++at)
        position += 1.0 / 32000.0;
    const auto pulse = h.next();
    EXPECT_EQ(pulse.state, 1);
    EXPECT_EQ(pulse.sample, at + (int)std::ceil((0.375 - position) * 32000.0));
}

TEST(SequencerClock, ZeroPulseWidthEndsThePulseOnTheNextSample)
{
    Clock clock;
    prepare(clock, 44100.0, 120.0, 4, 0.0);
    Harness h(clock);
    h.run(5515);
    ASSERT_EQ(h.events.size(), 4u);
    const int expected[] = {0, 1, 5513, 5514};
    for (int i = 0; i < 4; ++i)
    {
        EXPECT_EQ(h.events[(size_t)i].sample, expected[i]) << "change " << i;
        EXPECT_EQ(h.events[(size_t)i].state, i % 2) << "change " << i;
    }

    // As a gate: restarted at any sample, it gives state 0 there and the off
    // state on the next sample.
    h.run(777);
    clock.restart();
    const int at = h.sample;
    EXPECT_EQ(h.next().sample, at);
    const auto off = h.next();
    EXPECT_EQ(off.sample, at + 1);
    EXPECT_TRUE(clock.isOffState());
}

TEST(SequencerClock, NearPreviousStepIsStrictAtHalfway)
{
    Clock plain;
    plain.setStepsPerBeat(4);
    const struct
    {
        double position;
        bool near;
    } plainCases[] = {{0.25 + 0.1, true}, {0.25 + 0.125, false}, {0.25 + 0.15, false}, {0.25, false}};
    for (const auto& c : plainCases)
    {
        plain.position = c.position;
        EXPECT_EQ(plain.isNearPreviousStep(), c.near) << "plain at " << c.position;
    }

    // Shuffle 0.5: the first step of a pair lasts 1.5 steps, the second 0.5.
    ShuffledClock shuffled;
    shuffled.setStepsPerBeat(4);
    shuffled.setShuffle(0.5);
    const struct
    {
        double position;
        bool near;
    } shuffledCases[] = {{0.18, true}, {0.1875, false}, {0.2, false}, {0.43, true}, {0.4375, false}, {0.45, false}};
    for (const auto& c : shuffledCases)
    {
        shuffled.position = c.position;
        EXPECT_EQ(shuffled.isNearPreviousStep(), c.near) << "shuffled at " << c.position;
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
    prepare(clock, 44100.0, 120.0, 4, 0.5);
    Harness h(clock);
    h.run(44100);
    EXPECT_EQ(h.events.size(), 16u);
    EXPECT_EQ(counter.started + counter.ticked, 0) << "nothing before the loop runs";
    pump();
    EXPECT_EQ(counter.started, 1);
    EXPECT_EQ(counter.ticked, 1) << "16 changes arrive as one";

    pump();
    EXPECT_EQ(counter.ticked, 1) << "nothing new";
    clock.stop();
    pump();
    EXPECT_EQ(counter.started, 2);
    EXPECT_EQ(counter.ticked, 1);

    clock.removeListener(&counter);
    clock.start();
    h.run(10);
    pump();
    EXPECT_EQ(counter.started, 2);
    EXPECT_EQ(counter.ticked, 1);
}

TEST(SequencerClock, EqualSettingsLeaveTheCountdownAlone)
{
    ShuffledClock clock;
    prepare(clock, 44100.0, 120.0, 4, 0.5);
    clock.setShuffle(0.3);
    clock.tick();
    clock.tick();
    ASSERT_FALSE(clock.needsUpdate);
    clock.setSampleRate(44100.0);
    clock.setTempo(120.0);
    clock.setStepsPerBeat(4);
    clock.setPulseWidth(0.5);
    clock.setShuffle(0.3);
    EXPECT_FALSE(clock.needsUpdate);
    clock.setShuffle(0.31);
    EXPECT_TRUE(clock.needsUpdate);
}
