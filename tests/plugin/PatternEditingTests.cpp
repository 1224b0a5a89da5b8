// The edit panel and the randomizer as a user drives them: events by name,
// as the panel's buttons fire them, on the edited host pattern.

#include "PluginTestHost.h"

#include "parameters/ParameterIds.h"
#include "sequencer/QuindrelSeq.h"

#include <gtest/gtest.h>

#include <set>

using namespace ParameterIds;

namespace
{
constexpr int BD = 0, SD = 1, LC = 2, HT = 7, CB = 12, CH = 16, AC = 17;

// Host mode edits host pattern 0, emptied and of the given length.
struct Editing
{
    PluginTestHost host;
    Quindrel& plugin = *host.plugin;
    QuindrelSeq& seq = *plugin.getQuindrelSeq();
    ParameterManager& params = plugin.getParameterManager();

    explicit Editing(int length)
    {
        seq.getHostPatternAt(0) = seq.getHostPatternAt(1) = Pattern();
        plugin.setHostMode(true);
        setLength(length);
    }

    void fire(const juce::String& name) { host.fire(name); }
    void press(int step) { fire("Press Step " + juce::String(step).paddedLeft('0', 2)); }
    void setLength(int length) { fire("Toggle Length Mode"), press(length), fire("Toggle Length Mode"); }
    void select(std::initializer_list<int> tracks)
    {
        plugin.handleEvent(68 + *tracks.begin()); // "Select ..."
        for (auto it = tracks.begin() + 1; it != tracks.end(); ++it)
            plugin.handleEvent(86 + *it); // "Toggle ... Selection"
    }
    void setTrack(int t, const char* text) { seq.getEditedPattern()->setTrackString(t, text); }
    // All 16 steps, whatever the length.
    juce::String track(int t)
    {
        juce::String text;
        for (int s = 0; s < 16; ++s)
            text << juce::String::charToString(StepNotation::toCharacter(seq.getStep(t, s)));
        return text;
    }
    bool lamp(int id) { return params.getBool(id); }
    std::vector<double> stepLights() { return host.stepLights(); }
};
} // namespace

TEST(PluginPatternEditing, StepPressesMixedStepsAndStepsBeyondTheLength)
{
    Editing e(4);
    const std::pair<int, const char*> cycles[] = { { BD, "o..." }, { BD, "O..." }, { BD, "...." }, { AC, "O..." }, { AC, "...." } };
    for (const auto& [track, expected] : cycles)
    {
        e.select({ track });
        e.press(1);
        EXPECT_EQ(e.track(track).substring(0, 4), expected) << "track " << track;
    }

    // A mixed step first becomes plain on everywhere.
    e.setTrack(BD, ".O");
    e.setTrack(CH, ".o");
    e.select({ BD, SD, CH });
    for (const char* expected : { ".o..", ".O..", "...." })
    {
        e.press(2);
        for (const int t : { BD, SD, CH })
            EXPECT_EQ(e.track(t).substring(0, 4), expected) << "track " << t;
    }

    // A press beyond the length changes nothing; a longer pattern brings the step back.
    e.select({ SD });
    e.setTrack(SD, "......O.");
    e.press(7);
    EXPECT_EQ(e.track(SD), "......O.........");
    e.setLength(8);
    EXPECT_EQ(e.stepLights()[6], 1.0);
}

