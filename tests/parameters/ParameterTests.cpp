#include "parameters/ParameterTypes.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <thread>
#include <vector>

namespace
{
// Records which listener was called, in order, and on which thread.
struct Recorder : Parameter::Listener
{
    Recorder(std::vector<int>& logToUse, int tagToUse)
        : log(logToUse)
        , tag(tagToUse)
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

// Each type reads numbers (normalised or plain) and texts its own way: each
// row sets a parameter, then reads its text and, where given, its integer
// and its truth. Rows of one parameter follow each other, each changing it.
// A bool takes words, and other text as a normalised number. A float cuts its
// start value into its range, counts its middle as true, writes the shortest
// text that reads back, cuts toward zero and takes NaN as its minimum. An
// integer is 1 + floor(11 x + 0.5) of x normalised, true only away from its
// minimum, and cuts values toward zero, not down. For a string, integer 0 is
// true, so an empty text is too. (The loader's enum and note types are in no
// table of the plug-in.)
TEST(ParametersConversions, EachTypeReadsNumbersAndTextsItsOwnWay)
{
    BoolParameter b(1, "bool", false);
    FloatParameter tempo(2, "tempo", 30.0f, 300.0f, 0.0f), unit(3, "unit", 0.0f, 1.0f, 0.5f), bipolar(4, "bipolar", -5.0f, 5.0f, -2.7f);
    IntParameter out(5, "out", 1, 12, 0), signedRange(6, "signed", -10, 10, 0);
    StringParameter s(9, "string", "");
    constexpr int any = INT_MIN;
    // clang-format off
    const struct
    {
        Parameter& p;
        char how; // n: normalised, v: value, t: text, =: as it starts
        const char* input;
        const char* text;
        int asInt, asBool; // asBool: 0, 1 or any
    } rows[] = {
        { b, 'n', "0.5", "true", any, 1 }, { b, 'n', "0.49", "false", any, 0 }, { b, 'n', "3", "true", any, 1 }, { b, 'n', "-1", "false", any, 0 },
        { b, 't', "true", "true", 1, 1 }, { b, 't', "false", "false", 0, 0 }, { b, 't', "1", "true", any, 1 }, { b, 't', "0", "false", any, 0 },
        { b, 't', "on", "true", any, 1 }, { b, 't', "off", "false", any, 0 }, { b, 't', "yes", "true", any, 1 }, { b, 't', "no", "false", any, 0 },
        { b, 't', "0.7", "true", any, 1 }, { b, 't', "0.2", "false", any, 0 },
        { tempo, '=', "", "30", any, any }, { tempo, 'n', "0.5", "165", any, any }, { tempo, 'n', "1.5", "300", any, any }, { tempo, 't', "120", "120", any, any },
        { unit, '=', "", "0.5", any, 1 }, { unit, 'v', "0.4999", "0.4999", any, 0 }, { unit, 'v', "0.121", "0.121", any, any },
        { bipolar, '=', "", "-2.7", -2, any }, { bipolar, 'v', "nan", "-5", -5, any },
        { out, '=', "", "1", 1, 0 }, { out, 'n', "0.5", "7", 7, 1 }, { out, 'n', "0.04", "1", 1, 0 }, { out, 'n', "0.05", "2", 2, 1 },
        { out, 'n', "2", "12", 12, 1 }, { out, 't', "5.8", "5", 5, 1 }, { signedRange, 'v', "-3.9", "-3", -3, any },
        { s, 't', "", "", any, 1 }, { s, 't', "0", "0", any, 1 }, { s, 't', "abc", "abc", any, 1 }, { s, 't', "5", "5", any, 0 },
        { s, 'v', "0.25", "0.25", any, any }
    };
    // clang-format on
    for (const auto& r : rows)
    {
        const auto where = r.p.getName() + " " + r.how + " \"" + r.input + "\"";
        if (r.how == 'n' || r.how == 'v')
        {
            const float x = juce::String(r.input) == "nan" ? std::numeric_limits<float>::quiet_NaN() : juce::String(r.input).getFloatValue();
            r.how == 'n' ? r.p.setNormalised(x, false) : r.p.setValue(x, false);
        }
        if (r.how == 't')
            r.p.setText(r.input, false);
        EXPECT_EQ(r.p.getText(), r.text) << where;
        EXPECT_TRUE(r.asInt == any || r.p.getInt() == r.asInt) << where << ": " << r.p.getInt();
        EXPECT_TRUE(r.asBool == any || r.p.getBool() == (r.asBool == 1)) << where;
    }
    EXPECT_DOUBLE_EQ(out.getNormalised(), 4.0 / 11.0);
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

TEST(ParametersNotification, AsyncCallsCoalesceOnTheMessageThreadAndUnchangedValuesCallNobody)
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
    EXPECT_TRUE(asyncLog.size() == 1u && async.onMessageThread && async.lastValue == 0.75) << "two changes, one asynchronous call";

    f.setValue(0.75f, true);
    f.setNormalised(0.75f, true);
    f.setValue(2.0f, false); // stored quietly as 1
    f.setBool(true, true);   // already 1
    pumpMessages();
    EXPECT_TRUE(syncLog.size() == 2u && asyncLog.size() == 1u && f.getValue() == 1.0) << "unchanged values call nobody";

    f.notifyChange(); // unconditional, as at start-up
    pumpMessages();
    EXPECT_TRUE(syncLog.size() == 3u && asyncLog.size() == 2u);

    StringParameter s(2, "s", "a");
    s.addListener(&sync);
    s.setText("a", true);
    s.setText("b", true);
    EXPECT_EQ(syncLog.size(), 4u) << "an unchanged text calls nobody";
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
