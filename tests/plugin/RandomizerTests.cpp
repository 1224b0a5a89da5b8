// The randomizer as a user drives it from the edit panel. The reference
// results of seed 4357 were computed outside this code base, from the
// published definition of the Mersenne Twister with its 1998 linear seeding.

#include "EditingRig.h"

#include <set>

using namespace EditingRig;
using namespace ParameterIds;

namespace
{
// Seed 4357 gives the seed 405878 for the first result, and this bass drum:
// every step on, with its level as a rank, and the steps of the four lowest
// ranks (4, 5, 8, 14) left by the default threshold of 0.2.
constexpr const char* firstResult = "oOooOoooOOOOOooo";
constexpr const char* firstResultThinned = "....Oo..O.....o.";

void setThreshold(Editing& e, int track, float value)
{
    e.params.setNormalised(randThreshold + track, value);
}
} // namespace

TEST(PluginRandomizer, ResultsComeFromSeedsAndComeBackWithPrev)
{
    Editing e(16);
    e.set16(CH, "o.o.o.o.o.o.o.o.");
    e.select({ BD });
    e.fire("Toggle Randomizer");
    EXPECT_TRUE(e.lamp(randomizerActiveButNotFilled));

    e.fire("Prev");
    EXPECT_TRUE(e.lamp(randomizerActiveButNotFilled)) << "no seed yet: Prev does nothing";
    EXPECT_EQ(e.seq.seedCurrent, 0u);
    EXPECT_EQ(e.all16(BD), "................");

    e.seq.randomGenerator.seed(4357);
    e.fire("Next");
    EXPECT_EQ(e.seq.seedCurrent, 405878u);
    EXPECT_EQ(e.all16(BD), firstResult);
    EXPECT_TRUE(e.lamp(randomizerActiveAndFilled));
    EXPECT_TRUE(e.lamp(randState + BD));
    EXPECT_TRUE(e.lamp(randSelection + BD));
    const std::vector<double> masked{ 0, 0, 0, 0, 1, 0.5, 0, 0, 1, 0, 0, 0, 0, 0, 0.5, 0 };
    EXPECT_EQ(e.stepLights(), masked) << "the lamps show what the mask lets play";

    e.fire("Next");
    EXPECT_NE(e.all16(BD), firstResult);
    e.fire("Prev");
    EXPECT_EQ(e.seq.seedCurrent, 405878u);
    EXPECT_EQ(e.all16(BD), firstResult);
    EXPECT_EQ(e.stepLights(), masked);

    e.fire("Accept");
    EXPECT_EQ(e.all16(BD), firstResultThinned);
    EXPECT_EQ(e.all16(CH), "o.o.o.o.o.o.o.o.");
    EXPECT_TRUE(e.lamp(randomizerActiveButNotFilled));
}

TEST(PluginRandomizer, AcceptAndUndoWithTheirThresholds)
{
    Editing e(16);
    const char* drums = "o...o...o...o...";
    const char* snare = "....O.......O...";
    const char* hats = "oooooooooooooooo";
    e.set16(BD, drums);
    e.set16(SD, snare);
    e.set16(CH, hats);
    e.select({ BD, SD });
    e.fire("Toggle Randomizer");

    e.fire("Next");
    ASSERT_FALSE(e.all16(BD).containsChar('.'));
    e.fire("Undo");
    EXPECT_EQ(e.all16(BD), drums);
    EXPECT_EQ(e.all16(SD), snare);
    EXPECT_EQ(e.all16(CH), hats);
    EXPECT_FALSE(e.lamp(randomizerActiveAndFilled));

    setThreshold(e, BD, 1.0f);
    setThreshold(e, SD, 0.0f);
    e.fire("Next");
    e.fire("Accept");
    EXPECT_FALSE(e.all16(BD).containsChar('.')) << "threshold 1 keeps all 16 steps";
    EXPECT_EQ(e.all16(SD), "................") << "threshold 0 keeps none";

    // Undo after a later result goes back to before the mode, not to what was accepted.
    e.fire("Next");
    e.fire("Undo");
    EXPECT_EQ(e.all16(BD), drums);
    EXPECT_EQ(e.all16(SD), snare);
    EXPECT_EQ(e.all16(CH), hats);
}