TEST(PluginPatternEditing, CopyPasteClearAndTheClipboardLamps)
{
    Editing e(4);
    auto lamps = [&e]
    { return std::make_pair(e.lamp(clipboardTracksState), e.lamp(clipboardPatternState)); };

    e.setTrack(BD, "oO.o");
    e.select({ BD });
    e.fire("Copy Tracks");
    EXPECT_EQ(lamps(), std::make_pair(true, false));
    e.select({ SD, LC, CH });
    e.fire("Paste");
    for (const int t : { SD, LC, CH })
        EXPECT_EQ(e.track(t), "oO.o............") << "one track onto each selected, track " << t;

    // Several tracks go each onto itself, whatever is selected.
    e.setTrack(SD, ".o..");
    e.setTrack(HT, "..O.");
    e.select({ BD, SD, HT });
    e.fire("Copy Tracks");
    e.fire("Clear All Instruments");
    e.select({ CB });
    e.fire("Paste");
    EXPECT_EQ(e.track(BD) + e.track(SD) + e.track(HT) + e.track(CB), juce::String("oO.o............") + ".o.............." + "..O............." + "................");

    // Clear with a full clipboard empties only the clipboard.
    e.select({ BD });
    e.fire("Clear");
    EXPECT_EQ(lamps(), std::make_pair(false, false));
    EXPECT_EQ(e.track(BD), "oO.o............");
    e.fire("Clear");
    EXPECT_EQ(e.track(BD), "................");

    // A pasted pattern keeps the tempo of its target.
    e.seq.getHostPatternAt(0).setTempo(97.5);
    e.seq.getHostPatternAt(0).setName("Groove");
    e.fire("Copy Pattern");
    EXPECT_EQ(lamps(), std::make_pair(false, true));
    e.fire("Next");
    e.seq.getHostPatternAt(1).setTempo(140.0);
    e.fire("Paste");
    const auto& pasted = e.seq.getHostPatternAt(1);
    EXPECT_EQ(pasted.getTempo(), 140.0);
    EXPECT_EQ(pasted.getName(), "Groove");
    EXPECT_EQ(pasted.getTrackString(HT), "..O.");
    e.fire("Undo");
    EXPECT_EQ(lamps(), std::make_pair(false, false)) << "Undo empties a full clipboard";
}

TEST(PluginPatternEditing, ShiftRotatesInsideTheLengthOnly)
{
    Editing e(12);
    e.setTrack(BD, "o..........Ooo.O");
    e.setTrack(SD, ".o..........O...");
    e.select({ BD });
    e.fire("Shift Left");
    EXPECT_EQ(e.track(BD), "..........Oooo.O");
    e.fire("Shift Right");
    e.fire("Shift Right");
    EXPECT_EQ(e.track(BD), "Oo..........oo.O");
    e.fire("Shift Left All Tracks");
    EXPECT_EQ(e.track(BD) + e.track(SD), juce::String("o..........Ooo.O") + "o...........O...");

    // An absent second part has nothing to shift.
    e.fire("Toggle Host Mode");
    e.seq.getNativePatternAt(0) = NativePattern();
    e.fire("Toggle Pattern Write Mode");
    e.fire("Select Part 2");
    ASSERT_EQ(e.seq.getEditedLength(), 0);
    e.setTrack(BD, "o");
    e.fire("Shift Right All Tracks");
    EXPECT_EQ(e.track(BD), "o...............");
}

TEST(PluginPatternEditing, TurningTheSequencerOnCatchesUpWithWhatPlays)
{
    Editing e(4);
    e.fire("Toggle Internal Sequencer");
    e.host.render(512, { PluginTestHost::noteOn(0, 12 + 5) });
    e.fire("Toggle Internal Sequencer");
    EXPECT_EQ(e.seq.getEditedHostPattern(), 5);
    EXPECT_EQ(e.params.getInt(patternNumber), 17);
}

// The reference results of seed 4357 were computed outside this code base,
// from the published definition of the Mersenne Twister: the first result's
// seed is 405878, and its bass drum has the ranks 13 9 10 6 2 3 12 5 1 8 14
// 4 7 11 0 15, so the default threshold of 0.2 lets steps 4, 5, 8 and 14
// (from 0) play.
TEST(PluginRandomizer, ResultsComeFromSeedsAndComeBackWithPrev)
{
    Editing e(16);
    e.select({ BD });
    e.fire("Toggle Randomizer");
    e.fire("Prev");
    EXPECT_TRUE(e.lamp(randomizerActiveButNotFilled)) << "no seed yet: Prev does nothing";
    EXPECT_EQ(e.track(BD), "................");

    e.seq.randomGenerator.seed(4357);
    e.fire("Next");
    EXPECT_EQ(e.seq.seedCurrent, 405878u);
    EXPECT_EQ(e.track(BD), "oOooOoooOOOOOooo");
    EXPECT_TRUE(e.lamp(randomizerActiveAndFilled) && e.lamp(randState + BD) && e.lamp(randSelection + BD));
    const std::vector<double> masked{ 0, 0, 0, 0, 1, 0.5, 0, 0, 1, 0, 0, 0, 0, 0, 0.5, 0 };
    EXPECT_EQ(e.stepLights(), masked);

    // The mask is heard; at threshold 0 nothing plays.
    constexpr int stepSamples = 6000; // 120 bpm, four steps a beat, 48 kHz
    const auto audio = e.host.render(16 * stepSamples, { PluginTestHost::noteOn(0, 12) });
    std::set<int> steps;
    for (const auto& note : e.host.noteOnsOut())
        steps.insert(note.sample / stepSamples);
    EXPECT_EQ(steps, (std::set<int>{ 4, 5, 8, 14 }));
    EXPECT_EQ(PluginTestHost::firstSoundAt(audio, 0), 4 * stepSamples);
    e.params.setNormalised(randThreshold + BD, 0.0f);
    e.host.output.clear();
    e.host.render(16 * stepSamples);
    EXPECT_TRUE(e.host.noteOnsOut().empty());
    e.params.setNormalised(randThreshold + BD, 0.2f);

    e.fire("Next");
    EXPECT_NE(e.track(BD), "oOooOoooOOOOOooo");
    e.fire("Prev");
    EXPECT_EQ(e.track(BD), "oOooOoooOOOOOooo");
    EXPECT_EQ(e.stepLights(), masked);
    e.fire("Accept");
    EXPECT_EQ(e.track(BD), "....Oo..O.....o.");
    EXPECT_TRUE(e.lamp(randomizerActiveButNotFilled));
}

