#include "PluginTestHost.h"

#include <gtest/gtest.h>

namespace
{
std::map<int, int> mapOf(const DrumMachine& plugin)
{
    std::map<int, int> result;
    for (int key = 0; key < 128; ++key)
        if (plugin.getKeyInstrument(key) >= 0)
            result[key] = plugin.getKeyInstrument(key);
    return result;
}
} // namespace

TEST(PluginDrumMap, FactoryMapIsGeneralMidi)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    EXPECT_EQ(plugin.getDrumMapName(), "General Midi");

    const std::map<int, int> expected = {
        { 35, 0 }, { 36, 0 }, { 38, 1 }, { 40, 1 }, { 61, 2 }, { 64, 2 }, { 63, 3 }, { 60, 4 }, { 62, 4 }, { 41, 5 }, { 45, 5 }, { 47, 6 }, { 48, 6 }, { 43, 7 }, { 50, 7 }, { 75, 8 }, { 37, 9 }, { 70, 10 }, { 39, 11 }, { 56, 12 }, { 58, 13 }, { 49, 14 }, { 51, 14 }, { 52, 14 }, { 59, 14 }, { 46, 15 }, { 42, 16 }, { 44, 16 }
    };
    EXPECT_EQ(mapOf(plugin), expected);

    plugin.setInternalSequencer(false);
    EXPECT_EQ(plugin.getMidiKeyName(42), "Closed Hi Hat");
    EXPECT_EQ(plugin.getMidiKeyName(0), "---");
    plugin.setInternalSequencer(true);
    EXPECT_EQ(plugin.getMidiKeyName(42), "");
}

TEST(PluginDrumMap, BothVersionsReadTheSameAndBadRowsAreSkipped)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;

    plugin.loadDrumMap(*juce::parseXML(
        "<DrumMap ver=\"1.1\" name=\"Mine\"><assign midiKey=\"30\" instrument=\"SD\"/>"
        "<assign midiKey=\"31\" instrument=\"AC\"/><assign midiKey=\"128\" instrument=\"BD\"/>"
        "<assign midiKey=\"32\" instrument=\"ZZ\"/><assign midiKey=\"30\" instrument=\"CH\"/>"
        "<assign midiKey=\"33\" instrument=\"LG\"/></DrumMap>"));
    EXPECT_EQ(plugin.getDrumMapName(), "Mine");
    const auto newForm = mapOf(plugin);
    EXPECT_EQ(newForm, (std::map<int, int>{ { 30, 16 }, { 33, 13 } })) << "the later row of a key wins; AC is refused";

    plugin.loadDrumMap(*juce::parseXML(
        "<DrumMap><assign note=\"30\" instrument=\"SD\"/><assign note=\"30\" instrument=\"CH\"/>"
        "<assign note=\"33\" instrument=\"LG\"/><assign midiKey=\"40\" instrument=\"BD\"/></DrumMap>"));
    EXPECT_EQ(mapOf(plugin), newForm);
    EXPECT_EQ(plugin.getDrumMapName(), "");

    plugin.loadDrumMap(*juce::parseXML("<DrumMap ver=\"2.0\"><assign midiKey=\"30\" instrument=\"SD\"/></DrumMap>"));
    EXPECT_TRUE(mapOf(plugin).empty()) << "an unknown version reads nothing";

    plugin.loadDrumMap(*juce::parseXML("<Other ver=\"1.1\"><assign midiKey=\"1\" instrument=\"SD\"/></Other>"));
    EXPECT_TRUE(mapOf(plugin).empty()) << "another root changes nothing";
}

TEST(PluginDrumMap, SavedFileLoadsBackAndStartsTheNextInstance)
{
    juce::TemporaryFile mapFile(".qddrmap");
    juce::TemporaryFile settings(".ini");
    {
        PluginTestHost host;
        auto& plugin = *host.plugin;
        plugin.loadDrumMap(*juce::parseXML("<DrumMap ver=\"1.1\" name=\"Two\"><assign midiKey=\"20\" instrument=\"CB\"/>"
                                           "<assign midiKey=\"21\" instrument=\"BD\"/></DrumMap>"));
        ASSERT_TRUE(plugin.saveDrumMap(mapFile.getFile()));
        EXPECT_EQ(plugin.getDrumMapExtension(), ".qddrmap");
        EXPECT_EQ(plugin.getDrumMapWildcard(), "*.qddrmap");
    }

    const auto xml = juce::parseXML(mapFile.getFile());
    ASSERT_NE(xml, nullptr);
    EXPECT_EQ(xml->getStringAttribute("application"), "Quindrel");
    EXPECT_EQ(xml->getStringAttribute("ver"), "1.1");
    EXPECT_EQ(xml->getChildElement(0)->getIntAttribute("midiKey"), 20);

    settings.getFile().replaceWithText("<UserSettings application=\"Quindrel\"><ResourcesSettings>"
                                       "<DrumMap default=\"userDefinedDrumMap\" file=\"" +
                                       mapFile.getFile().getFullPathName() + "\"/></ResourcesSettings></UserSettings>");
    PluginTestHost next(48000.0, 512, settings.getFile());
    EXPECT_EQ(next.plugin->getDrumMapName(), "Two");
    EXPECT_EQ(mapOf(*next.plugin), (std::map<int, int>{ { 20, 12 }, { 21, 0 } }));
}
