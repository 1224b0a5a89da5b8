#include "PluginTestHost.h"
#include "support/AllocationCounter.h"

#include "parameters/ParameterIds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace
{
// A sequencer that plays the cymbal on every step and counts what it is asked,
// so that the clocks and the block loop can be watched without patterns.
struct CountingSeq : DrumMachineSeq
{
    using DrumMachineSeq::DrumMachineSeq;
    void startNative() override { ++starts; }
    void stopNative() override { ++stops; }
    bool advanceNative() override { return ++advances, false; }
    void playNativeStep(bool late) override { late ? (void) ++lateCalls : plugin->triggerInstrument(14, 1.0f); }
    int starts = 0, stops = 0, advances = 0, lateCalls = 0;
};

struct QuindrelWithCountingSeq : Quindrel
{
    using Quindrel::Quindrel;
    std::unique_ptr<DrumMachineSeq> createSequencer() override { return std::make_unique<CountingSeq>(this, getCore()); }
    CountingSeq& seq() { return *static_cast<CountingSeq*>(getSequencer()); }
};

using H = PluginTestHost;
} // namespace

TEST(PluginBlockProcessing, MidiNotesSoundAtTheirSampleWhateverTheBlockSizeAndPassThrough)
{
    // Without the internal sequencer. Two notes share sample 900: the snare on
    // output 2, the rim shot on output 3.
    const std::vector<H::Event> events = {
        H::noteOn(0, 36),
        H::noteOff(300, 36),
        H::noteOn(511, 75),
        H::noteOn(900, 38),
        H::noteOn(900, 37),
        H::noteOn(4097, 36, 127),
    };
    auto start = [](PluginTestHost& host)
    {
        host.plugin->setInternalSequencer(false);
        host.plugin->getParameterManager().setInt(ParameterIds::outputNumber + 1, 2);
        host.plugin->getParameterManager().setInt(ParameterIds::outputNumber + 9, 3);
    };

    PluginTestHost reference(48000.0, 4096);
    start(reference);
    const auto expected = reference.render(12000, events);
    EXPECT_EQ(H::firstSoundAt(expected, 0), 0);
    EXPECT_EQ(H::firstSoundAt(expected, 2), 900);
    EXPECT_EQ(H::firstSoundAt(expected, 4, 0.0f), 900);
    // The bass drum sounds on keys 35 and 36, but only the host's own notes come back.
    ASSERT_EQ(reference.output.size(), events.size());
    for (size_t i = 0; i < events.size(); ++i)
        EXPECT_TRUE(reference.output[i].sample == events[i].sample && reference.output[i].message.getDescription() == events[i].message.getDescription()) << i;

    for (const int blockSize : { 1, 7, 64, 333, 512 })
    {
        PluginTestHost host(48000.0, blockSize);
        start(host);
        const auto out = host.render(12000, events);

        for (int c = 0; c < 6; ++c)
            for (int i = 0; i < out.getNumSamples(); ++i)
                ASSERT_EQ(out.getSample(c, i), expected.getSample(c, i)) << "block " << blockSize << " channel " << c << " sample " << i;
    }

    // An event stamped past the block arrives later at its place; one before it is dropped.
    PluginTestHost host(48000.0, 256);
    host.plugin->setInternalSequencer(false);
    auto& plugin = *host.plugin;
    const int channels = plugin.getTotalNumOutputChannels();

    juce::AudioBuffer<float> buffer(channels, 256);
    juce::MidiBuffer midi;
    midi.addEvent(juce::MidiMessage::noteOn(1, 36, (juce::uint8) 100), 256 + 100); // one block and 100 samples ahead
    midi.addEvent(juce::MidiMessage::noteOn(1, 38, (juce::uint8) 100), -5);        // before the block: dropped

    plugin.processBlock(buffer, midi);
    EXPECT_EQ(buffer.getMagnitude(0, 0, 256), 0.0f);

    midi.clear();
    plugin.processBlock(buffer, midi);
    EXPECT_EQ(H::firstSoundAt(buffer, 0), 100);

    // An empty block keeps what is queued.
    midi.addEvent(juce::MidiMessage::noteOn(1, 75, (juce::uint8) 100), 10);
    juce::AudioBuffer<float> empty(channels, 0);
    plugin.processBlock(empty, midi);
    midi.clear();
    plugin.processBlock(buffer, midi);
    EXPECT_GT(buffer.getMagnitude(0, 10, 50), buffer.getMagnitude(0, 0, 10));
}

