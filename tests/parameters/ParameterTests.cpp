#include "parameters/ParameterTypes.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace
{
// Records which listener was called, in order, and on which thread.
struct Recorder : Parameter::Listener
{
    Recorder(std::vector<int>& log, int tag)
        : log(log)
        , tag(tag)
    {
    }

    void parameterChanged(Parameter& p) override
    {
        log.push_back(tag);
        lastValue = p.getValue();
        onMessageThread = juce::MessageManager::getInstance()->isThisTheMessageThread();
        if (removeSelf)
            p.removeListener(this);
    }

    std::vector<int>& log;
    int tag;
    double lastValue = -1.0;
    bool onMessageThread = false;
    bool removeSelf = false;
};

void pumpMessages()
{
    juce::MessageManager::getInstance()->runDispatchLoopUntil(50);
}
} // namespace

TEST(ParametersConversions, BoolReadsHalfAsTrueAndKnowsItsTexts)
{
    BoolParameter b(1, "b", false);
    for (auto [x, expected] : { std::pair{ 0.5f, true }, { 0.49f, false }, { 3.0f, true }, { -1.0f, false } })
    {
        b.setNormalised(x, false);
        EXPECT_EQ(b.getBool(), expected) << "normalised " << x;
    }
    // Other text is read as a normalised number.
    for (auto [text, expected] : { std::pair{ "true", true }, { "1", true }, { "on", true }, { "yes", true }, { "0.7", true }, { "false", false }, { "0", false }, { "off", false }, { "no", false }, { "0.2", false } })
    {
        b.setBool(!expected, false);
        b.setText(text, false);
        EXPECT_EQ(b.getBool(), expected) << text;
    }

    const char* texts[][2] = { { "true", "false" }, { "on", "off" }, { "1", "0" }, { "yes", "no" } };
    for (int style = 0; style < 4; ++style)
    {
        BoolParameter s(2, "s", true, style);
        EXPECT_EQ(s.getText(), texts[style][0]) << "style " << style;
        s.setInt(0, false);
        EXPECT_EQ(s.getText(), texts[style][1]) << "style " << style;
    }
}

TEST(ParametersConversions, FloatCutsToItsRange)
{
    FloatParameter tempo(1, "tempo", 30.0f, 300.0f, 0.0f);
    EXPECT_EQ(tempo.getValue(), 30.0) << "start value is cut into the range";
    tempo.setNormalised(0.5f, false);
    EXPECT_EQ(tempo.getValue(), 165.0);
    EXPECT_DOUBLE_EQ(tempo.getNormalised(), 0.5);
    tempo.setNormalised(1.5f, false);
    EXPECT_EQ(tempo.getValue(), 300.0);
    tempo.setText("120", false);
    EXPECT_EQ(tempo.getText(), "120");

    FloatParameter unit(2, "unit", 0.0f, 1.0f, 0.5f);
    EXPECT_TRUE(unit.getBool()) << "the middle counts as the upper half";
    unit.setValue(0.4999f, false);
    EXPECT_FALSE(unit.getBool());
    unit.setValue(0.121f, false);
    EXPECT_EQ(unit.getText(), "0.121") << "shortest text that reads back";

    FloatParameter bipolar(3, "bipolar", -5.0f, 5.0f, -2.7f);
    EXPECT_EQ(bipolar.getInt(), -2) << "cut toward zero";
    bipolar.setValue(std::numeric_limits<float>::quiet_NaN(), false);
    EXPECT_EQ(bipolar.getValue(), -5.0);
}

TEST(ParametersConversions, IntRoundsNormalisedAndTruncatesValues)
{
    IntParameter out(1, "out", 1, 12, 0);
    EXPECT_EQ(out.getInt(), 1);
    EXPECT_FALSE(out.getBool()) << "true only away from the minimum";
    // 1 + floor(11 x + 0.5)
    for (auto [x, expected] : { std::pair{ 0.5f, 7 }, { 0.04f, 1 }, { 0.05f, 2 }, { 2.0f, 12 } })
    {
        out.setNormalised(x, false);
        EXPECT_EQ(out.getInt(), expected) << "normalised " << x;
    }
    out.setText("5.8", false);
    EXPECT_EQ(out.getText(), "5");
    EXPECT_TRUE(out.getBool());
    EXPECT_DOUBLE_EQ(out.getNormalised(), 4.0 / 11.0);

    IntParameter signedRange(2, "signed", -10, 10, 0);
    signedRange.setValue(-3.9f, false);
    EXPECT_EQ(signedRange.getInt(), -3) << "cut toward zero, not floored";
}

