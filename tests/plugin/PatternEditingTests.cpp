// The edit panel as a user drives it: events by name, as the panel's buttons
// fire them, on the edited host pattern.

#include "EditingRig.h"

#include "parameters/ParameterIds.h"

#include <gtest/gtest.h>

using namespace EditingRig;

TEST(PluginPatternEditing, StepPressesCycleAndAMixedStepGoesPlainOnFirst)
{
    Editing e;
    e.select({ BD });
    for (const char* expected : { "o...", "O...", "...." })
    {
        e.press(1);
        EXPECT_EQ(e.track(BD), expected);
    }

    e.select({ AC });
    e.press(1);
    EXPECT_EQ(e.track(AC), "O...") << "the accent track knows only off and accented";
    e.press(1);
    EXPECT_EQ(e.track(AC), "....");

    e.edited().setTrackString(BD, ".O");
    e.edited().setTrackString(CH, ".o");
    e.select({ BD, SD, CH });
    for (const char* expected : { ".o..", ".O..", "...." })
    {
        e.press(2);
        for (const int t : { BD, SD, CH })
            EXPECT_EQ(e.track(t), expected) << "track " << t;
    }
    EXPECT_EQ(e.params.getValue(ParameterIds::stepState + 1), 0.0);

    // A step beyond the length keeps its content and comes back with a longer pattern.
    e.select({ SD });
    e.set16(SD, "......O.........");
    e.press(7);
    EXPECT_EQ(e.all16(SD), "......O.........");
    e.fire("Toggle Length Mode");
    e.press(8);
    e.fire("Toggle Length Mode");
    EXPECT_EQ(e.track(SD), "......O.");
    EXPECT_EQ(e.params.getValue(ParameterIds::stepState + 6), 1.0);
}

TEST(PluginPatternEditing, CopyPasteClearAndUndoWithTheClipboardLamps)
{
    Editing e;
    auto lamps = [&e]
    { return std::make_pair(e.params.getBool(ParameterIds::clipboardTracksState), e.params.getBool(ParameterIds::clipboardPatternState)); };

    // One copied track goes onto each selected track.
    e.edited().setTrackString(BD, "oO.o");
    e.select({ BD });
    e.fire("Copy Tracks");
    EXPECT_EQ(lamps(), std::make_pair(true, false));
    e.select({ SD, LC, CH });
    e.fire("Paste");
    for (const int t : { SD, LC, CH })
        EXPECT_EQ(e.track(t), "oO.o") << "track " << t;

    // Several copied tracks go each onto itself, whatever is selected now.
    e.edited().setTrackString(SD, ".o..");
    e.edited().setTrackString(HT, "..O.");
    e.select({ BD, SD, HT });
    e.fire("Copy Tracks");
    e.fire("Clear All Instruments");
    e.select({ CB });
    e.fire("Paste");
    EXPECT_EQ(e.track(BD), "oO.o");
    EXPECT_EQ(e.track(SD), ".o..");
    EXPECT_EQ(e.track(HT), "..O.");
    EXPECT_EQ(e.track(CB), "....");
    e.fire("Paste");
    EXPECT_EQ(e.track(SD), ".o..") << "a paste can be repeated";

    // Clear with a full clipboard only empties it; then it clears the selection.
    e.select({ BD });
    e.fire("Clear");
    EXPECT_EQ(lamps(), std::make_pair(false, false));
    EXPECT_EQ(e.track(BD), "oO.o");
    e.fire("Paste");
    EXPECT_EQ(e.track(BD), "oO.o") << "nothing to paste";
    e.fire("Clear");
    EXPECT_EQ(e.track(BD), "....");
    EXPECT_EQ(e.track(SD), ".o..");

    // A pasted pattern keeps the tempo of its target.
    auto& first = e.seq.getHostPatternAt(0);
    first.setTempo(97.5);
    first.setName("Groove");
    first.setShuffle(0.25);
    e.fire("Copy Pattern");
    EXPECT_EQ(lamps(), std::make_pair(false, true));
    e.fire("Next");
    ASSERT_EQ(e.seq.getEditedHostPattern(), 1);
    e.seq.getHostPatternAt(1).setTempo(140.0);
    e.fire("Paste");
    const auto& second = e.seq.getHostPatternAt(1);
    EXPECT_EQ(second.getTempo(), 140.0);
    EXPECT_EQ(second.getName(), "Groove");
    EXPECT_EQ(second.getShuffle(), 0.25);
    EXPECT_EQ(second.getLength(), 4);
    EXPECT_EQ(second.getTrackString(HT), "..O.");
    EXPECT_EQ(e.params.getText(ParameterIds::patternName), "Groove");

    e.fire("Undo");
    EXPECT_EQ(lamps(), std::make_pair(false, false)) << "Undo empties a full clipboard";
    e.fire("Copy Pattern");
    e.fire("Toggle Host Mode");
    EXPECT_EQ(lamps(), std::make_pair(false, false)) << "no host pattern is pasted onto a native one";
}

TEST(PluginPatternEditing, ShiftRotatesInsideTheLengthOnly)
{
    Editing e(12);
    e.set16(BD, "o..........Ooo.O");
    e.set16(SD, ".o..........O...");
    e.select({ BD });
    e.fire("Shift Left");
    EXPECT_EQ(e.all16(BD), "..........Oooo.O");
    EXPECT_EQ(e.all16(SD), ".o..........O...");
    e.fire("Shift Right");
    e.fire("Shift Right");
    EXPECT_EQ(e.all16(BD), "Oo..........oo.O");

    e.fire("Shift Left All Tracks");
    EXPECT_EQ(e.all16(BD), "o..........Ooo.O");
    EXPECT_EQ(e.all16(SD), "o...........O...");
    e.fire("Shift Right All Tracks");
    EXPECT_EQ(e.all16(SD), ".o..........O...");

    // An absent second part has nothing to shift.
    e.fire("Toggle Host Mode");
    e.seq.getNativePatternAt(0) = NativePattern();
    e.fire("Toggle Pattern Write Mode");
    e.fire("Select Part 2");
    ASSERT_EQ(e.seq.getEditedLength(), 0);
    e.set16(BD, "o...............");
    e.fire("Shift Right All Tracks");
    EXPECT_EQ(e.all16(BD), "o...............");
}

TEST(PluginPatternEditing, TurningTheSequencerOnCatchesUpWithWhatPlays)
{
    Editing e;
    e.fire("Toggle Internal Sequencer");
    e.host.render(512, { PluginTestHost::noteOn(0, 12 + 5) }); // host pattern 5 starts
    ASSERT_EQ(e.seq.getEditedHostPattern(), 0);
    e.fire("Toggle Internal Sequencer");
    EXPECT_EQ(e.seq.getEditedHostPattern(), 5);
    EXPECT_EQ(e.params.getInt(ParameterIds::patternNumber), 17);
}