TEST(PluginBlockProcessing, MuteAndSoloGateTriggersNotTails)
{
    PluginTestHost host;
    host.plugin->setInternalSequencer(false);
    auto& params = host.plugin->getParameterManager();
    params.setInt(ParameterIds::outputNumber + 1, 2); // snare on output 2

    // A solo overrides every mute, the soloed instrument's own included;
    // clearing the solo brings the mute back.
    const struct
    {
        bool solo, bassDrum, snare;
    } cases[] = { { false, false, true }, { true, true, false }, { false, false, true } };
    params.setBool(ParameterIds::mute + 0, true);
    for (const auto& c : cases)
    {
        params.setBool(ParameterIds::solo + 0, c.solo);
        const auto out = host.render(4800, { H::noteOn(0, 36), H::noteOn(0, 38) });
        for (const auto& [channel, sounds] : { std::pair{ 0, c.bassDrum }, { 2, c.snare } })
            EXPECT_TRUE(sounds ? H::peak(out, channel) > 0.01f : H::peak(out, channel) == 0.0f) << "solo " << c.solo << ", output " << channel;
        host.render(48000 * 3); // let the tails end
    }

    // Muting while a note rings leaves the tail alone.
    host.render(10, { H::noteOn(0, 38) });
    params.setBool(ParameterIds::mute + 1, true);
    EXPECT_GT(H::peak(host.render(480), 2), 0.01f);
}

TEST(PluginBlockProcessing, ClocksStepTheSequencerAndSendTheMappedNotes)
{
    PluginTestHost host(48000.0, 512, {}, H::factoryFor<QuindrelWithCountingSeq>());
    auto& plugin = static_cast<QuindrelWithCountingSeq&>(*host.plugin);
    host.playHead.present = false; // no transport: the Start event runs the native sequence

    plugin.runRequest = 1;
    host.render(24000);
    ASSERT_EQ(plugin.seq().starts, 1);

    // 120 bpm, 4 steps a beat at 48 kHz: a step each 6000 samples, the first
    // played without advancing, each followed by its late call.
    EXPECT_EQ(plugin.seq().advances, 3);
    EXPECT_EQ(plugin.seq().lateCalls, 4);

    // The cymbal is on four keys in the factory map: four note-ons a step, and
    // the note-offs of the previous hit first.
    const auto ons = host.noteOnsOut();
    ASSERT_EQ(ons.size(), 16u);
    const int keys[] = { 49, 51, 52, 59 };
    for (size_t i = 0; i < ons.size(); ++i)
    {
        // The clock counts in beats: a step may land one sample late by rounding.
        const auto& m = ons[i].message;
        EXPECT_TRUE(std::abs(ons[i].sample - (int) (i / 4) * 6000) <= 1 && ons[i].sample == ons[i - i % 4].sample) << "note " << i << " at " << ons[i].sample;
        EXPECT_TRUE(m.getNoteNumber() == keys[i % 4] && m.getVelocity() == 127 && m.getChannel() == 1) << m.getDescription();
    }
    EXPECT_EQ(std::count_if(host.output.begin(), host.output.end(), [&](const auto& e)
                            { return e.message.isNoteOff() && e.sample == ons[4].sample; }),
              4);

    // A second Start is dropped; all notes off stops the sequences, but lets
    // the sound ring on.
    plugin.runRequest = 1;
    host.render(512);
    EXPECT_EQ(plugin.seq().starts, 1);
    const auto out = host.render(1024, { { 10, juce::MidiMessage::allNotesOff(1) } });
    EXPECT_FALSE(plugin.nativeClock.running || plugin.hostClock.running);
    EXPECT_GT(H::peak(out, 0, 500), 0.001f) << "the cymbal's tail was cut";
}

TEST(PluginBlockProcessing, AMappedControllerMovesItsParameterAtItsSampleAndAllNotesOffIsNoController)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    auto& params = plugin.getParameterManager();
    plugin.setInternalSequencer(false);
    auto& control = plugin.getMidiControl();
    control.assign(7, params.getParameter("Bass Drum Level"), true);

    // A long bass drum, its level pulled to 0 by controller 7 at sample 4800.
    params.setNormalised(19, 1.0f); // Bass Drum Decay
    const auto out = host.render(12000, { H::noteOn(0, 36), { 4800, juce::MidiMessage::controllerEvent(3, 7, 0) } });
    EXPECT_EQ(params.getNormalised(ParameterIds::level), 0.0);
    EXPECT_GT(out.getRMSLevel(0, 4700, 100), 1.0e-3f);
    EXPECT_LT(out.getRMSLevel(0, 9000, 1000), out.getRMSLevel(0, 4700, 100) * 1.0e-3f) << "the level did not fall after the controller";

    control.setLearnMode(true);
    host.render(256, { { 10, juce::MidiMessage::controllerEvent(1, 123, 0) } });
    EXPECT_EQ(control.getLearnController(), -1) << "all notes off reached the control map";
    host.render(256, { { 10, juce::MidiMessage::controllerEvent(1, 20, 64) } });
    EXPECT_EQ(control.getLearnController(), 20);
}