TEST(ParametersConversions, EnumAndNoteReadTheirTextsThenNumbers)
{
    EnumParameter e(1, "mode", ";Off;Slow;Fast;", "Slow");
    EXPECT_EQ(e.getItems().size(), 3) << "empty ends are dropped";
    EXPECT_EQ(e.getInt(), 1);
    // Not an item: a normalised number, so "1" is the last item.
    for (auto [text, expected] : { std::pair{ "Fast", "Fast" }, { "0.5", "Slow" }, { "1", "Fast" }, { "fast", "Off" } })
    {
        e.setText(text, false);
        EXPECT_EQ(e.getText(), expected) << text;
    }
    EXPECT_EQ(EnumParameter(2, "inner", "a;;b", "b").getInt(), 2) << "an empty item inside is kept";

    EXPECT_EQ(NoteParameter::getNoteName(60), "C5");
    EXPECT_EQ(NoteParameter::getNoteName(0), "C0");
    EXPECT_EQ(NoteParameter::getNoteName(61), "C#5");
    for (int key = 0; key < 128; ++key)
    {
        int parsed = -1;
        EXPECT_TRUE(NoteParameter::parseNoteName(NoteParameter::getNoteName(key), parsed) && parsed == key) << key;
    }
    int key = 0;
    for (auto* bad : { "", "H3", "C", "C#", "Cx3", "C3.5", "C12345" })
        EXPECT_FALSE(NoteParameter::parseNoteName(bad, key)) << bad;

    NoteParameter n(3, "note", "C11");
    EXPECT_EQ(n.getInt(), 127) << "beyond the top is cut";
    for (auto [text, expected] : { std::pair{ "db3", 37 }, { "Cb0", 0 }, { "0.5", 64 } })
    {
        n.setText(text, false);
        EXPECT_EQ(n.getInt(), expected) << text;
    }
}

TEST(ParametersConversions, StringKeepsItsQuirks)
{
    StringParameter s(1, "s", "");
    // Integer 0 is true, so an empty text is too.
    for (auto [text, expected] : { std::pair{ "", true }, { "0", true }, { "abc", true }, { "5", false } })
    {
        s.setText(text, false);
        EXPECT_EQ(s.getBool(), expected) << "'" << text << "'";
    }
    s.setText("2.5", false);
    EXPECT_EQ(s.getValue(), 2.5);
    EXPECT_EQ(s.getNormalised(), 1.0);
    s.setBool(true, false);
    EXPECT_EQ(s.getText(), "true");
    s.setValue(0.25f, false);
    EXPECT_EQ(s.getText(), "0.25");
}

TEST(ParametersConversions, CopyAndCloneCarryTheValueAcrossClasses)
{
    FloatParameter f(1, "f", 0.0f, 10.0f, 7.9f);
    IntParameter i(2, "i", 0, 10, 0);
    i.copyFrom(f, false);
    EXPECT_EQ(i.getInt(), 7);
    StringParameter s(3, "s", "");
    s.copyFrom(i, false);
    EXPECT_EQ(s.getText(), "7");

    std::vector<int> log;
    Recorder listener(log, 1);
    EnumParameter e(5, "e", "x;y;z", "z");
    e.setAutomatable(true);
    e.addListener(&listener);
    auto copy = e.clone();
    auto* asEnum = dynamic_cast<EnumParameter*>(copy.get());
    ASSERT_NE(asEnum, nullptr);
    EXPECT_TRUE(asEnum->getId() == 5 && asEnum->getName() == "e" && asEnum->isAutomatable());
    EXPECT_EQ(asEnum->getText(), "z");
    asEnum->setInt(0, true);
    EXPECT_TRUE(log.empty()) << "listeners are not copied";
    EXPECT_EQ(NoteParameter(6, "n", "A#3").clone()->getText(), "A#3");
    EXPECT_EQ(BoolParameter(7, "b", true, BoolParameter::yesNo).clone()->getText(), "yes");
}

