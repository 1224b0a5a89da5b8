#include "PluginTestHost.h"

#include "parameters/ParameterIds.h"

#include <gtest/gtest.h>

namespace
{
using H = PluginTestHost;

// Channels that carry any sound.
std::vector<int> soundingChannels(const juce::AudioBuffer<float>& buffer)
{
    std::vector<int> result;
    for (int c = 0; c < buffer.getNumChannels(); ++c)
        if (H::peak(buffer, c) > 0.0f)
            result.push_back(c);
    return result;
}

bool sidesEqual(const juce::AudioBuffer<float>& buffer, int left)
{
    for (int i = 0; i < buffer.getNumSamples(); ++i)
        if (buffer.getSample(left, i) != buffer.getSample(left + 1, i))
            return false;
    return true;
}
} // namespace

TEST(PluginOutputs, StereoBusesCarryEachInstrumentOnBothSidesAndThePulseOnItsOwn)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    plugin.setInternalSequencer(false);
    EXPECT_TRUE(plugin.getTotalNumOutputChannels() == 24 && plugin.getBusCount(false) == 12);
    EXPECT_TRUE(plugin.getBus(false, 0)->getName() == "QD1" && plugin.getBus(false, 11)->getName() == "QD12");

    // All on output 1 by default, unpanned; the trigger pulse, for output 12, off.
    const auto out = host.render(2000, { H::noteOn(0, 36), H::noteOn(0, 75) });
    EXPECT_EQ(soundingChannels(out), (std::vector<int>{ 0, 1 }));
    EXPECT_TRUE(sidesEqual(out, 0));
    EXPECT_EQ(plugin.getTriggerOutput(), 12);

    plugin.setTriggerOut(true, 0); // the bass drum fires the pulse
    const auto pulse = host.render(48000, { H::noteOn(100, 38), H::noteOn(20000, 36) });
    EXPECT_LT(H::peak(pulse, 22, 0, 19000), 1.0e-12f) << "the snare is not the source, nor the bass drum hit before";
    EXPECT_GT(H::peak(pulse, 22, 19900, 4800), 0.05f);
    EXPECT_TRUE(sidesEqual(pulse, 22));
}

TEST(PluginOutputs, MonoOutputsFromTheUserSettingsAndFewerChannelsThanDeclared)
{
    juce::TemporaryFile settings(".ini");
    PluginTestHost host(48000.0, 512, H::writeSettings(settings.getFile(), "<AudioOutputSettings><OutCharacteristics type=\"mono\"/></AudioOutputSettings>"));
    auto& plugin = *host.plugin;
    plugin.setInternalSequencer(false);
    EXPECT_TRUE(plugin.getOutputType() == DrumMachine::monoOutputs && plugin.getTotalNumOutputChannels() == 12);

    plugin.getParameterManager().setInt(ParameterIds::outputNumber + 0, 3);
    plugin.getParameterManager().setInt(ParameterIds::outputNumber + 1, 12);
    EXPECT_EQ(soundingChannels(host.render(2000, { H::noteOn(0, 36), H::noteOn(0, 38) })), (std::vector<int>{ 2, 11 }));

    // A host giving 8 channels loses output 12, and nothing else happens.
    juce::AudioBuffer<float> small(8, 512);
    juce::MidiBuffer midi;
    midi.addEvent(juce::MidiMessage::noteOn(1, 36, (juce::uint8) 100), 0);
    midi.addEvent(juce::MidiMessage::noteOn(1, 38, (juce::uint8) 100), 0);
    plugin.processBlock(small, midi);
    EXPECT_EQ(soundingChannels(small), (std::vector<int>{ 2 }));
}

TEST(PluginOutputs, SettingsXmlSkipsBadRowsAndRoundTrips)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    plugin.loadAudioOutputSettings(*juce::parseXML("<AudioOutputSettings><TriggerOut state=\"on\" instrument=\"AC\" output=\"7\"/>"
                                                   "<OutAssignations><BD out=\"4\"/><SD out=\"0\"/><CL out=\"13\"/>"
                                                   "<AC out=\"2\"/><XX out=\"2\"/><CH out=\"12\"/></OutAssignations></AudioOutputSettings>"),
                                   false);
    for (const auto& [instrument, output] : { std::pair{ 0, 4 }, { 1, 1 }, { 8, 1 }, { 16, 12 } })
        EXPECT_EQ(plugin.getInstrumentOutput(instrument), output) << instrument;
    EXPECT_TRUE(plugin.getCore()->isTriggerOutEnabled() && plugin.getCore()->triggerOutSource == 17);
    EXPECT_EQ(plugin.getTriggerOutput(), 7) << "a song keeps the output its pulse goes to";

    const auto written = plugin.createAudioOutputSettings(false);
    EXPECT_TRUE(written->getChildByName("TriggerOut")->getStringAttribute("instrument") == "AC" && written->getChildByName("TriggerOut")->getIntAttribute("output") == 7);
    EXPECT_EQ(written->getChildByName("OutAssignations")->getChildByName("BD")->getIntAttribute("out"), 4);
    EXPECT_EQ(written->getChildByName("OutAssignations")->getNumChildElements(), 17);
}
