#include "PluginTestHost.h"
#include "support/AllocationCounter.h"

#include "parameters/ParameterIds.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{
// A sequencer that plays the cymbal on every step and counts what it is asked,
// so that the clocks and the block loop can be watched without patterns.
class CountingSeq : public DrumMachineSeq
{
public:
    using DrumMachineSeq::DrumMachineSeq;

    int instrument = 14;

    void startNative() override { ++starts; }
    void stopNative() override { ++stops; }
    bool advanceNative() override
    {
        ++advances;
        return false;
    }
    void playNativeStep(bool late) override
    {
        if (late)
            ++lateCalls;
        else
            plugin->triggerInstrument(instrument, 1.0f);
    }

    int starts = 0, stops = 0, advances = 0, lateCalls = 0;
};

class QuindrelWithCountingSeq : public Quindrel
{
public:
    using Quindrel::Quindrel;
    std::unique_ptr<DrumMachineSeq> createSequencer() override { return std::make_unique<CountingSeq>(this, getCore()); }
    CountingSeq& seq() { return *static_cast<CountingSeq*>(getSequencer()); }
};

float peak(const juce::AudioBuffer<float>& buffer, int channel, int start = 0, int length = -1)
{
    if (length < 0)
        length = buffer.getNumSamples() - start;
    return buffer.getMagnitude(channel, start, length);
}
} // namespace

TEST(PluginBlockProcessing, MidiNotesSoundAtTheirSampleWhateverTheBlockSize)
{
    // Two notes share sample 900: the snare on output 2, the rim shot on output 3.
    const std::vector<PluginTestHost::Event> events = {
        PluginTestHost::noteOn(0, 36),
        PluginTestHost::noteOn(511, 75),
        PluginTestHost::noteOn(900, 38),
        PluginTestHost::noteOn(900, 37),
        PluginTestHost::noteOn(4097, 36, 127),
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
    EXPECT_EQ(PluginTestHost::firstSoundAt(expected, 0), 0);
    EXPECT_EQ(PluginTestHost::firstSoundAt(expected, 2), 900);
    EXPECT_EQ(PluginTestHost::firstSoundAt(expected, 4, 0.0f), 900);

    for (const int blockSize : { 1, 7, 64, 333, 512 })
    {
        PluginTestHost host(48000.0, blockSize);
        start(host);
        const auto out = host.render(12000, events);

        for (int c = 0; c < 6; ++c)
            for (int i = 0; i < out.getNumSamples(); ++i)
                ASSERT_EQ(out.getSample(c, i), expected.getSample(c, i)) << "block " << blockSize << " channel " << c << " sample " << i;
    }
}

TEST(PluginBlockProcessing, AnEventStampedPastTheBlockArrivesLaterAtItsPlace)
{
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
    EXPECT_EQ(PluginTestHost::firstSoundAt(buffer, 0), 100);

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

    params.setBool(ParameterIds::mute + 0, true);
    auto out = host.render(4800, { PluginTestHost::noteOn(0, 36), PluginTestHost::noteOn(0, 38) });
    EXPECT_EQ(peak(out, 0), 0.0f) << "muted bass drum sounded";
    EXPECT_GT(peak(out, 2), 0.01f);

    // A solo overrides every mute, the soloed instrument's own included.
    host.render(48000 * 3); // let the tails end
    params.setBool(ParameterIds::solo + 0, true);
    out = host.render(4800, { PluginTestHost::noteOn(0, 36), PluginTestHost::noteOn(0, 38) });
    EXPECT_GT(peak(out, 0), 0.01f);
    EXPECT_EQ(peak(out, 2), 0.0f) << "unsoloed snare was triggered";

    // Clearing the solo brings the mute back.
    params.setBool(ParameterIds::solo + 0, false);
    host.render(48000 * 3); // let the tails end
    out = host.render(4800, { PluginTestHost::noteOn(0, 36), PluginTestHost::noteOn(0, 38) });
    EXPECT_EQ(peak(out, 0), 0.0f);
    EXPECT_GT(peak(out, 2), 0.01f);

    // Muting while a note rings leaves the tail alone.
    params.setBool(ParameterIds::mute + 1, false);
    host.render(10, { PluginTestHost::noteOn(0, 38) });
    params.setBool(ParameterIds::mute + 1, true);
    out = host.render(480);
    EXPECT_GT(peak(out, 2), 0.01f);
}

TEST(PluginBlockProcessing, ClocksStepTheSequencerAndSendTheMappedNotes)
{
    PluginTestHost host(48000.0, 512, {}, PluginTestHost::factoryFor<QuindrelWithCountingSeq>());
    auto& plugin = static_cast<QuindrelWithCountingSeq&>(*host.plugin);
    host.playHead.present = false; // no transport: the Start event runs the native sequence

    plugin.runRequest = 1;
    host.render(24000);
    ASSERT_EQ(plugin.seq().starts, 1);
    EXPECT_TRUE(plugin.getParameterManager().getBool(ParameterIds::playState));

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
        EXPECT_NEAR(ons[i].sample, (int) (i / 4) * 6000, 1);
        EXPECT_EQ(ons[i].sample, ons[i - i % 4].sample);
        EXPECT_EQ(ons[i].message.getNoteNumber(), keys[i % 4]);
        EXPECT_EQ(ons[i].message.getVelocity(), 127);
        EXPECT_EQ(ons[i].message.getChannel(), 1);
    }
    int offsAtSecondStep = 0;
    for (const auto& e : host.output)
        if (e.message.isNoteOff() && e.sample == ons[4].sample)
            ++offsAtSecondStep;
    EXPECT_EQ(offsAtSecondStep, 4);

    // A second Start is dropped; Stop ends the run.
    plugin.runRequest = 1;
    host.render(512);
    EXPECT_EQ(plugin.seq().starts, 1);
    plugin.runRequest = 2;
    host.render(512);
    EXPECT_EQ(plugin.seq().stops, 1);
    EXPECT_FALSE(plugin.getParameterManager().getBool(ParameterIds::playState));
}

