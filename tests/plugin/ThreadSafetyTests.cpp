#include "PluginTestHost.h"

#include "engine/QuindrelCore.h"
#include "parameters/ParameterIds.h"
#include "sequencer/QuindrelSeq.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace
{
using SteadyClock = std::chrono::steady_clock;

// The real engine, counting its triggers from any thread.
struct CountingCore : QuindrelCore
{
    void trigger(int instrument, float velocity) override
    {
        counts[(size_t) instrument].fetch_add(1, std::memory_order_relaxed);
        QuindrelCore::trigger(instrument, velocity);
    }
    int count(int instrument) const { return counts[(size_t) instrument].load(); }

    std::array<std::atomic<int>, trackCount> counts{};
};

// A sequencer that counts the reads of a pattern name made off the message thread.
struct NameWatchingSeq : QuindrelSeq
{
    using QuindrelSeq::QuindrelSeq;

    juce::String getEditedName() const override { return watched(QuindrelSeq::getEditedName()); }
    juce::String getNativeName() const override { return watched(QuindrelSeq::getNativeName()); }
    juce::String getHostName() const override { return watched(QuindrelSeq::getHostName()); }

    juce::String watched(const juce::String& name) const
    {
        if (!juce::MessageManager::existsAndIsCurrentThread())
            readsOffMessageThread.fetch_add(1);
        return name;
    }

    mutable std::atomic<int> readsOffMessageThread{ 0 };
};

struct WatchedQuindrel : Quindrel
{
    using Quindrel::Quindrel;
    std::unique_ptr<DrumMachineCore> createCore() override { return std::make_unique<CountingCore>(); }
    std::unique_ptr<DrumMachineSeq> createSequencer() override { return std::make_unique<NameWatchingSeq>(this, getCore()); }
    CountingCore& core() { return *static_cast<CountingCore*>(getCore()); }
    NameWatchingSeq& seq() { return *static_cast<NameWatchingSeq*>(getSequencer()); }
};

// Plays blocks on a thread of its own, as a host's audio thread, until stopped.
struct AudioThread
{
    explicit AudioThread(PluginTestHost& host, std::function<void(int block, juce::MidiBuffer&)> onBlock = {})
        : thread([this, &host, onBlock]
                 {
                     juce::AudioBuffer<float> buffer(host.plugin->getTotalNumOutputChannels(), host.block);
                     juce::MidiBuffer midi;
                     for (int block = 0; !stopped; blocks = ++block)
                     {
                         midi.clear();
                         if (onBlock)
                             onBlock(block, midi);
                         host.plugin->processBlock(buffer, midi);
                         nonFinite += PluginTestHost::badSamples(buffer);
                     } })
    {
    }
    ~AudioThread() { stop(); }
    void stop()
    {
        stopped = true;
        if (thread.joinable())
            thread.join();
    }

    std::atomic<bool> stopped{ false };
    std::atomic<int> blocks{ 0 }, nonFinite{ 0 };
    std::thread thread;
};
} // namespace

TEST(PluginThreadSafety, MuteAndSoloChangesOnOtherThreadsNeverLetAMutedDrumThrough)
{
    PluginTestHost host(48000.0, 512, {}, PluginTestHost::factoryFor<WatchedQuindrel>());
    auto& plugin = static_cast<WatchedQuindrel&>(*host.plugin);
    auto& params = plugin.getParameterManager();
    params.setBool(ParameterIds::mute + 1, true); // the snare stays muted throughout

    // Automation and the panel switch two other mutes on and off; the bass
    // drum ends unmuted, the cow bell muted.
    std::atomic<bool> done{ false };
    auto toggle = [&](int instrument, bool last)
    {
        return std::thread([&params, &done, instrument, last]
                           {
            for (int i = 0; !done; ++i)
                params.setBool(ParameterIds::mute + instrument, i % 2 == 0);
            params.setBool(ParameterIds::mute + instrument, last); });
    };
    auto bassDrum = toggle(0, false), cowBell = toggle(12, true);

    // Meanwhile the audio thread hits the snare.
    const auto end = SteadyClock::now() + std::chrono::milliseconds(500);
    while (SteadyClock::now() < end && plugin.core().count(1) == 0)
        for (int i = 0; i < 1000; ++i)
            plugin.triggerInstrument(1, 1.0f);
    done = true;
    bassDrum.join();
    cowBell.join();
    EXPECT_EQ(plugin.core().count(1), 0) << "the muted snare sounded";

    for (const int instrument : { 0, 1, 12 })
        plugin.triggerInstrument(instrument, 1.0f);
    EXPECT_EQ(plugin.core().count(0), 1) << "the last change left the bass drum muted";
    EXPECT_EQ(plugin.core().count(12), 0) << "the last change left the cow bell enabled";
}

