// What an instance starts with and leaves behind: the user settings file, the
// drum map and the control map it names, and where the settings live.

#include "PluginTestHost.h"

#include "parameters/ParameterIds.h"
#include "plugin/BasePlugin.h"
#include "sequencer/QuindrelSeq.h"

#include <gtest/gtest.h>

#include <set>

namespace
{
using H = PluginTestHost;

juce::String oneLine(const juce::XmlElement* xml)
{
    return xml == nullptr ? juce::String() : xml->toString(juce::XmlElement::TextFormat().singleLine().withoutHeader());
}

std::map<int, int> mapOf(const DrumMachine& plugin)
{
    std::map<int, int> result;
    for (int key = 0; key < 128; ++key)
        if (plugin.getKeyInstrument(key) >= 0)
            result[key] = plugin.getKeyInstrument(key);
    return result;
}
} // namespace

TEST(PluginUserSettings, SequencerDefaultsOutputNumbersAndPatternResourcesReachTheInstanceAndComeBack)
{
    const juce::TemporaryFile settings(".ini");
    const juce::String sequencer = "<InternalSequencer><IntSeq state=\"off\"/><IntSync state=\"off\"/><HostMode state=\"on\"/>"
                                   "<NoteOff state=\"on\"/><HostPlayDetection type=\"byLowestCNoteOn\"/></InternalSequencer>";
    H::writeSettings(settings.getFile(), "<AudioOutputSettings><OutAssignations><BD out=\"4\"/><SD out=\"13\"/><CH out=\"12\"/></OutAssignations></AudioOutputSettings>" + sequencer);
    {
        PluginTestHost host(48000.0, 512, settings.getFile());
        auto& plugin = *host.plugin;
        EXPECT_TRUE(!plugin.internalSequencer && !plugin.internalSync && plugin.hostMode && plugin.noteOffMode);
        EXPECT_EQ(plugin.hostPlayDetection, DrumMachine::byLowestCNoteOn);
        EXPECT_FALSE(plugin.getParameterManager().getBool(ParameterIds::hostModeState)) << "shown only with the internal sequencer";
        EXPECT_EQ(plugin.getParameterManager().getInt(ParameterIds::outputNumber + 0), 4);
        EXPECT_EQ(plugin.getInstrumentOutput(1), 1) << "output 13 does not exist";
        EXPECT_EQ(plugin.getInstrumentOutput(16), 12);

        // The defaults stay what the file said, whatever the instance does.
        plugin.setInternalSequencer(true);
        plugin.getParameterManager().setInt(ParameterIds::outputNumber + 0, 2);
    }
    const auto written = juce::parseXML(settings.getFile());
    ASSERT_NE(written, nullptr);
    EXPECT_EQ(oneLine(written->getChildByName("InternalSequencer")), sequencer);
    EXPECT_EQ(written->getChildByName("AudioOutputSettings")->getChildByName("OutAssignations")->getChildByName("BD")->getIntAttribute("out"), 4);

    // Pattern resources of every kind are loaded and written back.
    const juce::TemporaryFile resourceSettings(".ini"), userBank(".qdptrbH");
    {
        QuindrelSeq source(nullptr, nullptr);
        source.getHostPatternAt(0).setName("Mine");
        source.getHostPatternAt(0).setTrackString(0, "o.o.");
        ASSERT_TRUE(source.saveBankFile(userBank.getFile(), DrumMachineSeq::hostType));
    }
    const auto resources = "<ResourcesSettings><DMSeqRes><HostPatterns default=\"userDefinedPatterns\" file=\"" + userBank.getFile().getFullPathName() +
                           "\"/><NativePatterns default=\"clearPatterns\"/><Patterns default=\"factoryPatterns\"/></DMSeqRes></ResourcesSettings>";
    H::writeSettings(resourceSettings.getFile(), resources);
    {
        PluginTestHost resourceHost(48000.0, 512, resourceSettings.getFile());
        auto& seq = *resourceHost.plugin->getQuindrelSeq();
        EXPECT_EQ(seq.getPatternName(0, DrumMachineSeq::hostType), "Mine");
        EXPECT_EQ(seq.getHostPatternAt(0).getTrackString(0), "o.o.............");
        EXPECT_EQ(seq.getPatternName(3, DrumMachineSeq::nativeType), "Pattern 4") << "native patterns start cleared";
        EXPECT_EQ(seq.getNativePatternAt(3).getVariation(0).getPart(0).getTrackString(0), "................");
    }
    const auto writtenResources = juce::parseXML(resourceSettings.getFile());
    ASSERT_NE(writtenResources, nullptr);
    EXPECT_EQ(oneLine(writtenResources->getChildByName("ResourcesSettings")->getChildByName("DMSeqRes")), oneLine(juce::parseXML(resources)->getChildByName("DMSeqRes")));

    // An unknown word leaves the kind as it was: the factory's.
    H::writeSettings(resourceSettings.getFile(), "<ResourcesSettings><DMSeqRes><NativePatterns default=\"someOther\"/></DMSeqRes></ResourcesSettings>");
    PluginTestHost resourceHost(48000.0, 512, resourceSettings.getFile());
    EXPECT_NE(resourceHost.plugin->getQuindrelSeq()->getPatternName(0, DrumMachineSeq::nativeType), "Pattern 1");
}

