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

struct Instance
{
    Instance(bool busyToUse, bool sequencerToUse = false)
        : busy(busyToUse)
    {
        plugin = Quindrel::createInstance({});
        plugin->setInternalSequencer(sequencerToUse);
        plugin->prepareToPlay(sampleRate, 4096);
        // The sequencer runs the factory's first native pattern, started as the Start button does.
        if (sequencerToUse)
            plugin->runRequest = 1;
    }

    void process(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi)
    {
        midi.clear();
        const int length = buffer.getNumSamples();
        if (busy)
        {
            for (int i = 0; i < length; ++i)
            {
                const auto t = position + i;
                if (t % sixteenth == 0)
                    for (const int key : groove[(size_t) ((t / sixteenth) % 16)])
                        midi.addEvent(juce::MidiMessage::noteOn(10, key, (juce::uint8) 100), i);
            }
        }
        plugin->processBlock(buffer, midi);
        position += length;
    }

    bool busy;
    juce::int64 position = 0;
    std::unique_ptr<Quindrel> plugin;
};

void processBlocks(benchmark::State& state, bool busy, bool sequencer = false)
{
    juce::ScopedJuceInitialiser_GUI juce;
    Instance instance(busy, sequencer);
    const int blockSize = (int) state.range(0);
    juce::AudioBuffer<float> buffer(instance.plugin->getTotalNumOutputChannels(), blockSize);
    juce::MidiBuffer midi;
    midi.ensureSize(4096);

    for (auto _ : state)
    {
        instance.process(buffer, midi);
        benchmark::DoNotOptimize(buffer.getReadPointer(0));
    }
    state.counters["xRealTime"] = benchmark::Counter((double) state.iterations() * blockSize / sampleRate, benchmark::Counter::kIsRate);
}

void BM_ProcessBlockSilence(benchmark::State& state) { processBlocks(state, false); }
void BM_ProcessBlockGroove(benchmark::State& state) { processBlocks(state, true); }
void BM_ProcessBlockSequencer(benchmark::State& state) { processBlocks(state, false, true); }

// The engine alone with the same hits, one frame at a time.
void BM_EngineAloneGroove(benchmark::State& state)
{
    QuindrelCore core;
    core.setSampleRate((float) sampleRate);
    for (int id = 0; id <= 58; ++id)
        core.setParameter(id, 0.5f);

    // The drum map's instruments of the groove's keys.
    const std::map<int, int> instrumentOfKey = { { 36, 0 }, { 38, 1 }, { 60, 4 }, { 63, 3 }, { 45, 5 }, { 50, 7 }, { 75, 8 }, { 37, 9 }, { 49, 14 }, { 46, 15 }, { 42, 16 } };
    std::array<double, DrumMachineCore::numInstruments> frame{};
    juce::int64 position = 0;

    for (auto _ : state)
    {
        if (position % sixteenth == 0)
            for (const int key : groove[(size_t) ((position / sixteenth) % 16)])
                core.trigger(instrumentOfKey.at(key), 100.0f / 127.0f);
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
