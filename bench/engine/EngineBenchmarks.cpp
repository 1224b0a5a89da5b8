// Throughput of QuindrelCore::renderFrame as a multiple of real time: with no
// voice sounding (voice -2), with the full kit retriggered every 100 ms (-1),
// and with each voice alone retriggered every 100 ms (its engine index).

#include "engine/QuindrelCore.h"

#include <benchmark/benchmark.h>

#include <array>

namespace
{
void BM_RenderFrame(benchmark::State& state)
{
    const auto sampleRate = (float) state.range(0);
    const auto voice = (int) state.range(1);
    QuindrelCore core;
    core.setSampleRate(sampleRate);
    for (int id = 0; id <= 58; ++id)
        core.setParameter(id, 0.5f);

    const auto retriggerPeriod = (long) (sampleRate * 0.1f);
    std::array<double, DrumMachineCore::numInstruments> frame{};
    long position = 0;
    for (auto _ : state)
    {
        if (position++ % retriggerPeriod == 0)
            for (int i = 0; i < DrumMachineCore::numInstruments; ++i)
                if (voice == -1 || voice == i)
                    core.trigger(i, 1.0f);
        core.renderFrame(frame.data());
        benchmark::DoNotOptimize(frame.data());
    }
    // Seconds of audio rendered per second of wall time.
    state.counters["xRealTime"] = benchmark::Counter((double) state.iterations() / sampleRate, benchmark::Counter::kIsRate);
}
} // namespace

BENCHMARK(BM_RenderFrame)->ArgNames({ "rate", "voice" })->ArgsProduct({ { 44100, 96000, 192000 }, benchmark::CreateDenseRange(-2, DrumMachineCore::numInstruments - 1, 1) });