TEST(PluginBlockProcessing, HeldPatternKeysAndNoteOffMode)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    host.render(512, { H::noteOn(10, 12) });
    EXPECT_TRUE(plugin.hostClock.running) << "a pattern key starts its pattern";

    plugin.noteOffMode = true;
    host.render(512, { H::noteOn(5, 12), H::noteOff(50, 12) });
    EXPECT_TRUE(plugin.hostClock.running) << "one of two held keys was released";
    host.render(512, { H::noteOff(5, 12) });
    EXPECT_FALSE(plugin.hostClock.running);

    // Another key restarts the count at 1: the earlier key's release is ignored.
    host.render(512, { H::noteOn(5, 12), H::noteOn(6, 12), H::noteOn(200, 13) });
    EXPECT_EQ(plugin.getSequencer()->getHostPattern(), 1);
    host.render(512, { H::noteOff(5, 12), H::noteOff(6, 12) });
    EXPECT_TRUE(plugin.hostClock.running) << "the release of a key no longer current stopped the pattern";
    host.render(512, { H::noteOff(5, 13) });
    EXPECT_FALSE(plugin.hostClock.running) << "one release should stop a pattern held by one key";

    // Hosts often send controller 123 before the note-offs when they stop;
    // the late release must not leave the count below zero.
    host.render(512, { H::noteOn(5, 12), { 100, juce::MidiMessage::allNotesOff(1) }, H::noteOff(200, 12) });
    EXPECT_FALSE(plugin.hostClock.running);
    host.render(512, { H::noteOn(5, 12) });
    host.render(512, { H::noteOff(5, 12) });
    EXPECT_FALSE(plugin.hostClock.running) << "the release after a late note-off did not stop the pattern";
}

TEST(PluginBlockProcessing, OutputIsFiniteAtEveryRate)
{
    for (const double rate : { 44100.0, 48000.0, 88200.0, 96000.0, 192000.0 })
    {
        PluginTestHost host(rate, 480);
        host.plugin->setInternalSequencer(false);
        std::vector<H::Event> events;
        for (int i = 0; i < 16; ++i)
            for (const int key : { 35, 36, 37, 38, 39, 40, 42, 46, 49, 56, 60, 75 })
                events.push_back(H::noteOn(i * (int) (rate / 8) + key, key, 40 + i * 5));

        const auto out = host.render((int) rate * 2, events);
        EXPECT_EQ(H::badSamples(out), 0) << rate;
        EXPECT_GT(H::peak(out, 0), 0.01f) << rate;
    }
}

TEST(PluginBlockProcessing, ProcessBlockAllocatesNothing)
{
    // On a thread of its own, as a host's audio thread. A native run through
    // the factory patterns with a fill-in every second pass, the editor in
    // write mode following it; then host patterns by key, the editor again
    // following; direct notes, a controller and program changes all along. A
    // host listener builds texts when told of a change, as a VST3 wrapper does.
    PluginTestHost host(48000.0, 256);
    auto& plugin = *host.plugin;
    host.playHead.present = false;
    plugin.getParameterManager().setNormalised(ParameterIds::autoFillIn, 1.0f);
    plugin.setWriteMode(true);
    plugin.handleEvent(3005); // Toggle Auto Follow Mode
    ASSERT_TRUE(plugin.autoFollow);
    plugin.runRequest = 1;

    struct TextBuildingHost : juce::AudioProcessorListener
    {
        void audioProcessorParameterChanged(juce::AudioProcessor*, int, float) override {}
        void audioProcessorChanged(juce::AudioProcessor* processor, const ChangeDetails&) override
        {
            for (auto* parameter : processor->getParameters())
                texts += parameter->getCurrentValueAsText();
        }
        juce::String texts;
    } textBuildingHost;
    plugin.addListener(&textBuildingHost);

    juce::AudioBuffer<float> buffer(plugin.getTotalNumOutputChannels(), 256);
    juce::MidiBuffer midi;
    midi.ensureSize(4096);
    auto play = [&](int firstBlock, int blocks)
    {
        long allocations = 0;
        std::thread audio([&]
                          {
            for (int block = firstBlock; block < firstBlock + blocks; ++block)
            {
                const int key = block % 2 == 0 ? 36 : 12 + block / 8 % 30;
                midi.clear();
                midi.addEvent(juce::MidiMessage::noteOn(1, key, (juce::uint8) 90), block % 256);
                midi.addEvent(juce::MidiMessage::noteOff(1, key), (block * 7) % 256);
                midi.addEvent(juce::MidiMessage::controllerEvent(1, 7, block % 128), 128);
                if (block % 50 == 0) // a kit change now and then
                    midi.addEvent(juce::MidiMessage::programChange(1, (block / 50) % 20), 200);
                ScopedAllocationCounter counter;
                plugin.processBlock(buffer, midi);
                if (block >= firstBlock + 100) // the first blocks of a mode may size their buffers
                    allocations += counter.count();
            } });
        audio.join();
        return allocations;
    };

    EXPECT_EQ(play(0, 2000), 0) << "native run, write mode following";
    plugin.setHostMode(true);
    ASSERT_TRUE(plugin.isEditing() && plugin.autoFollow);
    EXPECT_EQ(play(2000, 2000), 0) << "host patterns, auto follow";
    plugin.removeListener(&textBuildingHost);
}
