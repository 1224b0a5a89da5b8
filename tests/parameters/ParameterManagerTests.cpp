// The parameter manager and the tables it loads: the plug-in's parameter
// table, the state parameters, the older short names and the event map.

#include "parameters/EventMap.h"
#include "parameters/InstrumentNames.h"
#include "parameters/OldParameterNames.h"
#include "parameters/ParameterIds.h"
#include "parameters/ParameterManager.h"
#include "parameters/ParameterTypes.h"
#include "parameters/StateParameters.h"
#include "plugin/Resources.h"

#include <gtest/gtest.h>

namespace
{
struct Counter : Parameter::Listener
{
    void parameterChanged(Parameter& p) override { ids.add(p.getId()); }
    juce::Array<int> ids;
};
} // namespace

TEST(ParametersManager, AddsUniqueIdsAndNamesOnlyIgnoresUnknownIdsAndTellsItsListeners)
{
    ParameterManager m;
    auto* first = new FloatParameter(7, "Seven", 0.0f, 1.0f, 0.25f);
    EXPECT_TRUE(m.addParameter(first));
    EXPECT_FALSE(m.addParameter(first)) << "the same object again";
    EXPECT_FALSE(m.addParameter(new FloatParameter(7, "Other", 0.0f, 1.0f, 0.0f)));
    EXPECT_FALSE(m.addParameter(new FloatParameter(8, "Seven", 0.0f, 1.0f, 0.0f)));
    EXPECT_TRUE(m.addParameter(new IntParameter(-108, "Negative", 0, 5, 3)));
    EXPECT_FALSE(m.addParameter(nullptr));
    EXPECT_EQ(m.getNumParameters(), 2);
    EXPECT_TRUE(m.getParameter(7) == first && m.getParameter("Seven") == first && m.getParameterByIndex(0) == first);
    EXPECT_TRUE(m.getInt(-108) == 3 && m.getName(-108) == "Negative");

    Counter all, one, async;
    m.addListenerToAll(&all);
    m.addListener(7, &one);
    m.addAsyncListenerToAll(&async);
    m.setValue(2, 1.0f);
    m.setText(2, "1");
    EXPECT_TRUE(m.getValue(2) == 0.0 && m.getText(2) == "" && m.getName(2) == "");
    EXPECT_TRUE(all.ids.isEmpty()) << "an unknown id is ignored";
    m.setNormalised(7, 0.75f); // setters by id always notify
    m.sendAllChanges();        // nothing changed, everybody told anyway
    juce::MessageManager::getInstance()->runDispatchLoopUntil(50);
    EXPECT_EQ(all.ids, (juce::Array<int>{ 7, 7, -108 }));
    EXPECT_EQ(one.ids, (juce::Array<int>{ 7, 7 }));
    EXPECT_EQ(async.ids, (juce::Array<int>{ 7, -108 }));

    m.removeListener(7, &one);
    m.removeListenerFromAll(&all);
    m.removeAsyncListenerFromAll(&async);
    m.setValue(7, 1.0f);
    juce::MessageManager::getInstance()->runDispatchLoopUntil(50);
    EXPECT_TRUE(all.ids.size() == 3 && one.ids.size() == 2 && async.ids.size() == 2);

    m.clear();
    EXPECT_TRUE(m.getNumParameters() == 0 && m.getParameter(7) == nullptr && m.getParameter("Seven") == nullptr);
}

TEST(ParametersManager, LoadsRowsByTheirAttributes)
{
    ParameterManager m;
    const int added = m.loadFromXml(R"(<PluginParameters application="Test">
        <param index="0" name="Plain"/>
        <param index="1" name="Bounded" type="INT" min="3" max="9"/>
        <param index="2" name="Lamp" type="state" value="1"/>
        <param index="3" name="Flag" type="Bool" value="on"/>
        <param index="6" name="Text" type="String" value="hello"/>
        <param index="7" name="Host" value="0.3" auto="true"/>
        <param index="8" name="Wrong case" type="State"/>
        <param index="9" name="Unknown" type="double"/>
        <param name="No index"/>
        <param index="10"/>
        <other index="11" name="Other tag"/>
        <param index="0" name="Duplicate id" value="0.9"/>
        <param index="12" name="Plain" value="0.9"/></PluginParameters>)");

    EXPECT_EQ(added, 6);
    EXPECT_EQ(m.getText(0), "0") << "no value reads as 0; the first of two rows with id 0 stays";
    EXPECT_EQ(m.getInt(1), 3) << "int without value is 0 cut to its min";
    EXPECT_TRUE(m.getText(2) == "on" && m.getText(3) == "true" && m.getText(6) == "hello");
    EXPECT_TRUE(m.getParameter(7)->isAutomatable() && !m.getParameter(0)->isAutomatable());
    EXPECT_EQ(dynamic_cast<FloatParameter*>(m.getParameter(7))->getMaximum(), 1.0f);
    for (int id : { 8, 9, 10, 11, 12 })
        EXPECT_EQ(m.getParameter(id), nullptr) << id;

    EXPECT_EQ(m.loadFromXml("<Parameters><param index=\"20\" name=\"x\"/></Parameters>"), 0);
    EXPECT_EQ(m.loadFromXml("not xml"), 0);
}

