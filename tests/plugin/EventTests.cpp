#include "PluginTestHost.h"

#include "parameters/ParameterIds.h"
#include "sequencer/QuindrelSeq.h"

#include <gtest/gtest.h>

using namespace ParameterIds;

namespace
{
constexpr int toggleInternalSequencer = 3000, toggleInternalSync = 3001, toggleHostMode = 3002,
              togglePatternWriteMode = 3004, toggleLengthMode = 3007, start = 3011, stop = 3012,
              pressStep = 3030, selectScale3 = 3063, selectVariationB = 105, selectPart2 = 107,
              introFillIn = 108, clear = 3026, toggleAutoFollow = 3005, next = 3020;

std::vector<double> allValues(ParameterManager& params)
{
    std::vector<double> values;
    for (int i = 0; i < params.getNumParameters(); ++i)
        values.push_back(params.getParameterByIndex(i)->getValue());
    return values;
}

std::vector<float> stepLights(ParameterManager& params)
{
    std::vector<float> lights;
    for (int s = 0; s < 16; ++s)
        lights.push_back((float) params.getValue(stepState + s));
    return lights;
}
} // namespace

TEST(PluginEvents, MuteAndSoloTogglesAndInverses)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    auto& params = plugin.getParameterManager();

    plugin.handleEvent(0); // Toggle Bass Drum Mute
    EXPECT_TRUE(params.getBool(mute + 0));
    plugin.handleEvent(0);
    EXPECT_FALSE(params.getBool(mute + 0));

    params.setBool(solo + 3, true);
    params.setBool(solo + 9, true);
    plugin.handleEvent(51); // Inverse Bass Drum Solo, the bass drum not soloed
    for (int i = 0; i < instrumentCount; ++i)
        EXPECT_EQ(params.getBool(solo + i), i == 0) << i;

    plugin.handleEvent(51); // again: the bass drum soloed, so all others are
    for (int i = 0; i < instrumentCount; ++i)
        EXPECT_EQ(params.getBool(solo + i), i != 0) << i;

    plugin.handleEvent(17 + 16); // Inverse Closed Hi Hat Mute
    for (int i = 0; i < instrumentCount; ++i)
        EXPECT_EQ(params.getBool(mute + i), i == 16) << i;
}

TEST(PluginEvents, UnknownAndInactiveUidsChangeNothing)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    auto& params = plugin.getParameterManager();
    const auto before = allValues(params);
    EXPECT_EQ(plugin.getEvents().size(), 111 + 11 + 66) << "the table's, the base events, the sequencer's";

    for (const int uid : { -1, 111, 999, 1000, 3028, 3029, 3046, 3100, 109, 110 })
        plugin.handleEvent(uid);
    EXPECT_EQ(allValues(params), before);

    // Guards: without the internal sequencer the sequencer's switches and Start do nothing.
    plugin.setInternalSequencer(false);
    const auto off = allValues(params);
    for (const int uid : { toggleInternalSync, toggleHostMode, togglePatternWriteMode, start, stop, pressStep })
        plugin.handleEvent(uid);
    EXPECT_EQ(allValues(params), off);
    EXPECT_EQ(plugin.runRequest.load(), 0);
    EXPECT_TRUE(plugin.internalSync);
}

TEST(PluginEvents, SelectionKeepsTheLastTrackAndNeedsEditing)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    auto& params = plugin.getParameterManager();

    plugin.handleEvent(68 + 1); // Select Snare Drum, not editing: ignored
    EXPECT_EQ(params.getInt(instrumentSelection), 0);

    plugin.handleEvent(toggleHostMode); // host mode edits
    ASSERT_TRUE(plugin.isEditing());
    plugin.handleEvent(68 + 1);
    EXPECT_EQ(params.getInt(instrumentSelection), 1);
    EXPECT_EQ(params.getInt(instrumentSelectionWithAccentFirst), 2);
    EXPECT_TRUE(params.getBool(selection + 1));
    EXPECT_FALSE(params.getBool(selection + 0));

    plugin.handleEvent(86 + 1); // Toggle Snare Drum Selection: the only one, stays
    EXPECT_TRUE(params.getBool(selection + 1));
    plugin.handleEvent(86 + 17); // the accent joins
    plugin.handleEvent(86 + 1);  // now the snare may go
    EXPECT_FALSE(params.getBool(selection + 1));
    EXPECT_TRUE(params.getBool(selection + 17));

    plugin.handleEvent(68 + 17); // Select Accent: accent first is 0
    EXPECT_EQ(params.getInt(instrumentSelectionWithAccentFirst), 0);
}

