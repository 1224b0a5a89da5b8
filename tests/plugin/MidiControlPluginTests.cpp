#include "PluginTestHost.h"

#include "parameters/ParameterIds.h"

#include <gtest/gtest.h>

namespace
{
float rms(const juce::AudioBuffer<float>& buffer, int start, int length)
{
    return buffer.getRMSLevel(0, start, length);
}
} // namespace

TEST(PluginMidiControl, AMappedControllerMovesItsParameterAtItsSample)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    plugin.setInternalSequencer(false);
    auto& control = plugin.getMidiControl();
    control.assign(7, plugin.getParameterManager().getParameter("Bass Drum Level"), true);

    // A long bass drum, its level pulled to 0 by controller 7 at sample 4800.
    plugin.getParameterManager().setNormalised(19, 1.0f); // Bass Drum Decay
    const auto out = host.render(12000, { PluginTestHost::noteOn(0, 36),
                                          { 4800, juce::MidiMessage::controllerEvent(3, 7, 0) } });
    EXPECT_EQ(plugin.getParameterManager().getNormalised(ParameterIds::level), 0.0);
    EXPECT_GT(rms(out, 4700, 100), 1.0e-3f);
    EXPECT_LT(rms(out, 9000, 1000), rms(out, 4700, 100) * 1.0e-3f) << "the level did not fall after the controller";
}

TEST(PluginMidiControl, AllNotesOffNeverReachesTheControlMap)
{
    PluginTestHost host;
    auto& control = host.plugin->getMidiControl();
    control.setLearnMode(true);

    host.render(256, { { 10, juce::MidiMessage::controllerEvent(1, 123, 0) } });
    EXPECT_EQ(control.getLearnController(), -1);

    host.render(256, { { 10, juce::MidiMessage::controllerEvent(1, 20, 64) } });
    EXPECT_EQ(control.getLearnController(), 20);
}

TEST(PluginMidiControl, OlderMapsAndTheDefaultMapOfTheUserSettings)
{
    {
        PluginTestHost host;
        auto& plugin = *host.plugin;
        plugin.loadMidiMap(*juce::parseXML("<MidiCCMap><assign CC=\"10\" param=\"SD Tone\"/></MidiCCMap>"));
        EXPECT_EQ(plugin.getMidiControl().getAssignment(10), plugin.getParameterManager().getParameter("Snare Drum Tone"));
    }

    juce::TemporaryFile map(".qdccmap");
    map.getFile().replaceWithText("<MidiControlMap name=\"Quindrel\"><assign CC=\"74\" param=\"Cymbal Tone\"/></MidiControlMap>");
    juce::TemporaryFile settings(".ini");
    settings.getFile().replaceWithText("<UserSettings application=\"Quindrel\"><ResourcesSettings>"
                                       "<MidiCCMap default=\"userDefinedMidiCCMap\" file=\"" +
                                       map.getFile().getFullPathName() + "\"/></ResourcesSettings></UserSettings>");
    {
        PluginTestHost host(48000.0, 512, settings.getFile());
        EXPECT_EQ(host.plugin->getMidiControl().getAssignment(74), host.plugin->getParameterManager().getParameter("Cymbal Tone"));
    }

    // The setting is written back when the instance goes.
    const auto written = juce::parseXML(settings.getFile());
    ASSERT_NE(written, nullptr);
    const auto* resources = written->getChildByName("ResourcesSettings");
    ASSERT_NE(resources, nullptr);
    EXPECT_EQ(resources->getChildByName("MidiCCMap")->getStringAttribute("default"), "userDefinedMidiCCMap");
    EXPECT_EQ(resources->getChildByName("MidiCCMap")->getStringAttribute("file"), map.getFile().getFullPathName());
}