TEST(PluginDrumMap, TheFactoryMapBothFormsOfAFileAndSavedMapsStartingTheNextInstance)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    // General MIDI: every drum on a key, the kick on 36, the snare on 38, the closed hat on 42.
    EXPECT_EQ(plugin.getDrumMapName(), "General Midi");
    std::set<int> drums;
    for (const auto& [key, instrument] : mapOf(plugin))
        drums.insert(instrument);
    EXPECT_EQ(drums.size(), (size_t) instrumentCount);
    EXPECT_TRUE(plugin.getKeyInstrument(36) == 0 && plugin.getKeyInstrument(38) == 1 && plugin.getKeyInstrument(42) == 16);
    plugin.setInternalSequencer(false);
    EXPECT_TRUE(plugin.getMidiKeyName(42) == "Closed Hi Hat" && plugin.getMidiKeyName(0) == "---");
    plugin.setInternalSequencer(true);
    EXPECT_EQ(plugin.getMidiKeyName(42), "") << "keys play patterns then";

    // The later row of a key wins; the accent, an unknown code and key 128 are refused.
    plugin.loadDrumMap(*juce::parseXML("<DrumMap ver=\"1.1\" name=\"Mine\"><assign midiKey=\"30\" instrument=\"SD\"/>"
                                       "<assign midiKey=\"31\" instrument=\"AC\"/><assign midiKey=\"128\" instrument=\"BD\"/>"
                                       "<assign midiKey=\"32\" instrument=\"ZZ\"/><assign midiKey=\"30\" instrument=\"CH\"/>"
                                       "<assign midiKey=\"33\" instrument=\"LG\"/></DrumMap>"));
    const std::map<int, int> mine{ { 30, 16 }, { 33, 13 } };
    EXPECT_TRUE(plugin.getDrumMapName() == "Mine" && mapOf(plugin) == mine);
    plugin.loadDrumMap(*juce::parseXML("<DrumMap><assign note=\"30\" instrument=\"SD\"/><assign note=\"30\" instrument=\"CH\"/>"
                                       "<assign note=\"33\" instrument=\"LG\"/><assign midiKey=\"40\" instrument=\"BD\"/></DrumMap>"));
    EXPECT_TRUE(plugin.getDrumMapName() == "" && mapOf(plugin) == mine) << "the older form reads the same";
    plugin.loadDrumMap(*juce::parseXML("<DrumMap ver=\"2.0\"><assign midiKey=\"30\" instrument=\"SD\"/></DrumMap>"));
    EXPECT_TRUE(mapOf(plugin).empty()) << "an unknown version reads nothing";
    plugin.loadDrumMap(*juce::parseXML("<Other ver=\"1.1\"><assign midiKey=\"1\" instrument=\"SD\"/></Other>"));
    EXPECT_TRUE(mapOf(plugin).empty()) << "another root changes nothing";

    // A saved map and a control map start the next instance; an older control map is read too.
    juce::TemporaryFile drumMap(".qddrmap"), controlMap(".qdccmap"), settings(".ini");
    plugin.loadDrumMap(*juce::parseXML("<DrumMap ver=\"1.1\" name=\"Two\"><assign midiKey=\"20\" instrument=\"CB\"/><assign midiKey=\"21\" instrument=\"BD\"/></DrumMap>"));
    ASSERT_TRUE(plugin.saveDrumMap(drumMap.getFile()));
    EXPECT_TRUE(plugin.getDrumMapExtension() == ".qddrmap" && plugin.getDrumMapWildcard() == "*.qddrmap");
    plugin.loadMidiMap(*juce::parseXML("<MidiCCMap><assign CC=\"10\" param=\"SD Tone\"/></MidiCCMap>"));
    EXPECT_EQ(plugin.getMidiControl().getAssignment(10), plugin.getParameterManager().getParameter("Snare Drum Tone"));
    const auto xml = juce::parseXML(drumMap.getFile());
    ASSERT_NE(xml, nullptr);
    EXPECT_TRUE(xml->getStringAttribute("application") == "Quindrel" && xml->getStringAttribute("ver") == "1.1" && xml->getChildElement(0)->getIntAttribute("midiKey") == 20);

    controlMap.getFile().replaceWithText("<MidiControlMap name=\"Quindrel\"><assign CC=\"74\" param=\"Cymbal Tone\"/></MidiControlMap>");
    const auto resources = "<ResourcesSettings><DrumMap default=\"userDefinedDrumMap\" file=\"" + drumMap.getFile().getFullPathName() +
                           "\"/><MidiCCMap default=\"userDefinedMidiCCMap\" file=\"" + controlMap.getFile().getFullPathName() + "\"/></ResourcesSettings>";
    H::writeSettings(settings.getFile(), resources);
    {
        PluginTestHost next(48000.0, 512, settings.getFile());
        EXPECT_EQ(next.plugin->getDrumMapName(), "Two");
        EXPECT_EQ(mapOf(*next.plugin), (std::map<int, int>{ { 20, 12 }, { 21, 0 } }));
        EXPECT_EQ(next.plugin->getMidiControl().getAssignment(74), next.plugin->getParameterManager().getParameter("Cymbal Tone"));
    }
    // The choices are written back when the instance goes.
    const auto written = juce::parseXML(settings.getFile());
    ASSERT_NE(written, nullptr);
    EXPECT_EQ(oneLine(written->getChildByName("ResourcesSettings")->getChildByName("MidiCCMap")), oneLine(juce::parseXML(resources)->getChildByName("MidiCCMap")));
}

TEST(PluginPaths, SettingsLiveInTheUsersFolderNeverInABundle)
{
    const juce::File config("/home/someone/.config"), host("/usr/bin/some-host");
    for (const char* module : { "/usr/lib/lv2/Quindrel.lv2/Quindrel.so", "/home/someone/.vst3/Quindrel.vst3/Contents/x86_64-linux/Quindrel.so", "/home/someone/bin/Quindrel" })
    {
        const auto paths = PluginPaths::forModule("Quindrel", juce::File(module), host, config);
        EXPECT_TRUE(paths.pluginFile == juce::File(module) && paths.writeSettings) << module;
        EXPECT_EQ(paths.settingsFile, juce::File("/home/someone/.config/Quindrel/Quindrel.ini")) << module;
    }
    // The build runs JUCE's LV2 manifest helper on the plug-in: that instance
    // must neither take the build machine's settings into the manifest nor
    // leave a settings file behind.
    EXPECT_EQ(PluginPaths::forModule("Quindrel", juce::File("/build/LV2/Quindrel.lv2/Quindrel.so"), juce::File("/build/juce_lv2_helper"), config).settingsFile, juce::File());
}