TEST(PluginEvents, PatternNumberAndStepLightsFollowTheModes)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    auto& params = plugin.getParameterManager();
    auto& seq = *plugin.getQuindrelSeq();

    // Native play mode: the step row chooses patterns.
    EXPECT_TRUE(params.getBool(nativeModeReadyState));
    EXPECT_EQ(params.getInt(patternNumber), 1);
    plugin.handleEvent(pressStep + 2);  // basic pattern 3
    plugin.handleEvent(pressStep + 14); // fill-in 15
    EXPECT_EQ(seq.getBasicPattern(), 2);
    EXPECT_EQ(seq.getFillPattern(), 14);
    EXPECT_EQ(params.getInt(patternNumber), 3) << "while stopped the chosen pattern is the one shown";
    auto lights = stepLights(params);
    for (int s = 0; s < 16; ++s)
        EXPECT_EQ(lights[(size_t) s], (s == 2 || s == 14) ? 1.0f : 0.0f) << s;
    EXPECT_TRUE(params.getBool(stepBlinking + 2)) << "the pattern a run starts with blinks";

    // The intro starts the run instead: its button blinks.
    plugin.handleEvent(introFillIn);
    EXPECT_EQ(seq.getStartType(), QuindrelSeq::startWithFillIn);
    EXPECT_TRUE(params.getBool(stepBlinking + 14));
    EXPECT_FALSE(params.getBool(stepBlinking + 2));
    plugin.handleEvent(introFillIn);

    // Native write mode: the edited pattern + 1.
    plugin.handleEvent(togglePatternWriteMode);
    EXPECT_TRUE(params.getBool(writeModeState));
    EXPECT_FALSE(params.getBool(nativeModeReadyState));
    EXPECT_EQ(params.getInt(patternNumber), seq.getEditedIndex() + 1);
    EXPECT_EQ(seq.getEditedIndex(), 2) << "write mode edits the pattern a run would start with";
    EXPECT_TRUE(params.getBool(variationAEditionState));
    plugin.handleEvent(selectVariationB);
    plugin.handleEvent(selectPart2);
    EXPECT_TRUE(params.getBool(variationBEditionState));
    EXPECT_TRUE(params.getBool(part2EditionState));
    EXPECT_FALSE(params.getBool(part1EditionState));

    plugin.handleEvent(selectScale3);
    EXPECT_TRUE(params.getBool(patternScale3SpbState));
    EXPECT_FALSE(params.getBool(patternScale4SpbState));
    EXPECT_EQ(seq.getEditedScale(), 3);

    // Length mode on part 2: Clear removes the part.
    plugin.handleEvent(toggleLengthMode);
    EXPECT_TRUE(params.getBool(lengthModeStateWithClear));
    EXPECT_EQ(stepLights(params), std::vector<float>(16, 1.0f));
    plugin.handleEvent(pressStep + 5);
    EXPECT_EQ(seq.getEditedLength(), 6);
    plugin.handleEvent(clear);
    EXPECT_EQ(seq.getEditedLength(), 0);
    plugin.handleEvent(toggleLengthMode);

    // Host mode: the edited host pattern's key.
    plugin.handleEvent(togglePatternWriteMode);
    plugin.handleEvent(toggleHostMode);
    EXPECT_EQ(params.getInt(patternNumber), seq.getEditedHostPattern() + 12);
    EXPECT_FALSE(params.getBool(variationBEditionState));

    // No internal sequencer: nothing shown.
    plugin.handleEvent(toggleInternalSequencer);
    EXPECT_EQ(params.getInt(patternNumber), 0);
    EXPECT_EQ(params.getText(patternName), "");
    EXPECT_EQ(params.getValue(patternTempo), 30.0);
    EXPECT_EQ(stepLights(params), std::vector<float>(16, 0.0f));
    for (int s = 0; s < 16; ++s)
        EXPECT_FALSE(params.getBool(stepLengthState + s));
}

