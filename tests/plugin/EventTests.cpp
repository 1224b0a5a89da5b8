// The panel's events, by name as its buttons fire them: what they switch,
// what they refuse, and what the lamps and displays show afterwards.

#include "PluginTestHost.h"

#include "parameters/ParameterIds.h"
#include "sequencer/QuindrelSeq.h"

#include <gtest/gtest.h>

using namespace ParameterIds;

namespace
{
std::vector<double> allValues(ParameterManager& params)
{
    std::vector<double> values;
    for (int i = 0; i < params.getNumParameters(); ++i)
        values.push_back(params.getParameterByIndex(i)->getValue());
    return values;
}

std::vector<bool> flags(ParameterManager& params, int first)
{
    std::vector<bool> result;
    for (int i = 0; i < instrumentCount; ++i)
        result.push_back(params.getBool(first + i));
    return result;
}

std::vector<bool> only(int index, bool value = true)
{
    std::vector<bool> result((size_t) instrumentCount, !value);
    result[(size_t) index] = value;
    return result;
}
} // namespace

TEST(PluginEvents, MuteSoloAndSelectionButtons)
{
    PluginTestHost host;
    auto& params = host.plugin->getParameterManager();
    host.fire("Toggle Bass Drum Mute");
    EXPECT_EQ(flags(params, mute), only(0));
    host.fire("Toggle Bass Drum Mute");
    EXPECT_EQ(flags(params, mute), std::vector<bool>(instrumentCount, false));

    params.setBool(solo + 3, true);
    params.setBool(solo + 9, true);
    host.fire("Inverse Bass Drum Solo"); // the bass drum not soloed: it alone is
    EXPECT_EQ(flags(params, solo), only(0));
    host.fire("Inverse Bass Drum Solo"); // soloed: all others are
    EXPECT_EQ(flags(params, solo), only(0, false));
    host.fire("Inverse Closed Hi Hat Mute");
    EXPECT_EQ(flags(params, mute), only(16));

    // Selection keeps the last track and needs editing.
    host.fire("Select Snare Drum");
    EXPECT_EQ(params.getInt(instrumentSelection), 0) << "not editing: ignored";

    host.fire("Toggle Host Mode"); // host mode edits
    host.fire("Select Snare Drum");
    EXPECT_TRUE(params.getInt(instrumentSelection) == 1 && params.getInt(instrumentSelectionWithAccentFirst) == 2);
    EXPECT_TRUE(params.getBool(selection + 1) && !params.getBool(selection + 0));
    host.fire("Toggle Snare Drum Selection");
    EXPECT_TRUE(params.getBool(selection + 1)) << "the only one stays";
    host.fire("Toggle Accent Selection");
    host.fire("Toggle Snare Drum Selection"); // now the snare may go
    EXPECT_TRUE(!params.getBool(selection + 1) && params.getBool(selection + 17));
    host.fire("Select Accent");
    EXPECT_EQ(params.getInt(instrumentSelectionWithAccentFirst), 0);
}

TEST(PluginEvents, UnknownAndInactiveEventsChangeNothing)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    auto& params = plugin.getParameterManager();
    const auto before = allValues(params);
    for (const int uid : { -1, 111, 999, 1000, 3028, 3029, 3046, 3100, 109, 110 })
        plugin.handleEvent(uid);
    EXPECT_EQ(allValues(params), before);

    // Without the internal sequencer its switches and Start do nothing.
    plugin.setInternalSequencer(false);
    const auto off = allValues(params);
    for (const char* name : { "Toggle Internal Sync", "Toggle Host Mode", "Toggle Pattern Write Mode", "Start", "Stop", "Press Step 01" })
        host.fire(name);
    EXPECT_EQ(allValues(params), off);
    EXPECT_TRUE(plugin.runRequest.load() == 0 && plugin.internalSync);
}

