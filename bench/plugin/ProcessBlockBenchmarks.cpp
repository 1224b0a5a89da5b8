// processBlock as a host calls it, as a multiple of real time: silence, a busy
// MIDI groove on the instruments, the sequencer playing a factory pattern, and
// the bare engine rendering the groove's hits, so that the cost of block
// processing over the engine shows.

#include "engine/QuindrelCore.h"
#include "plugin/Quindrel.h"

#include <benchmark/benchmark.h>
#include <juce_events/juce_events.h>

#include <array>

namespace
{
constexpr double sampleRate = 48000.0;
constexpr int sixteenth = 6000; // samples at 120 BPM

// One bar of sixteenths: the keys that sound on each step (General MIDI map).
const std::vector<std::vector<int>> groove = {
    { 36, 42, 49 }, { 42 }, { 42, 75 }, { 42, 37 }, { 38, 42 }, { 42 }, { 36, 42 }, { 42, 63 }, { 42, 36 }, { 42, 75 }, { 36, 42 }, { 42, 37 }, { 38, 42 }, { 42, 60 }, { 46 }, { 38, 50, 45 }
};

// mode 0: silence, 1: the groove by MIDI, 2: the sequencer started as the Start button does.
void processBlocks(benchmark::State& state, int mode)
{
    juce::ScopedJuceInitialiser_GUI juce;
    auto plugin = Quindrel::createInstance({});
    plugin->setInternalSequencer(mode == 2);
    plugin->prepareToPlay(sampleRate, 4096);
    plugin->runRequest = mode == 2 ? 1 : 0;
    const int blockSize = (int) state.range(0);
    juce::AudioBuffer<float> buffer(plugin->getTotalNumOutputChannels(), blockSize);
    juce::MidiBuffer midi;
    midi.ensureSize(4096);

    juce::int64 position = 0;
    for (auto _ : state)
    {
        midi.clear();
        for (int i = 0; i < blockSize && mode == 1; ++i)
            if ((position + i) % sixteenth == 0)
                for (const int key : groove[(size_t) ((position + i) / sixteenth % 16)])
                    midi.addEvent(juce::MidiMessage::noteOn(10, key, (juce::uint8) 100), i);
        plugin->processBlock(buffer, midi);
        position += blockSize;
        benchmark::DoNotOptimize(buffer.getReadPointer(0));
    }
    state.counters["xRealTime"] = benchmark::Counter((double) state.iterations() * blockSize / sampleRate, benchmark::Counter::kIsRate);
}

void BM_ProcessBlockSilence(benchmark::State& state) { processBlocks(state, 0); }
void BM_ProcessBlockGroove(benchmark::State& state) { processBlocks(state, 1); }
void BM_ProcessBlockSequencer(benchmark::State& state) { processBlocks(state, 2); }

// The engine alone with the same hits, one frame at a time.
void BM_EngineAloneGroove(benchmark::State& state)
{
    juce::ScopedJuceInitialiser_GUI juce;
    const auto plugin = Quindrel::createInstance({}); // for its drum map
    QuindrelCore core;
    core.setSampleRate((float) sampleRate);
    for (int id = 0; id <= 58; ++id)
        core.setParameter(id, 0.5f);
    std::array<double, DrumMachineCore::numInstruments> frame{};
    juce::int64 position = 0;
    for (auto _ : state)
    {
        if (position % sixteenth == 0)
            for (const int key : groove[(size_t) (position / sixteenth % 16)])
                core.trigger(plugin->getKeyInstrument(key), 100.0f / 127.0f);
        core.renderFrame(frame.data());
        benchmark::DoNotOptimize(frame.data());
        ++position;
    }
    state.counters["xRealTime"] = benchmark::Counter((double) state.iterations() / sampleRate, benchmark::Counter::kIsRate);
}
} // namespace

BENCHMARK(BM_ProcessBlockSilence)->Arg(32)->Arg(64)->Arg(512);
BENCHMARK(BM_ProcessBlockGroove)->Arg(32)->Arg(64)->Arg(512);
BENCHMARK(BM_ProcessBlockSequencer)->Arg(64)->Arg(512);
BENCHMARK(BM_EngineAloneGroove);
