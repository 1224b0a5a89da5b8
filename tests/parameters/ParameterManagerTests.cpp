#include "parameters/ParameterManager.h"
#include "parameters/ParameterTypes.h"

#include <gtest/gtest.h>

namespace
{
struct Counter : Parameter::Listener
{
    void parameterChanged(Parameter& p) override { ids.add(p.getId()); }
    juce::Array<int> ids;
};

juce::String table(const juce::String& rows)
{
    return "<PluginParameters application=\"Test\">" + rows + "</PluginParameters>";
}
} // namespace

TEST(ParametersManager, AddsUniqueIdsAndNamesOnly)
{
    ParameterManager m;
    auto* first = new FloatParameter(7, "Seven", 0.0f, 1.0f, 0.25f);
    EXPECT_TRUE(m.addParameter(first));
    EXPECT_FALSE(m.addParameter(first)) << "the same object again";
    EXPECT_FALSE(m.addParameter(new FloatParameter(7, "Other", 0.0f, 1.0f, 0.0f)));
    EXPECT_FALSE(m.addParameter(new FloatParameter(8, "Seven", 0.0f, 1.0f, 0.0f)));
    EXPECT_TRUE(m.addParameter(new IntParameter(-108, "Negative", 0, 5, 3)));
    EXPECT_TRUE(m.addParameter(new IntParameter(-101, "Negative too", 0, 5, 4)));
    EXPECT_FALSE(m.addParameter(nullptr));

    EXPECT_EQ(m.getNumParameters(), 3);
    EXPECT_EQ(m.getParameter(7), first);
    EXPECT_EQ(m.getParameter("Seven"), first);
    EXPECT_EQ(m.getParameterByIndex(0), first);
    EXPECT_EQ(m.getInt(-108), 3);
    EXPECT_EQ(m.getInt(-101), 4);
    EXPECT_EQ(m.getName(-101), "Negative too");

    Counter counter;
    m.addListenerToAll(&counter);
    m.setValue(2, 1.0f);
    m.setText(2, "1");
    EXPECT_EQ(m.getValue(2), 0.0);
    EXPECT_EQ(m.getText(2), "");
    EXPECT_EQ(m.getName(2), "");
    EXPECT_TRUE(counter.ids.isEmpty()) << "an unknown id is ignored";
    m.setNormalised(7, 0.75f);
    EXPECT_EQ(counter.ids, juce::Array<int>{ 7 }) << "setters by id always notify";

    m.clear();
    EXPECT_EQ(m.getNumParameters(), 0);
    EXPECT_EQ(m.getParameter(7), nullptr);
    EXPECT_EQ(m.getParameter("Seven"), nullptr);
}

TEST(ParametersManager, LoadsRowsByTheirAttributes)
{
    ParameterManager m;
    const int added = m.loadFromXml(table(R"(
        <param index="0" name="Plain"/>
        <param index="1" name="Bounded" type="INT" min="3" max="9"/>
        <param index="2" name="Lamp" type="state" value="1"/>
        <param index="3" name="Flag" type="Bool" value="on"/>
        <param index="4" name="Choice" type="enum" enum="a;b;c" value="c"/>
        <param index="5" name="Key" type="note" value="A4"/>
        <param index="6" name="Text" type="String" value="hello"/>
        <param index="7" name="Host" value="0.3" auto="true"/>
        <param index="8" name="Wrong case" type="State"/>
        <param index="9" name="Unknown" type="double"/>
        <param name="No index"/>
        <param index="10"/>
        <other index="11" name="Other tag"/>
        <param index="0" name="Duplicate id" value="0.9"/>
        <param index="12" name="Plain" value="0.9"/>)"));

    EXPECT_EQ(added, 8);
    EXPECT_EQ(m.getValue(0), 0.0) << "no value reads as 0";
    EXPECT_EQ(m.getText(0), "0") << "the first of two rows with id 0 stays";
    EXPECT_EQ(m.getParameter(12), nullptr) << "a later row with a taken name is lost";
    EXPECT_EQ(m.getInt(1), 3) << "int without value is 0 cut to its min";
    EXPECT_EQ(m.getText(2), "on");
    EXPECT_EQ(m.getText(3), "true");
    EXPECT_EQ(m.getText(4), "c");
    EXPECT_EQ(m.getInt(5), 57);
    EXPECT_EQ(m.getText(6), "hello");
    EXPECT_TRUE(m.getParameter(7)->isAutomatable());
    EXPECT_FALSE(m.getParameter(0)->isAutomatable());
    EXPECT_EQ(dynamic_cast<FloatParameter*>(m.getParameter(7))->getMaximum(), 1.0f);
    for (int id : { 8, 9, 10, 11 })
        EXPECT_EQ(m.getParameter(id), nullptr) << id;

    EXPECT_EQ(m.loadFromXml("<Parameters><param index=\"20\" name=\"x\"/></Parameters>"), 0);
    EXPECT_EQ(m.loadFromXml("not xml"), 0);
}

TEST(ParametersManager, ListenersByIdAndToAllAndSendAllChanges)
{
    ParameterManager m;
    for (int id = 0; id < 3; ++id)
        m.addParameter(new FloatParameter(id, "P" + juce::String(id), 0.0f, 1.0f, 0.0f));

    Counter all, one, async;
    m.addListenerToAll(&all);
    m.addListener(1, &one);
    m.addAsyncListenerToAll(&async);

    m.sendAllChanges(); // nothing changed, everybody told anyway
    EXPECT_EQ(all.ids, (juce::Array<int>{ 0, 1, 2 }));
    EXPECT_EQ(one.ids, juce::Array<int>{ 1 });
    juce::MessageManager::getInstance()->runDispatchLoopUntil(50);
    EXPECT_EQ(async.ids.size(), 3);

    m.removeListener(1, &one);
    m.removeListenerFromAll(&all);
    m.removeAsyncListenerFromAll(&async);
    m.setValue(1, 1.0f);
    juce::MessageManager::getInstance()->runDispatchLoopUntil(50);
    EXPECT_EQ(all.ids.size(), 3);
    EXPECT_EQ(one.ids.size(), 1);
    EXPECT_EQ(async.ids.size(), 3);
}
