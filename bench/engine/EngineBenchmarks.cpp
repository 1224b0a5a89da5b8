// Throughput of QuindrelCore::renderFrame as a multiple of real time, with no
// voice sounding and with every sounding voice retriggered every 100 ms.

#include "engine/QuindrelCore.h"

#include <benchmark/benchmark.h>

#include <array>

namespace
{
constexpr int soundingVoices[] = {0, 1, 8, 9};

void renderFrames(benchmark::State& state, bool busy)
{
    const auto sampleRate = (float)state.range(0);
    QuindrelCore core;
    core.setSampleRate(sampleRate);
    for (int id = 0; id <= 58; ++id)
        core.setParameter(id, 0.5f);

    const auto retriggerPeriod = (long)(sampleRate * 0.1f);
    std::array<double, DrumMachineCore::numInstruments> frame{};
    long position = 0;
    for (auto _ : state)
    {
        if (busy && position % retriggerPeriod == 0)
            for (int voice : soundingVoices)
                core.trigger(voice, 1.0f);
        core.renderFrame(frame.data());
        benchmark::DoNotOptimize(frame.data());
        ++position;
    }

    // Seconds of audio rendered per second of wall time.
    state.counters["xRealTime"] = benchmark::Counter((double)state.iterations() / sampleRate, benchmark::Counter::kIsRate);
}

void BM_RenderFrameIdle(benchmark::State& state)
{
    renderFrames(state, false);
}

void BM_RenderFrameBusy(benchmark::State& state)
{
    renderFrames(state, true);
}
} // namespace

BENCHMARK(BM_RenderFrameIdle)->Arg(44100)->Arg(192000);
BENCHMARK(BM_RenderFrameBusy)->Arg(44100)->Arg(192000);
