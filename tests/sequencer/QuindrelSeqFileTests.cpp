#include "plugin/PluginTestHost.h"
#include "sequencer/QuindrelSeq.h"

#include <gtest/gtest.h>

namespace
{
constexpr int host = DrumMachineSeq::hostType;
constexpr int native = DrumMachineSeq::nativeType;

std::unique_ptr<juce::XmlElement> parse(const char* text)
{
    auto xml = juce::parseXML(juce::String(text));
    EXPECT_NE(xml, nullptr) << text;
    return xml;
}

juce::String oneLine(const juce::XmlElement& xml)
{
    return xml.toString(juce::XmlElement::TextFormat().singleLine().withoutHeader());
}

// A pattern with something on every step, to see what a reader clears.
void scribble(Pattern& pattern)
{
    pattern.setLength(16);
    for (int track = 0; track < Tracks::count; ++track)
        pattern.setTrackString(track, "oooooooooooooooo");
}

// The factory's patterns, with a name to escape and values off the knobs' steps.
void fill(QuindrelSeq& seq)
{
    PluginTestHost::loadFactoryBanks(seq);
    auto& odd = seq.getHostPatternAt(95);
    odd.setName("Kick & <Snare>");
    odd.setScale(6);
    odd.setShuffle(0.148724);
    odd.setTempo(116.3);
    seq.getNativePatternAt(15).getVariation(1).getPart(1).setScale(8);
}
} // namespace

TEST(SequencerPatternFiles, HostPatternReaderTakesOldAndOddForms)
{
    QuindrelSeq seq(nullptr, nullptr);
    auto& pattern = seq.getHostPatternAt(5);

    // Each form as read back: name, length, scale, shuffle, tempo, then the
    // bass drum, the snare (which no case names: cleared) and the accent at length 16.
    const std::pair<const char*, const char*> cases[] = {
        { R"(<Pattern application="Quindrel" name="Long" type="hostPattern" scale="3" shuffle="0.9" tempo="500"><BD>oOo.xoOooooooooooooo</BD><AC>oO.</AC><XX>ooo</XX></Pattern>)",
          "Long 16 3 0.8 300 oOo..oOooooooooo ................ OO.............." },
        { R"(<QuindrelSimplePattern name="Old" stepsPerBeat="3" bpm="90" length="8"><BD>o.O</BD></QuindrelSimplePattern>)",
          "Old 8 3 0 90 o.O............. ................ ................" },
        { R"(<QuindrelHostPattern stepsPerBeat="3" scale="6" bpm="90" tempo="120.06" length="0"/>)",
          " 1 6 0 120.1 ................ ................ ................" },
        { R"(<Pattern application="Quindrel" type="nativePattern" scale="5"><VariationA><Part1 length="4"><BD>oooo</BD></Part1></VariationA></Pattern>)",
          " 16 4 0 120 ................ ................ ................" },
    };
    for (const auto& [text, expected] : cases)
    {
        scribble(pattern);
        const auto xml = parse(text);
        ASSERT_TRUE(seq.isPatternElement(*xml, host)) << text;
        seq.readPattern(*xml, 5, host);
        juce::String read;
        read << pattern.getName() << " " << pattern.getLength() << " " << pattern.getScale() << " " << pattern.getShuffle() << " " << pattern.getTempo();
        pattern.setLength(16);
        for (const int track : { 0, 1, 17 })
            read << " " << pattern.getTrackString(track);
        EXPECT_EQ(read, expected) << text;
    }

    // Elements of another plug-in or of the other store are not patterns here.
    for (const char* text : { R"(<Pattern application="Other" name="x"/>)", "<QuindrelNativePattern/>", "<QuindrelExtendedPattern/>" })
    {
        scribble(pattern);
        seq.readPattern(*parse(text), 5, host);
        EXPECT_EQ(pattern.getTrackString(0), "oooooooooooooooo") << text;
    }
    EXPECT_TRUE(seq.isPatternElement(*parse("<QuindrelExtendedPattern/>"), native));
    EXPECT_FALSE(seq.isPatternElement(*parse("<QuindrelSimplePattern/>"), native));
}

