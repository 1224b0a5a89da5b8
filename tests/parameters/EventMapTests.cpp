#include "parameters/EventMap.h"
#include "parameters/InstrumentNames.h"
#include "plugin/Resources.h"

#include <gtest/gtest.h>

TEST(ParametersEventMap, TakenUidsAndNamesAnotherRootAndAMissingUid)
{
    EventMap map;
    EXPECT_TRUE(map.add(5, "Start"));
    EXPECT_FALSE(map.add(5, "Stop"));
    EXPECT_FALSE(map.add(6, "Start"));
    EXPECT_EQ(map.size(), 1);
    EXPECT_EQ(map.getName(6), "");
    EXPECT_EQ(map.getUid("Stop"), -1);

    map.clear();
    map.loadFromText("<Events><event name=\"A\" uid=\"3\"/></Events>");
    EXPECT_EQ(map.size(), 0);
    map.loadFromText("<EventsMap><event name=\"A\"/><event name=\"B\"/><other name=\"C\" uid=\"9\"/></EventsMap>");
    EXPECT_EQ(map.size(), 1) << "B has the same missing uid as A";
    EXPECT_EQ(map.getUid("A"), 0);
}

TEST(ParametersEventMap, EmbeddedTableHasTheInstrumentEventsInOrder)
{
    EventMap map;
    map.loadFromText(Resources::loadResourceText("events.xml"));
    ASSERT_EQ(map.size(), 111);

    for (int i = 0; i < instrumentCount; ++i)
    {
        const juce::String name(instrumentNames[i]);
        EXPECT_EQ(map.getName(i), "Toggle " + name + " Mute");
        EXPECT_EQ(map.getName(17 + i), "Inverse " + name + " Mute");
        EXPECT_EQ(map.getName(34 + i), "Toggle " + name + " Solo");
        EXPECT_EQ(map.getName(51 + i), "Inverse " + name + " Solo");
    }
    for (int t = 0; t < trackCount; ++t)
    {
        const juce::String name(instrumentNames[t]);
        EXPECT_EQ(map.getName(68 + t), "Select " + name);
        EXPECT_EQ(map.getName(86 + t), "Toggle " + name + " Selection");
    }

    EXPECT_EQ(map.getName(104), "Select Variation A");
    EXPECT_EQ(map.getName(107), "Select Part 2");
    EXPECT_EQ(map.getName(108), "Tap/IntroSet/FillInTrigger/Accept");
    EXPECT_EQ(map.getName(109), "IntroSet");
    EXPECT_EQ(map.getName(110), "FillInTrigger");
}