TEST(ParametersNotification, UnchangedValueCallsNobody)
{
    std::vector<int> log;
    Recorder sync(log, 1), async(log, 2);
    FloatParameter f(1, "f", 0.0f, 1.0f, 0.5f);
    f.addListener(&sync);
    f.addAsyncListener(&async);

    f.setValue(0.5f, true);
    f.setNormalised(0.5f, true);
    f.setValue(2.0f, false); // stored quietly as 1
    f.setBool(true, true);   // already 1
    pumpMessages();
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(f.getValue(), 1.0);

    StringParameter s(2, "s", "a");
    s.addListener(&sync);
    s.setText("a", true);
    EXPECT_TRUE(log.empty());
    s.setText("b", true);
    EXPECT_EQ(log, std::vector<int>{ 1 });
}

TEST(ParametersNotification, SyncListenersRunLastFirstAndMayRemoveThemselves)
{
    std::vector<int> log;
    Recorder a(log, 1), b(log, 2), c(log, 3);
    IntParameter p(1, "p", 0, 10, 0);
    p.addListener(&a);
    p.addListener(&b);
    p.addListener(&c);
    p.addListener(&c); // twice is once

    b.removeSelf = true;
    p.setInt(1, true);
    EXPECT_EQ(log, (std::vector<int>{ 3, 2, 1 }));

    log.clear();
    c.removeSelf = true;
    a.removeSelf = true;
    p.setInt(2, true);
    EXPECT_EQ(log, (std::vector<int>{ 3, 1 })) << "b is gone; the rest still run once each";

    log.clear();
    p.setInt(3, true);
    EXPECT_TRUE(log.empty());
}

TEST(ParametersNotification, AsyncCallsCoalesceOnTheMessageThread)
{
    std::vector<int> syncLog, asyncLog;
    Recorder sync(syncLog, 1), async(asyncLog, 2);
    FloatParameter f(1, "f", 0.0f, 1.0f, 0.0f);
    f.addListener(&sync);
    f.addAsyncListener(&async);

    std::thread audio([&]
                      {
        f.setValue(0.25f, true);
        f.setValue(0.75f, true); });
    audio.join();

    EXPECT_EQ(syncLog.size(), 2u);
    EXPECT_FALSE(sync.onMessageThread) << "synchronous calls run on the setter's thread";
    EXPECT_TRUE(asyncLog.empty()) << "nothing before the message loop runs";

    pumpMessages();
    EXPECT_EQ(asyncLog.size(), 1u) << "two changes, one asynchronous call";
    EXPECT_TRUE(async.onMessageThread);
    EXPECT_EQ(async.lastValue, 0.75);

    f.notifyChange(); // unconditional, as at start-up
    pumpMessages();
    EXPECT_EQ(syncLog.size(), 3u);
    EXPECT_EQ(asyncLog.size(), 2u);
}

TEST(ParametersNotification, ConcurrentSetAndGetSeeWholeValues)
{
    FloatParameter f(1, "f", -1000.0f, 1000.0f, 0.0f);
    StringParameter s(2, "s", "");
    const juce::String first = juce::String::repeatedString("a", 200);
    const juce::String second = juce::String::repeatedString("b", 300);
    std::atomic<bool> done{ false };

    std::thread writer([&]
                       {
        for (int i = 0; i < 20000; ++i)
        {
            f.setValue(i % 2 == 0 ? 123.456f : -654.321f, false);
            s.setText(i % 2 == 0 ? first : second, false);
        }
        done = true; });

    int torn = 0;
    while (!done)
    {
        const float v = (float) f.getValue();
        const auto t = s.getText();
        if ((v != 0.0f && v != 123.456f && v != -654.321f) || (t.isNotEmpty() && t != first && t != second))
            ++torn;
    }
    writer.join();
    EXPECT_EQ(torn, 0);
}