TEST(SequencerPatternFiles, NativePatternReaderAndBothWriters)
{
    QuindrelSeq seq(nullptr, nullptr);
    auto& pattern = seq.getNativePatternAt(3);
    pattern.getVariation(1).setTempo(99.0);

    seq.readPattern(*parse(R"(<QuindrelExtendedPattern name="Old native">
          <VariationA shuffle="0.9" bpm="80">
            <Part1 length="0" stepsPerBeat="6"><SD>O.o</SD></Part1>
            <Part2 length="0" scale="8"><SD>oooo</SD></Part2>
          </VariationA></QuindrelExtendedPattern>)"),
                    3, native);

    const auto& a = pattern.getVariation(0);
    EXPECT_TRUE(pattern.getName() == "Old native" && a.getShuffle() == 0.8 && a.getTempo() == 80.0);
    EXPECT_TRUE(a.getPart(0).getLength() == 1 && a.getPart(0).getScale() == 6) << "Part 1 can't be absent";
    EXPECT_EQ(a.getPart(0).getStep(1, 2), 1) << "steps beyond the length are still read";
    EXPECT_TRUE(a.getPart(1).getLength() == 0 && a.getPart(1).getScale() == 8) << "Part 2 of length 0 is absent";
    EXPECT_DOUBLE_EQ(pattern.getVariation(1).getTempo(), 99.0) << "a missing variation keeps its values";

    // The written form: attributes in order, a track as long as its part,
    // an absent part with empty tracks.
    auto& part = pattern.getVariation(0).getPart(0);
    part.setLength(3);
    part.setTrackString(0, "oO.O");
    const auto written = oneLine(*seq.writePattern(3, native));
    EXPECT_TRUE(written.startsWith(R"(<Pattern application="Quindrel" name="Old native" type="nativePattern"><VariationA shuffle="0.8" tempo="80.0"><Part1 length="3" scale="6"><BD>oO.</BD><SD>O.o</SD><LC>...</LC>)")) << written;
    EXPECT_TRUE(written.contains(R"(<Part2 length="0" scale="8"><BD/><SD/>)")) << written;
    EXPECT_TRUE(written.contains(R"(<VariationB shuffle="0.0" tempo="99.0"><Part1 length="16" scale="4">)")) << written;
    EXPECT_EQ(part.getStep(0, 3), 3) << "a step beyond the length stays in memory";

    auto& hostPattern = seq.getHostPatternAt(0);
    hostPattern.setName("Groove");
    hostPattern.setLength(2);
    hostPattern.setShuffle(0.148724);
    hostPattern.setTempo(116.0);
    hostPattern.setTrackString(17, "o.o");
    juce::String expected = R"(<Pattern application="Quindrel" name="Groove" type="hostPattern" length="2" scale="4" shuffle="0.148724" tempo="116.0">)";
    for (int track = 0; track < 17; ++track)
        expected << "<" << shortCodes[track] << ">..</" << shortCodes[track] << ">";
    expected << "<AC>O.</AC></Pattern>";
    EXPECT_EQ(oneLine(*seq.writePattern(0, host)), expected);
}

