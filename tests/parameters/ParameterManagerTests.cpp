// The parameter manager and the tables it loads: the plug-in's parameter
// table, the state parameters and the older short names. (The loader's odd
// rows and the event map's duplicates come from no file a user can give.)

#include "parameters/InstrumentNames.h"
#include "parameters/OldParameterNames.h"
#include "parameters/ParameterIds.h"
#include "parameters/ParameterManager.h"
#include "parameters/ParameterTypes.h"
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
    EXPECT_FALSE(m.addParameter(new FloatParameter(7, "Other", 0.0f, 1.0f, 0.0f)));
    EXPECT_FALSE(m.addParameter(new FloatParameter(8, "Seven", 0.0f, 1.0f, 0.0f)));
    EXPECT_TRUE(m.addParameter(new IntParameter(-108, "Negative", 0, 5, 3)));
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

// The host sees exactly ids 0 to 110; the output numbers are the only integers.
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
    EXPECT_EQ(old.getParameterName("Bass Drum Level"), "") << "full names are not short names";
    EXPECT_EQ(old.getParameterName("AC Mute"), "") << "the accent has no mute";
}
