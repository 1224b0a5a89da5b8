#include "../plugin/PluginTestHost.h"

#include "presets/XmlFiles.h"

#include <gtest/gtest.h>

// A damaged or crafted file nested far deeper than any of ours would take the
// reading thread's stack with it; every reader of a user's file refuses it and
// keeps what it had.
TEST(PresetsXmlFiles, EveryUserFileReaderRefusesADeeplyNestedDocument)
{
    const juce::TemporaryFile temporary(".xml");
    const auto& file = temporary.getFile();
    constexpr int depth = 300000;
    ASSERT_TRUE(file.replaceWithText("<?xml version=\"1.0\"?>" + juce::String::repeatedString("<a>", depth)
                                     + juce::String::repeatedString("</a>", depth)));

    PluginTestHost host(48000.0, 512, file); // as the user settings file
    auto& plugin = *host.plugin;
    auto& sequencer = *plugin.getSequencer();
    const auto patternsBefore = sequencer.writePatternsState()->toString();
    const auto presetBefore = plugin.createCurrentProgramXml()->toString();

    EXPECT_FALSE(sequencer.loadPatternFile(file, DrumMachineSeq::nativeType));
    EXPECT_FALSE(sequencer.loadBankFile(file, DrumMachineSeq::hostType));
    EXPECT_FALSE(plugin.getMidiControl().loadFromFile(file));
    EXPECT_FALSE(plugin.loadPresetFile(file, 0));
    EXPECT_FALSE(plugin.loadBankFile(file));
    EXPECT_EQ(DrumMachine::readStoredOutputType(file), DrumMachine::stereoOutputs);

    EXPECT_EQ(sequencer.writePatternsState()->toString(), patternsBefore);
    EXPECT_EQ(plugin.createCurrentProgramXml()->toString(), presetBefore);
    EXPECT_EQ(plugin.getDrumMapName(), "General Midi");

    EXPECT_NE(XmlFiles::parse(juce::String("<a><b/><c x=\"<d>\"/></a>")), nullptr) << "ordinary documents still parse";
}
