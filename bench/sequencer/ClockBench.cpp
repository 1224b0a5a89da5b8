#include "sequencer/ShuffledClock.h"

#include <benchmark/benchmark.h>

// Block processing ticks four clocks in every sample, running or not. One
// iteration is one tick, so the time per iteration is the cost per tick.

namespace
{
// A running clock posts its async update; that needs a message manager, whose
// loop is never run here, as between two deliveries in the plug-in.
void ensureMessageManager()
{
    static juce::ScopedJuceInitialiser_GUI juce;
}

template <typename ClockType>
void prepare(ClockType& clock, double shuffle)
{
    clock.setSampleRate(48000.0);
    clock.setTempo(120.0);
    clock.setStepsPerBeat(4);
    clock.setPulseWidth(0.5);
    clock.setShuffle(shuffle);
}

void BM_ShuffledClockRunning(benchmark::State& state)
{
    ensureMessageManager();
    ShuffledClock clock;
    prepare(clock, 0.3);
    clock.start();
    benchmark::DoNotOptimize(clock);
    int changes = 0;
    for (auto _ : state)
    {
        changes += clock.tick() ? 1 : 0;
        // the clock's fields are reloaded every sample, as in a real block
        benchmark::ClobberMemory();
    }
    benchmark::DoNotOptimize(changes);
}
BENCHMARK(BM_ShuffledClockRunning);

void BM_ShuffledClockStopped(benchmark::State& state)
{
    ShuffledClock clock;
    prepare(clock, 0.3);
    benchmark::DoNotOptimize(clock);
    int changes = 0;
    for (auto _ : state)
    {
        changes += clock.tick() ? 1 : 0;
        // the clock's fields are reloaded every sample, as in a real block
        benchmark::ClobberMemory();
    }
    benchmark::DoNotOptimize(changes);
}
BENCHMARK(BM_ShuffledClockStopped);

// Through a base reference, as a caller that does not know the clock's type.
void BM_ShuffledClockRunningVirtual(benchmark::State& state)
{
    ensureMessageManager();
    ShuffledClock shuffled;
    prepare(shuffled, 0.3);
    shuffled.start();
    Clock* clock = &shuffled;
    benchmark::DoNotOptimize(clock);
    int changes = 0;
    for (auto _ : state)
    {
        changes += clock->tick() ? 1 : 0;
        benchmark::ClobberMemory();
    }
    benchmark::DoNotOptimize(changes);
}
BENCHMARK(BM_ShuffledClockRunningVirtual);
} // namespace
