#include "parameters/InstrumentNames.h"
#include "parameters/OldParameterNames.h"
#include "parameters/ParameterIds.h"
#include "parameters/ParameterManager.h"
#include "parameters/ParameterTypes.h"
#include "parameters/StateParameters.h"
#include "plugin/Resources.h"

#include <gtest/gtest.h>

TEST(ParametersTable, EmbeddedTableLoadsWholeInIdOrder)
{
    const auto text = Resources::loadResourceText("parameters.xml");
    EXPECT_EQ(juce::parseXML(text)->getStringAttribute("application"), "Quindrel");
    ParameterManager m;
    ASSERT_EQ(m.loadFromXml(text), 213);

    // The host sees exactly ids 0 to 110; the output numbers are the only integers.
    for (int id = 0; id < 213; ++id)
    {
        auto* p = m.getParameterByIndex(id);
        ASSERT_EQ(p->getId(), id) << "rows in id order";
        EXPECT_EQ(p->isAutomatable(), id <= ParameterIds::lastHostParameter) << id;
        if (id >= ParameterIds::outputNumber && id < ParameterIds::outputNumber + instrumentCount)
        {
            auto* output = dynamic_cast<IntParameter*>(p);
            ASSERT_NE(output, nullptr) << id;
            EXPECT_TRUE(output->getMinimum() == 1 && output->getMaximum() == 12 && output->getInt() == 1) << id;
        }
        else
        {
            EXPECT_NE(dynamic_cast<FloatParameter*>(p), nullptr) << id;
        }
    }
}

TEST(ParametersTable, StateParametersLeaveTheUnassignedIdsAndTheHostAlone)
{
    ParameterManager m;
    addStateParameters(m);
    addPresetParameters(m);
    EXPECT_EQ(m.getNumParameters(), 78 + 2);
    for (int i = 0; i < m.getNumParameters(); ++i)
        EXPECT_FALSE(m.getParameterByIndex(i)->isAutomatable()) << m.getParameterByIndex(i)->getName();
    for (int id = 3062; id <= 3077; ++id)
        EXPECT_EQ(m.getParameter(id), nullptr) << id;
    EXPECT_NE(dynamic_cast<StringParameter*>(m.getParameter(ParameterIds::patternName)), nullptr);
    EXPECT_NE(dynamic_cast<StringParameter*>(m.getParameter(110001)), nullptr);
}

TEST(ParametersTable, OldShortNamesLeadToHostParameters)
{
    ParameterManager m;
    m.loadFromXml(Resources::loadResourceText("parameters.xml"));
    const OldParameterNames old;
    const auto shortNames = old.getShortNames();
    EXPECT_EQ(shortNames.size(), 111);

    juce::Array<int> reached;
    for (const auto& shortName : shortNames)
    {
        const auto name = old.getParameterName(shortName);
        if (shortName == "Main Volume")
        {
            EXPECT_EQ(name, "MainVolume");
            EXPECT_EQ(m.getParameter(name), nullptr) << "an old volume is dropped on purpose";
            continue;
        }
        const auto* p = m.getParameter(name);
        ASSERT_NE(p, nullptr) << shortName << " -> " << name;
        EXPECT_LE(p->getId(), ParameterIds::lastHostParameter) << name;
        reached.addIfNotAlreadyThere(p->getId());
    }
    EXPECT_EQ(reached.size(), 110) << "every host parameter but the volume";

    EXPECT_EQ(old.getParameterName("BD Level"), "Bass Drum Level");
    EXPECT_EQ(old.getParameterName("LC Tunning"), "Low Conga Tunning");
    EXPECT_EQ(old.getParameterName("AC Rand Threshold"), "Accent Rand Threshold");
    EXPECT_EQ(old.getParameterName("HH Filters Freq"), "Hi Hat Filters Freq");
    EXPECT_EQ(old.getParameterName("Bass Drum Level"), "") << "full names are not short names";
    EXPECT_EQ(old.getParameterName("AC Mute"), "") << "the accent has no mute";

    EXPECT_EQ(indexOfShortCode("CP"), 11);
    EXPECT_EQ(indexOfShortCode("AC"), accentTrack);
    EXPECT_EQ(indexOfShortCode("HH"), -1);
    static_assert(indexOfShortCode("BD") == 0);
}
