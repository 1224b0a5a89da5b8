#include "parameters/InstrumentNames.h"
#include "parameters/OldParameterNames.h"
#include "parameters/ParameterIds.h"
#include "parameters/ParameterManager.h"
#include "parameters/ParameterTypes.h"
#include "parameters/StateParameters.h"
#include "plugin/Resources.h"

#include <gtest/gtest.h>

#include <map>

namespace
{
// Written out by hand on purpose: a second, independent copy of the named rows.
const char* const knobNames =
    "Bass Drum Tone,Bass Drum Decay,Bass Drum Sweep,Snare Drum Tone,Snare Drum Decay,Snare Drum Snappy,"
    "Low Conga Tunning,Low Conga Decay,Mid Conga Tunning,Mid Conga Decay,Hi Conga Tunning,Hi Conga Decay,"
    "Low Tom Tunning,Low Tom Decay,Low Tom Snappy,Mid Tom Tunning,Mid Tom Decay,Mid Tom Snappy,"
    "Hi Tom Tunning,Hi Tom Decay,Hi Tom Snappy,Claves Tunning,Claves Decay,Rim Shot Tunning,Rim Shot Decay,"
    "Maracas Tone,Hand Clap Tone,Hand Clap Reverb,Cow Bell Tunning,Cow Bell Decay,"
    "Laser Gun Depth,Laser Gun Decay,Laser Gun Sweep,Cymbal Tone,Cymbal Decay,Open Hi Hat Tone,"
    "Open Hi Hat Decay,Closed Hi Hat Tone,Closed Hi Hat Decay,Hi Hat Filters Freq,Main Volume"; // 18 to 58

const char* const sequencerNames =
    "Length Mode State Without Clear,Length Mode State With Clear,Variation A Edition State,"
    "Variation B Edition State,Part 1 Edition State,Part 2 Edition State,Variation A Playing State,"
    "Variation B Playing State,Part 1 Playing State,Part 2 Playing State,Auto Fill In,"
    "Basic Variation Mode,Intro/Fill In Variation Mode"; // 200 to 212

// The knobs that do not start at the middle.
const std::map<int, float> knobStarts{ { 32, 1.0f }, { 35, 1.0f }, { 38, 1.0f }, { 45, 1.0f }, { 47, 1.0f }, { 48, 1.0f }, { 49, 0.0f }, { 50, 0.0f } };

// A float or int row: its class, range and start value.
void expectRow(const ParameterManager& m, int id, const juce::String& name, float lo, float hi, float start)
{
    auto* p = m.getParameter(id);
    ASSERT_NE(p, nullptr) << id;
    EXPECT_EQ(p->getName(), name) << id;
    EXPECT_EQ(m.getParameter(name), p) << name;
    EXPECT_FLOAT_EQ((float) p->getValue(), start) << name;

    if (auto* f = dynamic_cast<FloatParameter*>(p))
    {
        EXPECT_EQ(f->getMinimum(), lo) << name;
        EXPECT_EQ(f->getMaximum(), hi) << name;
    }
    else if (auto* i = dynamic_cast<IntParameter*>(p))
    {
        EXPECT_EQ(i->getMinimum(), (int) lo) << name;
        EXPECT_EQ(i->getMaximum(), (int) hi) << name;
    }
    else
        ADD_FAILURE() << name << " is neither float nor int";
}

void expectLamps(const ParameterManager& m, int firstId, const juce::StringArray& names)
{
    for (int i = 0; i < names.size(); ++i)
    {
        auto* b = dynamic_cast<BoolParameter*>(m.getParameter(firstId + i));
        ASSERT_NE(b, nullptr) << names[i];
        EXPECT_EQ(b->getName(), names[i]);
        EXPECT_FALSE(b->getBool()) << names[i];
    }
}

juce::String stepName(int step, const char* suffix)
{
    return juce::String::formatted("Step %02d ", step + 1) + suffix;
}
} // namespace

