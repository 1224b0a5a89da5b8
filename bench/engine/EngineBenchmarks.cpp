// Throughput of QuindrelCore::renderFrame as a multiple of real time: with no
// voice sounding, with the full kit retriggered every 100 ms, and with each
// voice alone retriggered every 100 ms. Voices are addressed by engine index,
// so every voice the engine holds is covered.

#include "engine/QuindrelCore.h"

#include <benchmark/benchmark.h>

#include <array>

namespace
{
constexpr int wholeKit = -1;
constexpr int noVoice = -2;

// state.range(0) is the sample rate, state.range(1) the voice to retrigger
// (an engine index, wholeKit or noVoice).
void renderFrames(benchmark::State& state)
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
        if (voice != noVoice && position % retriggerPeriod == 0)
        {
            for (int i = 0; i < DrumMachineCore::numInstruments; ++i)
                if (voice == wholeKit || voice == i)
                    core.trigger(i, 1.0f);
        }
        core.renderFrame(frame.data());
        benchmark::DoNotOptimize(frame.data());
        ++position;
    }

    // Seconds of audio rendered per second of wall time.
    state.counters["xRealTime"] = benchmark::Counter((double) state.iterations() / sampleRate, benchmark::Counter::kIsRate);
}

constexpr long rates[] = { 44100, 96000, 192000 };

void idleAndKit(benchmark::internal::Benchmark* b)
{
    b->ArgNames({ "rate", "voice" });
    for (long rate : rates)
    {
        b->Args({ rate, noVoice });
        b->Args({ rate, wholeKit });
    }
}

void eachVoice(benchmark::internal::Benchmark* b)
{
    b->ArgNames({ "rate", "voice" });
    for (long rate : rates)
        for (int voice = 0; voice < DrumMachineCore::numInstruments; ++voice)
            b->Args({ rate, voice });
}

void BM_RenderFrame(benchmark::State& state)
{
    renderFrames(state);
}

void BM_RenderFrameOneVoice(benchmark::State& state)
{
    renderFrames(state);
}
} // namespace

// voice -2: idle, -1: the whole kit.
BENCHMARK(BM_RenderFrame)->Apply(idleAndKit);
BENCHMARK(BM_RenderFrameOneVoice)->Apply(eachVoice);
