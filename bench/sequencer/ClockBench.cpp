#include "sequencer/ShuffledClock.h"

#include <benchmark/benchmark.h>

// Block processing ticks four clocks in every sample, running or not. One
// iteration is one tick, so the time per iteration is the cost per tick.
// state.range(0): 1 running, 0 stopped.
static void BM_ShuffledClockTick(benchmark::State& state)
{
    // A running clock posts its async update; that needs a message manager,
    // whose loop is never run here, as between two deliveries in the plug-in.
    juce::ScopedJuceInitialiser_GUI juce;

    ShuffledClock clock;
    clock.setSampleRate(48000.0);
    clock.setTempo(120.0);
    clock.setStepsPerBeat(4);
    clock.setPulseWidth(0.5);
    clock.setShuffle(0.3);
    if (state.range(0) != 0)
        clock.start();
    benchmark::DoNotOptimize(clock);
    int changes = 0;
    for (auto _ : state)
    {
        changes += clock.tick() ? 1 : 0;
        benchmark::ClobberMemory(); // the fields are reloaded every sample, as in a real block
    }
    benchmark::DoNotOptimize(changes);
}
BENCHMARK(BM_ShuffledClockTick)->ArgName("running")->Arg(1)->Arg(0);