TEST(PluginBlockProcessing, AllNotesOffStopsTheSequencesButNotTheSound)
{
    PluginTestHost host(48000.0, 512, {}, PluginTestHost::factoryFor<QuindrelWithCountingSeq>());
    auto& plugin = static_cast<QuindrelWithCountingSeq&>(*host.plugin);
    plugin.seq().instrument = 0;
    host.playHead.present = false;
    plugin.runRequest = 1;
    host.render(1024);
    ASSERT_TRUE(plugin.nativeClock.running);

    const auto out = host.render(1024, { { 10, juce::MidiMessage::allNotesOff(1) } });
    EXPECT_FALSE(plugin.nativeClock.running);
    EXPECT_FALSE(plugin.hostClock.running);
    EXPECT_GT(peak(out, 0, 500), 0.001f) << "the bass drum's tail was cut";
}

TEST(PluginBlockProcessing, HeldPatternKeysAndNoteOffMode)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    using H = PluginTestHost;

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
        std::vector<PluginTestHost::Event> events;
        for (int i = 0; i < 16; ++i)
            for (const int key : { 35, 36, 37, 38, 39, 40, 42, 46, 49, 56, 60, 75 })
                events.push_back(PluginTestHost::noteOn(i * (int) (rate / 8) + key, key, 40 + i * 5));

        const auto out = host.render((int) rate * 2, events);
        for (int c = 0; c < out.getNumChannels(); ++c)
        {
            const auto* data = out.getReadPointer(c);
            for (int i = 0; i < out.getNumSamples(); ++i)
            {
                ASSERT_TRUE(std::isfinite(data[i])) << rate;
                ASSERT_TRUE(data[i] == 0.0f || std::fpclassify(data[i]) == FP_NORMAL) << "subnormal at " << rate;
            }
        }
        EXPECT_GT(peak(out, 0), 0.01f) << rate;
    }
}

TEST(PluginBlockProcessing, ProcessBlockAllocatesNothing)
{
    // On a thread of its own, as a host's audio thread. A native run through
    // the factory patterns with a fill-in every second pass, the editor in
    // write mode following it; then host patterns by key, the editor again
    // following; direct notes, a controller and program changes all along. A host listener
    // builds texts when told of a change, as a VST3 wrapper does.
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

TEST(PluginBlockProcessing, WithoutTheInternalSequencerTheInputPassesThroughAlone)
{
    PluginTestHost host;
    host.plugin->setInternalSequencer(false);
    host.render(1024, { PluginTestHost::noteOn(100, 36), PluginTestHost::noteOff(300, 36) });

    // The bass drum sounds on keys 35 and 36, but only the host's own notes come back.
    ASSERT_EQ(host.output.size(), 2u);
    EXPECT_TRUE(host.output[0].message.isNoteOn() && host.output[0].message.getNoteNumber() == 36 && host.output[0].sample == 100);
    EXPECT_TRUE(host.output[1].message.isNoteOff() && host.output[1].sample == 300);
}