TEST(PluginEvents, PatternNumberAndStepLightsFollowTheModes)
{
    PluginTestHost host;
    auto& params = host.plugin->getParameterManager();
    auto& seq = *host.plugin->getQuindrelSeq();
    // Native play mode: the step row chooses patterns; the one a run starts with blinks.
    EXPECT_TRUE(params.getBool(nativeModeReadyState) && params.getInt(patternNumber) == 1);
    host.fire("Press Step 03");
    host.fire("Press Step 15");
    EXPECT_TRUE(seq.getBasicPattern() == 2 && seq.getFillPattern() == 14);
    EXPECT_EQ(params.getInt(patternNumber), 3) << "while stopped the chosen pattern is the one shown";
    EXPECT_EQ(host.stepLights(), (std::vector<double>{ 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0 }));
    EXPECT_TRUE(params.getBool(stepBlinking + 2));
    host.fire("Tap/IntroSet/FillInTrigger/Accept"); // the intro starts the run instead
    EXPECT_TRUE(seq.getStartType() == QuindrelSeq::startWithFillIn && params.getBool(stepBlinking + 14) && !params.getBool(stepBlinking + 2));
    host.fire("Tap/IntroSet/FillInTrigger/Accept");

    // Native write mode edits the pattern a run would start with: its number + 1.
    host.fire("Toggle Pattern Write Mode");
    EXPECT_TRUE(params.getBool(writeModeState) && !params.getBool(nativeModeReadyState));
    EXPECT_TRUE(seq.getEditedIndex() == 2 && params.getInt(patternNumber) == 3);
    EXPECT_TRUE(params.getBool(variationAEditionState));
    host.fire("Select Variation B");
    host.fire("Select Part 2");
    host.fire("Select Scale 3 SPB");
    EXPECT_TRUE(params.getBool(variationBEditionState) && params.getBool(part2EditionState) && !params.getBool(part1EditionState));
    EXPECT_TRUE(params.getBool(patternScale3SpbState) && !params.getBool(patternScale4SpbState) && seq.getEditedScale() == 3);

    // Length mode on part 2: every step lit; Clear removes the part.
    host.fire("Toggle Length Mode");
    EXPECT_TRUE(params.getBool(lengthModeStateWithClear));
    EXPECT_EQ(host.stepLights(), std::vector<double>(16, 1.0));
    host.fire("Press Step 06");
    EXPECT_EQ(seq.getEditedLength(), 6);
    host.fire("Clear");
    EXPECT_EQ(seq.getEditedLength(), 0);
    host.fire("Toggle Length Mode");

    // Host mode shows the edited host pattern's key.
    host.fire("Toggle Pattern Write Mode");
    host.fire("Toggle Host Mode");
    EXPECT_TRUE(params.getInt(patternNumber) == seq.getEditedHostPattern() + 12 && !params.getBool(variationBEditionState));

    // No internal sequencer: nothing shown.
    host.fire("Toggle Internal Sequencer");
    EXPECT_TRUE(params.getInt(patternNumber) == 0 && params.getText(patternName) == "" && params.getValue(patternTempo) == 30.0);
    EXPECT_EQ(host.stepLights(), std::vector<double>(16, 0.0));
    for (int s = 0; s < 16; ++s)
        EXPECT_FALSE(params.getBool(stepLengthState + s)) << s;
}

TEST(PluginEvents, StartAndStopRunTheNativeSequenceOnlyWhileTheHostRests)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    auto& params = plugin.getParameterManager();
    host.playHead.present = false;

    host.fire("Start");
    host.render(1024);
    EXPECT_TRUE(plugin.nativeClock.running && params.getBool(playState) && !params.getBool(nativeModeReadyState));
    EXPECT_TRUE(params.getBool(variationAPlayingState) && params.getBool(part1PlayingState));
    host.fire("Start/Stop"); // while started: stop
    host.render(512);
    EXPECT_FALSE(plugin.nativeClock.running || params.getBool(playState));

    host.playHead.present = host.playHead.playing = true;
    host.render(512);
    ASSERT_TRUE(plugin.nativeClock.running) << "the host's start starts the run";
    host.fire("Stop");
    host.render(512);
    EXPECT_TRUE(plugin.nativeClock.running && plugin.runRequest.load() == 0) << "Stop is dropped while the host plays";
    host.playHead.playing = false;
    host.render(512);
    EXPECT_FALSE(plugin.nativeClock.running) << "the host's stop stops the run";

    // Turning the internal sequencer off ends the notes it generated.
    host.playHead.playing = true;
    host.render(24000);
    ASSERT_FALSE(host.noteOnsOut().empty());
    host.output.clear();
    host.fire("Toggle Internal Sequencer");
    host.render(512);
    EXPECT_TRUE(std::any_of(host.output.begin(), host.output.end(), [](const auto& e)
                            { return e.message.isNoteOff(); }));
}

TEST(PluginEvents, PlayingAndBrowsingInEveryModeLeavesThePatternsAsTheyAre)
{
    // Refreshing the displays never writes into a pattern: the factory banks,
    // played and browsed in every mode, save exactly as the factory files read.
    PluginTestHost host;
    auto& seq = *host.plugin->getQuindrelSeq();
    QuindrelSeq factory(nullptr, nullptr);
    PluginTestHost::loadFactoryBanks(factory);
    const auto factoryBanks = PluginTestHost::banksOf(factory);
    ASSERT_EQ(PluginTestHost::banksOf(seq), factoryBanks);

    // Native play through the basic patterns, with fill-ins.
    host.playHead.playing = true;
    host.plugin->getParameterManager().setNormalised(autoFillIn, 1.0f);
    for (int step = 1; step <= 12; ++step)
    {
        host.fire("Press Step " + juce::String(step).paddedLeft('0', 2));
        host.render(12000);
    }
    // Write mode: browsing, then following the run; host mode: browsing, then following the keys.
    host.fire("Toggle Pattern Write Mode");
    for (int i = 0; i < 16; ++i)
        host.fire("Next");
    host.fire("Toggle Auto Follow Mode");
    host.render(96000);
    host.fire("Toggle Auto Follow Mode");
    host.fire("Toggle Pattern Write Mode");
    host.fire("Toggle Host Mode");
    for (int i = 0; i < QuindrelSeq::hostPatternCount; ++i)
    {
        host.fire("Next");
        host.plugin->getParameterManager().sendAllChanges(); // as a start-up or a restore tells them
    }
    host.fire("Toggle Auto Follow Mode");
    for (int key = 12; key < 108; ++key)
        host.render(256, { PluginTestHost::noteOn(0, key) });
    EXPECT_EQ(PluginTestHost::banksOf(seq), factoryBanks);
}
