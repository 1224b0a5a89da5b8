// A host may restore a state while its audio thread plays: nothing is held
// back, so the restore must never crash the blocks, leave their output
// non-finite, or tear what they read. CI runs this under AddressSanitizer and
// ThreadSanitizer.

#include "StateSupport.h"

#include <atomic>
#include <chrono>
#include <thread>

using namespace StateSupport;

TEST(PresetsStateRestore, StatesRestoredWhileBlocksPlayLeaveTheOutputFinite)
{
    // The states a host might give, one after the other.
    std::vector<juce::MemoryBlock> states;
    {
        auto other = makePlugin();
        states.push_back(stateOf(*other));
        makeBusy(*other);
        states.push_back(stateOf(*other));
        other->setHostMode(false);
        other->setWriteMode(true);
        other->selectAndApplyPreset(10);
        states.push_back(stateOf(*other));
    }
    states.push_back(blockOf("<QuindrelBank><NotPresetParams><param name=\"BD Level\" value=\"1\"/></NotPresetParams></QuindrelBank>"));
    states.push_back(juce::MemoryBlock("garbage", 7));

    PluginTestHost host(48000.0, 256);
    auto& plugin = *host.plugin;
    host.playHead.playing = true; // the native sequencer runs from the transport
    plugin.getParameterManager().setNormalised(ParameterIds::autoFillIn, 1.0f);

    std::atomic<bool> stop{ false };
    std::atomic<int> blocks{ 0 }, nonFinite{ 0 };
    std::thread audio([&]
                      {
        juce::AudioBuffer<float> buffer(plugin.getTotalNumOutputChannels(), host.block);
        juce::MidiBuffer midi;
        midi.ensureSize(4096);
        for (int block = 0; !stop; ++block)
        {
            // Direct notes, host pattern keys, a controller and a kit change now and then.
            midi.clear();
            midi.addEvent(juce::MidiMessage::noteOn(1, block % 2 == 0 ? 36 : 12 + block % 40, (juce::uint8) 100), block % 256);
            midi.addEvent(juce::MidiMessage::controllerEvent(1, 21, block % 128), 128);
            if (block % 16 == 0)
                midi.addEvent(juce::MidiMessage::programChange(1, (block / 16) % 16), 64);
            plugin.processBlock(buffer, midi);
            nonFinite += PluginTestHost::badSamples(buffer);
            blocks = block + 1;
        } });

    // At least 30 restores, and for at least half a second, so that restores
    // fall across many blocks even when the sanitizers slow everything down.
    const auto start = std::chrono::steady_clock::now();
    int restores = 0;
    while (restores < 30 || std::chrono::steady_clock::now() - start < std::chrono::milliseconds(500))
        restore(plugin, states[(size_t) (restores++ % (int) states.size())]);

    const int blocksDuringRestores = blocks;
    stop = true;
    audio.join();

    EXPECT_GT(blocksDuringRestores, 10) << "the blocks did not run alongside the restores";
    EXPECT_EQ(nonFinite, 0);

    // Afterwards a state still comes back whole.
    restore(plugin, states[1]);
    EXPECT_TRUE(plugin.hostMode && plugin.getInstrumentOutput(1) == 3);
}
