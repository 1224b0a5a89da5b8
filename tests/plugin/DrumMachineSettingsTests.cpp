#include "PluginTestHost.h"

#include "parameters/ParameterIds.h"
#include "sequencer/QuindrelSeq.h"

#include <gtest/gtest.h>

namespace
{
juce::File writeSettings(const juce::File& file, const juce::String& children)
{
    file.replaceWithText("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<UserSettings application=\"Quindrel\">" + children + "</UserSettings>\n");
    return file;
}

juce::String oneLine(const juce::XmlElement* xml)
{
    return xml == nullptr ? juce::String() : xml->toString(juce::XmlElement::TextFormat().singleLine().withoutHeader());
}
} // namespace

TEST(PluginUserSettings, SequencerDefaultsAndOutputNumbersReachTheLiveValuesAndComeBack)
{
    const juce::TemporaryFile settings(".ini");
    const juce::String sequencer = "<InternalSequencer><IntSeq state=\"off\"/><IntSync state=\"off\"/><HostMode state=\"on\"/>"
                                   "<NoteOff state=\"on\"/><HostPlayDetection type=\"byLowestCNoteOn\"/></InternalSequencer>";
    const juce::String outputs = "<AudioOutputSettings><OutCharacteristics type=\"stereo\"/><OutAssignations>";
    juce::String assignations;
    for (int i = 0; i < instrumentCount; ++i)
    {
        const int output = i == 0 ? 4 : i == 16 ? 12
                                                : 1;
        assignations << "<" << shortCodes[i] << " out=\"" << output << "\"/>";
    }
    writeSettings(settings.getFile(), outputs + assignations.replace("SD out=\"1\"", "SD out=\"13\"") + "</OutAssignations></AudioOutputSettings>" + sequencer);
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
    EXPECT_EQ(oneLine(written->getChildByName("AudioOutputSettings")), outputs + assignations + "</OutAssignations></AudioOutputSettings>");
}

TEST(PluginUserSettings, PatternResourcesOfEveryKindAreLoadedAndWrittenBack)
{
    const auto folder = juce::File::createTempFile("quindrel-settings");
    folder.createDirectory();
    const auto userBank = folder.getChildFile("mine.qdptrbH");
    {
        QuindrelSeq source(nullptr, nullptr);
        source.getHostPatternAt(0).setName("Mine");
        source.getHostPatternAt(0).setTrackString(0, "o.o.");
        ASSERT_TRUE(source.saveBankFile(userBank, DrumMachineSeq::hostType));
    }

    const auto settings = folder.getChildFile("Quindrel.ini");
    const auto resources = "<ResourcesSettings><DMSeqRes><HostPatterns default=\"userDefinedPatterns\" file=\"" + userBank.getFullPathName() +
                           "\"/><NativePatterns default=\"clearPatterns\"/><Patterns default=\"factoryPatterns\"/></DMSeqRes></ResourcesSettings>";
    writeSettings(settings, resources);
    {
        PluginTestHost host(48000.0, 512, settings);
        auto& seq = *host.plugin->getQuindrelSeq();
        EXPECT_EQ(seq.getPatternName(0, DrumMachineSeq::hostType), "Mine");
        EXPECT_EQ(seq.getHostPatternAt(0).getTrackString(0), "o.o.............");
        EXPECT_EQ(seq.getPatternName(3, DrumMachineSeq::nativeType), "Pattern 4") << "native patterns start cleared";
        EXPECT_EQ(seq.getNativePatternAt(3).getVariation(0).getPart(0).getTrackString(0), "................");
    }
    const auto written = juce::parseXML(settings);
    ASSERT_NE(written, nullptr);
    const auto* dmSeqRes = written->getChildByName("ResourcesSettings")->getChildByName("DMSeqRes");
    EXPECT_EQ(oneLine(dmSeqRes), oneLine(juce::parseXML(resources)->getChildByName("DMSeqRes")));

    // An unknown word leaves the kind as it was: the factory's.
    writeSettings(settings, "<ResourcesSettings><DMSeqRes><NativePatterns default=\"someOther\"/></DMSeqRes></ResourcesSettings>");
    {
        PluginTestHost host(48000.0, 512, settings);
        EXPECT_NE(host.plugin->getQuindrelSeq()->getPatternName(0, DrumMachineSeq::nativeType), "Pattern 1");
    }
    folder.deleteRecursively();
}

TEST(PluginHostState, GarbageStillTellsTheListenersThatAStateCame)
{
    PluginTestHost host;
    struct Listener : BasePlugin::Listener
    {
        void pluginStateRestored(BasePlugin&) override { ++restored; }
        int restored = 0;
    } listener;
    host.plugin->addListener(&listener);

    const char garbage[] = "\x01\x02not a state at all";
    host.plugin->setStateInformation(garbage, (int) sizeof garbage);
    host.plugin->setStateInformation(nullptr, 0);
    juce::MessageManager::getInstance()->runDispatchLoopUntil(50);
    EXPECT_EQ(listener.restored, 1) << "two restores before the message loop ran are told once";
    host.plugin->removeListener(&listener);
}