TEST(PluginEvents, StartAndStopRunTheNativeSequenceOnlyWhileTheHostRests)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    auto& params = plugin.getParameterManager();
    host.playHead.present = false;

    plugin.handleEvent(start);
    host.render(1024);
    EXPECT_TRUE(plugin.nativeClock.running);
    EXPECT_TRUE(params.getBool(playState));
    EXPECT_FALSE(params.getBool(nativeModeReadyState));
    EXPECT_TRUE(params.getBool(variationAPlayingState));
    EXPECT_TRUE(params.getBool(part1PlayingState));

    plugin.handleEvent(3010); // Start/Stop while started: stop
    host.render(512);
    EXPECT_FALSE(plugin.nativeClock.running);
    EXPECT_FALSE(params.getBool(playState));

    host.playHead.present = true;
    host.playHead.playing = true;
    host.render(512); // the host's start starts the run
    ASSERT_TRUE(plugin.nativeClock.running);
    plugin.handleEvent(stop);
    host.render(512);
    EXPECT_TRUE(plugin.nativeClock.running) << "Stop is dropped while the host plays";
    EXPECT_EQ(plugin.runRequest.load(), 0);

    host.playHead.playing = false;
    host.render(512);
    EXPECT_FALSE(plugin.nativeClock.running) << "the host's stop stops the run";
}

TEST(PluginEvents, TogglingTheInternalSequencerEndsTheGeneratedNotes)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    host.playHead.playing = true;
    host.render(24000); // the factory pattern plays and sends its notes
    ASSERT_FALSE(host.noteOnsOut().empty());

    host.output.clear();
    plugin.handleEvent(toggleInternalSequencer);
    host.render(512);
    int offs = 0;
    for (const auto& e : host.output)
        if (e.message.isNoteOff())
            ++offs;
    EXPECT_GT(offs, 0);
}

TEST(PluginEvents, PlayingAndBrowsingInEveryModeLeavesThePatternsAsTheyAre)
{
    // Refreshing the displays never writes into a pattern: the factory banks,
    // played and browsed in every mode, save exactly as the factory files read.
    PluginTestHost host;
    auto& plugin = *host.plugin;
    auto& seq = *plugin.getQuindrelSeq();
    QuindrelSeq factory(nullptr, nullptr);
    PluginTestHost::loadFactoryBanks(factory);
    const auto factoryBanks = PluginTestHost::banksOf(factory);
    ASSERT_EQ(PluginTestHost::banksOf(seq), factoryBanks);

    // Native play through the basic patterns, with fill-ins.
    host.playHead.playing = true;
    plugin.getParameterManager().setNormalised(autoFillIn, 1.0f);
    for (int step = 0; step < 12; ++step)
    {
        plugin.handleEvent(pressStep + step);
        host.render(12000);
    }
    // Write mode: browsing, then following the run.
    plugin.handleEvent(togglePatternWriteMode);
    for (int i = 0; i < 16; ++i)
        plugin.handleEvent(next);
    plugin.handleEvent(toggleAutoFollow);
    host.render(96000);
    plugin.handleEvent(toggleAutoFollow);
    plugin.handleEvent(togglePatternWriteMode);
    // Host mode: browsing, then following the keys.
    plugin.handleEvent(toggleHostMode);
    for (int i = 0; i < QuindrelSeq::hostPatternCount; ++i)
        plugin.handleEvent(next);
    plugin.handleEvent(toggleAutoFollow);
    for (int key = 12; key < 108; ++key)
        host.render(256, { PluginTestHost::noteOn(0, key) });

    EXPECT_EQ(PluginTestHost::banksOf(seq), factoryBanks);
}
