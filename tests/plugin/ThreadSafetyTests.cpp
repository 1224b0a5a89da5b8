#include "PluginTestHost.h"

#include "parameters/ParameterIds.h"
#include "sequencer/QuindrelSeq.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace
{
using SteadyClock = std::chrono::steady_clock;

// An engine that only counts its triggers, from any thread.
struct CountingCore : DrumMachineCore
{
    void trigger(int instrument, float) override { counts[(size_t) instrument].fetch_add(1, std::memory_order_relaxed); }
    int count(int instrument) const { return counts[(size_t) instrument].load(); }

    std::array<std::atomic<int>, trackCount> counts{};
};

// A sequencer that notes every read of a pattern name made off the message thread.
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
    using BlockFunction = std::function<void(int block, juce::MidiBuffer&)>;

    explicit AudioThread(PluginTestHost& hostToUse, BlockFunction onBlockToUse = {})
        : host(hostToUse)
        , onBlock(std::move(onBlockToUse))
        , thread([this]
                 {
                     juce::AudioBuffer<float> buffer(host.plugin->getTotalNumOutputChannels(), host.block);
                     juce::MidiBuffer midi;
                     for (int block = 0; !stopped; ++block)
                     {
                         midi.clear();
                         if (onBlock)
                             onBlock(block, midi);
                         host.plugin->processBlock(buffer, midi);
                         blocks.store(block + 1);
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

    PluginTestHost& host;
    BlockFunction onBlock;
    std::atomic<bool> stopped{ false };
    std::atomic<int> blocks{ 0 };
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

TEST(PluginThreadSafety, PatternNamesAreReadOnTheMessageThreadOnly)
{
    // A name is not a word: the audio thread must not copy one that the panel may be replacing.
    PluginTestHost host(48000.0, 256, {}, PluginTestHost::factoryFor<WatchedQuindrel>());
    auto& plugin = static_cast<WatchedQuindrel&>(*host.plugin);
    auto& seq = plugin.seq();
    host.playHead.present = false;
    for (int n = 0; n < QuindrelSeq::nativePatternCount; ++n)
        seq.getNativePatternAt(n).setName("Native " + juce::String(n));
    seq.getHostPatternAt(5).setName("Host 5");

    // A native run with fill-ins that the editor follows, then host patterns by key.
    plugin.getParameterManager().setNormalised(ParameterIds::autoFillIn, 1.0f);
    plugin.setWriteMode(true);
    plugin.handleEvent(3005); // Toggle Auto Follow Mode
    plugin.runRequest = 1;
    {
        AudioThread audio(host);
        while (audio.blocks < 400)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_EQ(seq.readsOffMessageThread, 0);
    juce::MessageManager::getInstance()->runDispatchLoopUntil(50);
    EXPECT_EQ(plugin.getParameterManager().getText(ParameterIds::patternName), seq.getEditedName());

    plugin.setHostMode(true);
    {
        AudioThread audio(host, [](int block, juce::MidiBuffer& midi)
                          {
            if (block == 10)
                midi.addEvent(juce::MidiMessage::noteOn(1, 12 + 5, (juce::uint8) 100), 0); });
        while (audio.blocks < 100)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_EQ(seq.readsOffMessageThread, 0);
    juce::MessageManager::getInstance()->runDispatchLoopUntil(50);
    EXPECT_EQ(plugin.getParameterManager().getText(ParameterIds::patternName), "Host 5") << "the editor follows the key, and the panel its name";
}