TEST(PluginRandomizer, WhatAResultBlocksWhatEndsItAndAcceptAndUndoWithTheirThresholds)
{
    Editing e(16);
    const char* entry = "..o...o...o...o.";
    e.setTrack(CB, entry);
    e.select({ BD, SD });
    e.fire("Toggle Randomizer");
    e.fire("Next");
    const auto result = e.track(BD) + e.track(SD);
    for (const char* blocked : { "Copy Tracks", "Copy Pattern", "Clear", "Shift Left", "Shift Right All Tracks", "Toggle Flam Mode" })
        e.fire(blocked);
    EXPECT_FALSE(e.lamp(clipboardTracksState) || e.lamp(clipboardPatternState) || e.lamp(flamModeState));
    EXPECT_EQ(e.track(BD) + e.track(SD), result);

    // A track of the result only becomes the shown one, by parameter or by event.
    e.params.setInt(instrumentSelection, SD);
    EXPECT_TRUE(e.lamp(randSelection + SD) && e.lamp(selection + BD));
    e.fire("Select Bass Drum");
    EXPECT_TRUE(e.lamp(randSelection + BD) && e.lamp(selection + SD));

    // Another track is selected as usual; "Next" keeps the thinned steps of the tracks left out.
    e.fire("Select Cow Bell");
    EXPECT_FALSE(e.lamp(selection + BD));
    e.fire("Next");
    EXPECT_EQ(e.track(BD).removeCharacters(".").length(), 4);
    EXPECT_TRUE(e.lamp(randState + CB) && e.lamp(randSelection + CB) && !e.lamp(randState + BD));
    e.fire("Tap/IntroSet/FillInTrigger/Accept");
    EXPECT_EQ(e.track(CB).removeCharacters(".").length(), 4) << "the tap button accepts a result";

    // Length mode cancels a result and ends the mode; so does the mode's own switch.
    for (const char* ending : { "Toggle Length Mode", "Toggle Randomizer" })
    {
        if (!e.plugin.randomizerOn)
            e.fire("Toggle Length Mode"), e.fire("Toggle Randomizer");
        e.fire("Next");
        e.fire(ending);
        EXPECT_EQ(e.track(CB), entry) << ending;
        EXPECT_FALSE(e.lamp(randomizerState)) << ending;
    }

    // Accept and Undo, with the thresholds.
    e.setTrack(BD, "o...o...o...o...");
    e.setTrack(SD, "....O.......O...");
    e.setTrack(CH, "oooooooooooooooo");
    auto tracks = [&e]
    { return e.track(BD) + e.track(SD) + e.track(CH); };
    const auto before = tracks();

    e.select({ BD, SD });
    e.fire("Toggle Randomizer");
    e.fire("Next");
    ASSERT_NE(tracks(), before);
    e.fire("Undo");
    EXPECT_EQ(tracks(), before);

    e.params.setNormalised(randThreshold + BD, 1.0f);
    e.params.setNormalised(randThreshold + SD, 0.0f);
    e.fire("Next");
    e.fire("Accept");
    EXPECT_FALSE(e.track(BD).containsChar('.')) << "threshold 1 keeps all 16 steps";
    EXPECT_EQ(e.track(SD), "................") << "threshold 0 keeps none";

    // Undo after a later result goes back to before the mode, not to what was accepted.
    e.fire("Next");
    e.fire("Undo");
    EXPECT_EQ(tracks(), before);
}