TEST(ParametersTable, EmbeddedTableLoadsAllRowsExactly)
{
    const auto text = Resources::loadResourceText("parameters.xml");
    const auto root = juce::parseXML(text);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->getStringAttribute("application"), "Quindrel");

    ParameterManager m;
    ASSERT_EQ(m.loadFromXml(text), 213);

    for (int id = 0; id < 213; ++id)
    {
        auto* p = m.getParameter(id);
        ASSERT_NE(p, nullptr) << id;
        EXPECT_EQ(p, m.getParameterByIndex(id)) << "rows in id order";
        EXPECT_EQ(p->isAutomatable(), id <= ParameterIds::lastHostParameter) << id;
        if (id < 111 || id > 127)
        {
            EXPECT_NE(dynamic_cast<FloatParameter*>(p), nullptr) << id;
        }
    }

    for (int t = 0; t < trackCount; ++t)
    {
        const juce::String name(instrumentNames[t]);
        expectRow(m, ParameterIds::level + t, name + " Level", 0, 1, 0.5f);
        expectRow(m, ParameterIds::randThreshold + t, name + " Rand Threshold", 0, 1, 0.2f);
        expectRow(m, ParameterIds::activity + t, name + " Activity", 0, 1, 0);
        expectRow(m, ParameterIds::randState + t, name + " Rand State", 0, 1, 0);
        expectRow(m, ParameterIds::selection + t, name + " Selection", 0, 1, 0);
        expectRow(m, ParameterIds::randSelection + t, name + " Rand Selection", 0, 1, 0);
    }

    for (int i = 0; i < instrumentCount; ++i)
    {
        const juce::String name(instrumentNames[i]);
        expectRow(m, ParameterIds::mute + i, name + " Mute", 0, 1, 0);
        expectRow(m, ParameterIds::solo + i, name + " Solo", 0, 1, 0);
        expectRow(m, ParameterIds::outputNumber + i, name + " Output Number", 1, 12, 1);
        EXPECT_NE(dynamic_cast<IntParameter*>(m.getParameter(ParameterIds::outputNumber + i)), nullptr);
    }

    const auto knobs = juce::StringArray::fromTokens(knobNames, ",", "");
    ASSERT_EQ(knobs.size(), 41);
    for (int i = 0; i < knobs.size(); ++i)
        expectRow(m, 18 + i, knobs[i], 0, 1, knobStarts.count(18 + i) ? knobStarts.at(18 + i) : 0.5f);

    const auto rows = juce::StringArray::fromTokens(sequencerNames, ",", "");
    ASSERT_EQ(rows.size(), 13);
    for (int i = 0; i < rows.size(); ++i)
        expectRow(m, 200 + i, rows[i], 0, 1, 0);

    EXPECT_EQ(m.getName(110), "Accent Rand Threshold") << "the last host parameter";
}

TEST(ParametersTable, StateAndPresetParametersAreComplete)
{
    ParameterManager m;
    addStateParameters(m);
    addPresetParameters(m);
    EXPECT_EQ(m.getNumParameters(), 78 + 2);

    expectLamps(m, 3000, { "Internal Sequencer State", "Internal Sync State", "Host Mode State", "Note Off State", "Play State", "Write Mode State", "Write Mode Activity", "Auto Follow State", "Randomizer State", "Randomizer Active And Filled", "Randomizer Active But Not Filled", "Length Mode State", "Tap Mode State", "Flam Mode State", "Native Mode Ready State" });
    expectRow(m, 3015, "Instrument Selection", 0, 17, 0);
    expectRow(m, 3016, "Instrument Selection With Accent First", 0, 17, 1);
    expectLamps(m, 3017, { "Clipboard Tracks State", "Clipboard Pattern State", "Pattern Scale 6 SPB State", "Pattern Scale 3 SPB State", "Pattern Scale 8 SPB State", "Pattern Scale 4 SPB State" });
    expectRow(m, 3023, "Pattern Number", 0, 127, 0);
    auto* patternName = dynamic_cast<StringParameter*>(m.getParameter(3024));
    ASSERT_NE(patternName, nullptr);
    EXPECT_EQ(patternName->getName(), "Pattern Name");
    EXPECT_EQ(patternName->getText(), "");
    expectLamps(m, 3025, { "Pattern Name Edition State", "Pattern Tempo State" });
    expectRow(m, 3027, "Pattern Tempo", 30, 300, 120);
    expectRow(m, 3028, "Pattern Shuffle", 0, 0.8f, 0);
    expectRow(m, 3029, "Pattern Flam", 0, 0.383f, 0.121f);

    juce::StringArray lengths, blinking;
    for (int step = 0; step < 16; ++step)
    {
        lengths.add(stepName(step, "Length State"));
        blinking.add(stepName(step, "Blinking"));
        expectRow(m, 3046 + step, stepName(step, "State"), 0, 1, 0);
    }
    expectLamps(m, 3030, lengths);
    expectLamps(m, 3078, blinking);
    EXPECT_EQ(m.getName(3030), "Step 01 Length State");
    EXPECT_EQ(m.getName(3093), "Step 16 Blinking");

    for (int id = 3062; id <= 3077; ++id)
        EXPECT_EQ(m.getParameter(id), nullptr) << id << " is unassigned";

    expectRow(m, 110000, "Current Preset Number", 0, 127, 0);
    auto* presetName = dynamic_cast<StringParameter*>(m.getParameter(110001));
    ASSERT_NE(presetName, nullptr);
    EXPECT_EQ(presetName->getName(), "Current Preset Name");

    for (int i = 0; i < m.getNumParameters(); ++i)
        EXPECT_FALSE(m.getParameterByIndex(i)->isAutomatable()) << m.getParameterByIndex(i)->getName();
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