// The host sees exactly ids 0 to 110; the output numbers are the only integers;
// the state parameters stay out of the host's sight.
TEST(ParametersTable, EmbeddedTableLoadsWholeInIdOrder)
{
    ParameterManager m;
    ASSERT_EQ(m.loadFromXml(Resources::loadResourceText("parameters.xml")), 213);
    for (int id = 0; id < 213; ++id)
    {
        auto* p = m.getParameterByIndex(id);
        ASSERT_EQ(p->getId(), id) << "rows in id order";
        EXPECT_EQ(p->isAutomatable(), id <= ParameterIds::lastHostParameter) << id;
        auto* output = dynamic_cast<IntParameter*>(p);
        if (id >= ParameterIds::outputNumber && id < ParameterIds::outputNumber + instrumentCount)
            EXPECT_TRUE(output != nullptr && output->getMinimum() == 1 && output->getMaximum() == 12 && output->getInt() == 1) << id;
        else
            EXPECT_NE(dynamic_cast<FloatParameter*>(p), nullptr) << id;
    }

    ParameterManager state;
    addStateParameters(state);
    addPresetParameters(state);
    for (int i = 0; i < state.getNumParameters(); ++i)
        EXPECT_FALSE(state.getParameterByIndex(i)->isAutomatable()) << state.getParameterByIndex(i)->getName();
    EXPECT_NE(dynamic_cast<StringParameter*>(state.getParameter(ParameterIds::patternName)), nullptr);
}

TEST(ParametersTable, OldShortNamesLeadToHostParameters)
{
    ParameterManager m;
    m.loadFromXml(Resources::loadResourceText("parameters.xml"));
    const OldParameterNames old;
    EXPECT_EQ(old.getShortNames().size(), 111);
    juce::Array<int> reached;
    for (const auto& shortName : old.getShortNames())
    {
        const auto* p = m.getParameter(old.getParameterName(shortName));
        EXPECT_TRUE(shortName == "Main Volume" ? p == nullptr : p != nullptr && p->getId() <= ParameterIds::lastHostParameter)
            << shortName << " -> " << old.getParameterName(shortName) << ": an old volume is dropped on purpose, the rest reach the host's";
        if (p != nullptr)
            reached.addIfNotAlreadyThere(p->getId());
    }
    EXPECT_EQ(reached.size(), 110) << "every host parameter but the volume";
    EXPECT_EQ(old.getParameterName("LC Tunning"), "Low Conga Tunning");
    EXPECT_EQ(old.getParameterName("Bass Drum Level"), "") << "full names are not short names";
    EXPECT_EQ(old.getParameterName("AC Mute"), "") << "the accent has no mute";
    EXPECT_TRUE(indexOfShortCode("CP") == 11 && indexOfShortCode("AC") == accentTrack && indexOfShortCode("HH") == -1);
}

TEST(ParametersEventMap, UidsAndNamesAreUniqueAndTheEmbeddedTableIsWhole)
{
    EventMap map;
    EXPECT_TRUE(map.add(5, "Start"));
    EXPECT_FALSE(map.add(5, "Stop"));
    EXPECT_FALSE(map.add(6, "Start"));
    EXPECT_TRUE(map.size() == 1 && map.getName(6) == "" && map.getUid("Stop") == -1);

    map.clear();
    map.loadFromText("<Events><event name=\"A\" uid=\"3\"/></Events>");
    EXPECT_EQ(map.size(), 0) << "another root";
    map.loadFromText("<EventsMap><event name=\"A\"/><event name=\"B\"/><other name=\"C\" uid=\"9\"/></EventsMap>");
    EXPECT_TRUE(map.size() == 1 && map.getUid("A") == 0) << "B has the same missing uid as A";

    // The whole embedded table: the events are fired by name and uid all over the plug-in.
    map.clear();
    map.loadFromText(Resources::loadResourceText("events.xml"));
    EXPECT_EQ(map.size(), 111);
}