TEST(PluginRandomizer, WhatAResultBlocksAndWhatEndsIt)
{
    Editing e(16);
    e.set16(CB, "..o...o...o...o.");
    e.select({ BD, SD });
    e.fire("Toggle Randomizer");
    e.fire("Next");
    const auto bd = e.all16(BD), sd = e.all16(SD);

    for (const char* blocked : { "Copy Tracks", "Copy Pattern", "Clear", "Shift Left", "Shift Right All Tracks", "Toggle Flam Mode" })
        e.fire(blocked);
    EXPECT_FALSE(e.lamp(clipboardTracksState) || e.lamp(clipboardPatternState) || e.lamp(flamModeState));
    EXPECT_EQ(e.all16(BD), bd);
    EXPECT_EQ(e.all16(SD), sd);

    // A track of the result only becomes the shown one, by event or by parameter.
    e.params.setInt(instrumentSelection, SD);
    EXPECT_TRUE(e.lamp(randSelection + SD));
    EXPECT_TRUE(e.lamp(selection + BD) && e.lamp(selection + SD));
    e.fire("Select Bass Drum");
    EXPECT_TRUE(e.lamp(randSelection + BD));
    EXPECT_TRUE(e.lamp(selection + SD));

    // Another track is selected as usual; "Next" then keeps the thinned steps of the tracks left out.
    e.fire("Select Cow Bell");
    EXPECT_TRUE(e.lamp(selection + CB));
    EXPECT_FALSE(e.lamp(selection + BD));
    EXPECT_TRUE(e.lamp(randState + BD)) << "the result keeps its tracks";
    e.fire("Next");
    EXPECT_EQ(e.all16(BD).removeCharacters(".").length(), 4);
    EXPECT_TRUE(e.lamp(randState + CB) && e.lamp(randSelection + CB));

    // The accent-or-tap button accepts a result.
    e.fire("Tap/IntroSet/FillInTrigger/Accept");
    EXPECT_EQ(e.all16(CB).removeCharacters(".").length(), 4);
    EXPECT_FALSE(e.lamp(randomizerActiveAndFilled));

    // Length mode cancels a result and ends the mode, back to the backup
    // taken on entry; so does the mode's own switch.
    const char* entry = "..o...o...o...o.";
    for (const char* ending : { "Toggle Length Mode", "Toggle Randomizer" })
    {
        if (!e.plugin.randomizerOn)
            e.fire("Toggle Randomizer");
        e.fire("Next");
        ASSERT_NE(e.all16(CB), entry);
        e.fire(ending);
        EXPECT_EQ(e.all16(CB), entry) << ending;
        EXPECT_FALSE(e.lamp(randomizerState)) << ending;
        if (e.plugin.lengthMode)
            e.fire("Toggle Length Mode");
    }
}

TEST(PluginRandomizer, TheAccentTrackIsWrittenPlainAndReadBackAccented)
{
    Editing e(16);
    e.select({ AC });
    setThreshold(e, AC, 1.0f);
    e.fire("Toggle Randomizer");
    e.fire("Next");
    e.fire("Accept");

    const auto xml = e.seq.writePattern(0, DrumMachineSeq::hostType);
    ASSERT_NE(xml, nullptr);
    const auto written = xml->getChildByName("AC")->getAllSubText();
    EXPECT_TRUE(written.containsChar('o')) << written;
    e.seq.readPattern(*xml, 1, DrumMachineSeq::hostType);
    EXPECT_EQ(e.seq.getHostPatternAt(1).getTrackString(AC), "OOOOOOOOOOOOOOOO");
}

TEST(PluginRandomizer, TheMaskIsHeardAtPlayTime)
{
    constexpr int stepSamples = 6000; // 120 bpm, four steps a beat, 48 kHz
    for (const float threshold : { 0.0f, 0.2f })
    {
        Editing e(16);
        e.select({ BD });
        setThreshold(e, BD, threshold);
        e.fire("Toggle Randomizer");
        e.seq.randomGenerator.seed(4357);
        e.fire("Next");

        const auto audio = e.host.render(16 * stepSamples, { PluginTestHost::noteOn(0, 12) });
        std::set<int> steps;
        for (const auto& note : e.host.noteOnsOut())
            steps.insert(note.sample / stepSamples);

        if (threshold == 0.0f)
        {
            EXPECT_TRUE(steps.empty());
            EXPECT_EQ(audio.getMagnitude(0, 0, audio.getNumSamples()), 0.0f) << "every step masked";
        }
        else
        {
            EXPECT_EQ(steps, (std::set<int>{ 4, 5, 8, 14 }));
            EXPECT_NEAR(PluginTestHost::firstSoundAt(audio, 0), 4 * stepSamples, 2);
        }
    }
}