TEST(SequencerPatternFiles, BanksStatesAndEditionState)
{
    QuindrelSeq seq(nullptr, nullptr);

    // 100 patterns, with other elements between them: 96 slots are filled.
    juce::XmlElement bank("QuindrelSimplePatternBank");
    for (int i = 0; i < 100; ++i)
    {
        bank.createNewChildElement("Comment");
        auto* pattern = bank.createNewChildElement("Pattern");
        pattern->setAttribute("application", "Quindrel");
        pattern->setAttribute("name", "p" + juce::String(i));
    }
    seq.readBank(bank, host);
    EXPECT_TRUE(seq.getPatternName(0, host) == "p0" && seq.getPatternName(95, host) == "p95");

    // A short untyped bank goes to either store and leaves the later slots.
    const auto untyped = parse(R"(<PatternBank><Pattern application="Quindrel" name="first"/></PatternBank>)");
    EXPECT_TRUE(seq.isBankElement(*untyped, host) && seq.isBankElement(*untyped, native));
    seq.readBank(*untyped, native);
    seq.readBank(*untyped, host);
    EXPECT_TRUE(seq.getPatternName(0, native) == "first" && seq.getPatternName(0, host) == "first" && seq.getPatternName(1, host) == "p1");

    // A typed bank of the other store is refused; old tags are taken.
    seq.readBank(*parse(R"(<PatternBank type="nativePattern"><Pattern application="Quindrel" name="n"/></PatternBank>)"), host);
    EXPECT_EQ(seq.getPatternName(0, host), "first");
    EXPECT_TRUE(seq.isBankElement(*parse("<QuindrelExtendedPatternBank/>"), native) && seq.isBankElement(*parse("<QuindrelNativePatternBank/>"), native));
    EXPECT_FALSE(seq.isBankElement(*parse("<QuindrelHostPatternBank/>"), native));

    // The state carries both stores, host first, and reads back the same.
    fill(seq);
    const auto state = seq.writePatternsState();
    ASSERT_EQ(state->getNumChildElements(), 2);
    EXPECT_TRUE(state->getChildElement(0)->getStringAttribute("type") == "hostPattern" && state->getChildElement(0)->getNumChildElements() == 96 && state->getChildElement(1)->getNumChildElements() == 16);
    QuindrelSeq copy(nullptr, nullptr);
    copy.readPatternsState(*state);
    EXPECT_EQ(oneLine(*copy.writePatternsState()), oneLine(*state));

    // Edition state: clamped numbers; unknown words leave their field.
    seq.readEditionState(*parse(R"(<DMSeqEditionState><HostPatternNumber value="200"/><NativePatternNumber value="-3"/>
        <NativePatternVariation value="B"/><NativePatternPart value="2"/></DMSeqEditionState>)"));
    EXPECT_EQ(oneLine(*seq.writeEditionState()), R"(<DMSeqEditionState><HostPatternNumber value="95"/><NativePatternNumber value="0"/><NativePatternVariation value="B"/><NativePatternPart value="2"/></DMSeqEditionState>)");
    seq.readEditionState(*parse(R"(<DMSeqEditionState><HostPatternNumber value="7"/><NativePatternVariation value="C"/><NativePatternPart value="0"/></DMSeqEditionState>)"));
    EXPECT_TRUE(seq.getEditedHostPattern() == 7 && seq.getEditedVariation() == 1 && seq.getEditedPart() == 1);
}

TEST(SequencerPatternFiles, FilesRoundTripByteForByte)
{
    const auto folder = juce::File::createTempFile("quindrel-patterns");
    folder.createDirectory();
    QuindrelSeq seq(nullptr, nullptr);
    fill(seq);

    EXPECT_TRUE(seq.getPatternFileExtension(host) == ".qdptrH" && seq.getBankFileExtension(native) == ".qdptrbN");
    EXPECT_TRUE(seq.getPatternFileWildcards(native) == "*.qdptrN; *.qep" && seq.getBankFileWildcards(host) == "*.qdptrbH; *.qsb");

    for (const int type : { host, native })
    {
        const auto first = folder.getChildFile("first" + seq.getBankFileExtension(type));
        const auto second = folder.getChildFile("second" + seq.getBankFileExtension(type));
        QuindrelSeq loaded(nullptr, nullptr);
        ASSERT_TRUE(seq.saveBankFile(first, type) && loaded.loadBankFile(first, type) && loaded.saveBankFile(second, type));
        EXPECT_TRUE(first.hasIdenticalContentTo(second)) << "type " << type;
        EXPECT_TRUE(first.loadFileAsString().startsWith(R"(<?xml version="1.0" encoding="UTF-8"?>)"));
        EXPECT_FALSE(loaded.loadBankFile(folder.getChildFile("missing.qdptrbH"), type));
    }

    // A single pattern goes to the edited slot of its type, not to the one that plays.
    const auto single = folder.getChildFile("one.qdptrH");
    seq.setEditedHostPattern(9);
    ASSERT_TRUE(seq.savePatternFile(single, host));
    QuindrelSeq other(nullptr, nullptr);
    other.setEditedHostPattern(40);
    other.startHostPattern(3);
    ASSERT_TRUE(other.loadPatternFile(single, host));
    EXPECT_TRUE(other.getPatternName(40, host) == seq.getPatternName(9, host) && other.getHostPatternAt(40).getTrackString(9) == seq.getHostPatternAt(9).getTrackString(9));
    EXPECT_EQ(other.getHostPattern(), 3);

    // At start: names, then the user's bank if it can be read.
    QuindrelSeq atStart(nullptr, nullptr);
    atStart.hostResourceKind = DrumMachineSeq::userDefinedPatterns;
    atStart.hostResourceFile = folder.getChildFile("first.qdptrbH").getFullPathName();
    atStart.nativeResourceKind = DrumMachineSeq::userDefinedPatterns;
    atStart.nativeResourceFile = folder.getChildFile("gone.qdptrbN").getFullPathName();
    atStart.loadAtStart();
    EXPECT_TRUE(atStart.getPatternName(95, host) == seq.getPatternName(95, host) && atStart.getPatternName(15, native) == "Pattern 16");
    folder.deleteRecursively();
}