TEST(PluginThreadSafety, PatternNamesReachThePanelFromTheMessageThreadOnly)
{
    // A name is not a word: the audio thread must not copy one that the panel
    // may be replacing. The editor follows a key; the panel then shows its name.
    PluginTestHost host(48000.0, 256, {}, PluginTestHost::factoryFor<WatchedQuindrel>());
    auto& plugin = static_cast<WatchedQuindrel&>(*host.plugin);
    plugin.getQuindrelSeq()->getHostPatternAt(5).setName("Host 5");
    plugin.setHostMode(true);
    plugin.handleEvent(3005); // Toggle Auto Follow Mode
    {
        AudioThread audio(host, [](int block, juce::MidiBuffer& midi)
                          {
            if (block == 10)
                midi.addEvent(juce::MidiMessage::noteOn(1, 12 + 5, (juce::uint8) 100), 0); });
        while (audio.blocks < 100)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_EQ(plugin.seq().readsOffMessageThread, 0);
    juce::MessageManager::getInstance()->runDispatchLoopUntil(50);
    EXPECT_EQ(plugin.getParameterManager().getText(ParameterIds::patternName), "Host 5");
}

namespace
{
// Puts one track of every pattern back as the factory has it.
void restoreTrack(QuindrelSeq& seq, QuindrelSeq& factory, int track)
{
    for (int n = 0; n < QuindrelSeq::hostPatternCount; ++n)
        seq.getHostPatternAt(n).copyTrackFrom(factory.getHostPatternAt(n), track, track);
    for (int n = 0; n < QuindrelSeq::nativePatternCount; ++n)
        for (int v = 0; v < NativePattern::variationCount; ++v)
            for (int p = 0; p < Variation::partCount; ++p)
                seq.getNativePatternAt(n).getVariation(v).getPart(p).copyTrackFrom(factory.getNativePatternAt(n).getVariation(v).getPart(p), track, track);
}
} // namespace

// One instance plays on an audio thread while the message thread, for a few
// seconds, does what a host and a user do at once: host automation, clicks on
// the panel, MIDI learn, and controllers handed to the audio thread as a host
// forwards MIDI. The audio thread itself applies automation of the sound
// parameters (as VST3 and LV2 hosts deliver it, inside the block), plays
// pattern keys and notes, and runs the transport. CI runs it under
// ThreadSanitizer. Whatever else may happen on another thread while playing
// (a state restore, a preset change) belongs in `actions`.
TEST(PluginThreadSafety, StressPlayingWhileTheHostAndTheUserActOnOtherThreads)
{
    PluginTestHost host(48000.0, 128, {}, PluginTestHost::factoryFor<WatchedQuindrel>());
    auto& plugin = static_cast<WatchedQuindrel&>(*host.plugin);
    auto& params = plugin.getParameterManager();
    auto& seq = plugin.seq();
    QuindrelSeq factory(nullptr, nullptr);
    PluginTestHost::loadFactoryBanks(factory);
    ASSERT_EQ(PluginTestHost::banksOf(seq), PluginTestHost::banksOf(factory));

    // Controllers from the message thread, taken by the next block.
    std::array<std::pair<int, int>, 256> controllers{};
    juce::AbstractFifo controllerFifo((int) controllers.size());

    AudioThread audio(host, [&](int block, juce::MidiBuffer& midi)
                      {
        juce::Random random(block);
        if (block % 500 == 0)
            host.playHead.playing = !host.playHead.playing;
        if (host.playHead.playing)
            host.playHead.ppq += 128.0 / 48000.0 * 2.0;

        plugin.getParameters()[random.nextInt(ParameterIds::mute)]->setValue(random.nextFloat());

        const int key = block % 3 == 0 ? 12 + random.nextInt(8) : 35 + random.nextInt(25);
        midi.addEvent(juce::MidiMessage::noteOn(1, key, (juce::uint8) (1 + random.nextInt(127))), random.nextInt(128));
        midi.addEvent(juce::MidiMessage::noteOff(1, key), random.nextInt(128));
        if (block % 200 == 199)
            midi.addEvent(juce::MidiMessage::allNotesOff(1), random.nextInt(128));
        if (block % 300 == 0)
            midi.addEvent(juce::MidiMessage::noteOn(1, 0, (juce::uint8) 100), 0);

        controllerFifo.read(controllerFifo.getNumReady()).forEach([&](int i)
                                                                   {
            const auto [number, value] = controllers[(size_t) i];
            midi.addEvent(juce::MidiMessage::controllerEvent(1, number, value), random.nextInt(128)); }); });

    // Panel events that change no pattern for good: a step press comes three
    // times, which brings an edited step back; taps record where a run happens
    // to be, on the selected track only (the bass drum), which is put back at
    // the end. Scale, length, clear, paste and the randomizer stay out.
    const int modeSwitches[] = { 3000, 3001, 3002, 3003, 3004, 3005 };
    const int clicks[] = { 3010, 3011, 3012, 3013, 3014, 108, 3019, 3020, 104, 105, 106, 107 };

    const std::function<void(juce::Random&)> actions[] = {
        [&](juce::Random& r) // host automation
        { plugin.getParameters()[ParameterIds::mute + r.nextInt(ParameterIds::lastHostParameter + 1 - ParameterIds::mute)]->setValue(r.nextFloat()); },
        [&](juce::Random& r)
        { plugin.handleEvent(modeSwitches[r.nextInt((int) std::size(modeSwitches))]); },
        [&](juce::Random& r)
        { plugin.handleEvent(clicks[r.nextInt((int) std::size(clicks))]); },
        [&](juce::Random& r) // a step press, three times
        {
            const int step = 3030 + r.nextInt(16);
            for (int i = 0; i < 3; ++i)
                plugin.handleEvent(step);
        },
        [&](juce::Random& r) // the sequencer's switches
        { params.setNormalised(ParameterIds::autoFillIn + r.nextInt(3), r.nextFloat()); },
        [&](juce::Random& r) // MIDI learn
        { plugin.getMidiControl().assign(1 + r.nextInt(100), params.getParameter(r.nextInt(ParameterIds::lastHostParameter + 1)), true); },
        [&](juce::Random& r) // a controller for the audio thread
        { controllerFifo.write(1).forEach([&](int i)
                                          { controllers[(size_t) i] = { 1 + r.nextInt(100), r.nextInt(128) }; }); },
    };

    juce::Random random(13);
    const auto end = SteadyClock::now() + std::chrono::seconds(3);
    int done = 0;
    for (; SteadyClock::now() < end; ++done)
    {
        actions[random.nextInt((int) std::size(actions))](random);
        if (done % 20 == 0)
            juce::MessageManager::getInstance()->runDispatchLoopUntil(1);
    }
    audio.stop();

    EXPECT_GT(audio.blocks, 100);
    EXPECT_GT(done, 1000);
    EXPECT_EQ(audio.nonFinite, 0);
    EXPECT_EQ(seq.readsOffMessageThread, 0) << "the audio thread copied a pattern name";
    ASSERT_EQ(plugin.selectedTrack, 0);
    restoreTrack(seq, factory, 0);
    EXPECT_EQ(PluginTestHost::banksOf(seq), PluginTestHost::banksOf(factory)) << "a pattern changed";
}
