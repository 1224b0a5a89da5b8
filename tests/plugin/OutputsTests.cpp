#include "PluginTestHost.h"

#include "parameters/ParameterIds.h"

#include <gtest/gtest.h>

namespace
{
// Channels that carry any sound.
std::vector<int> soundingChannels(const juce::AudioBuffer<float>& buffer)
{
    std::vector<int> result;
    for (int c = 0; c < buffer.getNumChannels(); ++c)
        if (buffer.getMagnitude(c, 0, buffer.getNumSamples()) > 0.0f)
            result.push_back(c);
    return result;
}
} // namespace

TEST(PluginOutputs, StereoBusesCarryEachInstrumentOnBothSides)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    plugin.setInternalSequencer(false);

    EXPECT_EQ(plugin.getTotalNumOutputChannels(), 24);
    EXPECT_EQ(plugin.getBusCount(false), 12);
    EXPECT_EQ(plugin.getBus(false, 0)->getName(), "QD1");
    EXPECT_EQ(plugin.getBus(false, 11)->getName(), "QD12");

    // All on output 1 by default.
    auto out = host.render(2000, { PluginTestHost::noteOn(0, 36), PluginTestHost::noteOn(0, 75) });
    EXPECT_EQ(soundingChannels(out), (std::vector<int>{ 0, 1 }));
    for (int i = 0; i < out.getNumSamples(); ++i)
        ASSERT_EQ(out.getSample(0, i), out.getSample(1, i)) << "a pair carries the instrument twice, unpanned";

    host.render(48000 * 3);                                                 // let the tails end
    plugin.getParameterManager().setInt(ParameterIds::outputNumber + 8, 3); // claves to output 3
    EXPECT_EQ(plugin.getInstrumentOutput(8), 3);
    out = host.render(2000, { PluginTestHost::noteOn(0, 75) });
    EXPECT_EQ(soundingChannels(out), (std::vector<int>{ 4, 5 }));
}

TEST(PluginOutputs, MonoOutputsFromTheUserSettingsAndFewerChannelsThanDeclared)
{
    juce::TemporaryFile settings(".ini");
    PluginTestHost host(48000.0, 512, PluginTestHost::writeMonoSettings(settings.getFile()));
    auto& plugin = *host.plugin;
    plugin.setInternalSequencer(false);
    EXPECT_EQ(plugin.getOutputType(), DrumMachine::monoOutputs);
    EXPECT_EQ(plugin.getTotalNumOutputChannels(), 12);

    plugin.getParameterManager().setInt(ParameterIds::outputNumber + 0, 3);
    plugin.getParameterManager().setInt(ParameterIds::outputNumber + 1, 12);
    auto out = host.render(2000, { PluginTestHost::noteOn(0, 36), PluginTestHost::noteOn(0, 38) });
    EXPECT_EQ(soundingChannels(out), (std::vector<int>{ 2, 11 }));

    // A host giving 8 channels loses output 12, and nothing else happens.
    juce::AudioBuffer<float> small(8, 512);
    juce::MidiBuffer midi;
    midi.addEvent(juce::MidiMessage::noteOn(1, 36, (juce::uint8) 100), 0);
    midi.addEvent(juce::MidiMessage::noteOn(1, 38, (juce::uint8) 100), 0);
    plugin.processBlock(small, midi);
    EXPECT_EQ(soundingChannels(small), (std::vector<int>{ 2 }));
}

TEST(PluginOutputs, TriggerOutPulseGoesToItsOutputWhenEnabled)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    plugin.setInternalSequencer(false);
    EXPECT_EQ(plugin.getTriggerOutput(), 12);

    // Disabled: nothing on output 12.
    auto out = host.render(4800, { PluginTestHost::noteOn(0, 36) });
    EXPECT_EQ(out.getMagnitude(22, 0, 4800), 0.0f);

    plugin.setTriggerOut(true, 0); // bass drum fires the pulse
    out = host.render(48000, { PluginTestHost::noteOn(100, 38), PluginTestHost::noteOn(20000, 36) });
    EXPECT_LT(out.getMagnitude(22, 0, 19000), 1.0e-12f) << "the snare is not the source";
    EXPECT_GT(out.getMagnitude(22, 19900, 4800), 0.05f);
    for (int i = 0; i < out.getNumSamples(); ++i)
        ASSERT_EQ(out.getSample(22, i), out.getSample(23, i));
}

TEST(PluginOutputs, SettingsXmlSkipsBadRowsAndRoundTrips)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;

    const auto xml = juce::parseXML("<AudioOutputSettings><TriggerOut state=\"on\" instrument=\"AC\" output=\"7\"/>"
                                    "<OutAssignations><BD out=\"4\"/><SD out=\"0\"/><CL out=\"13\"/>"
                                    "<AC out=\"2\"/><XX out=\"2\"/><CH out=\"12\"/></OutAssignations></AudioOutputSettings>");
    plugin.loadAudioOutputSettings(*xml, false);
    EXPECT_EQ(plugin.getInstrumentOutput(0), 4);
    EXPECT_EQ(plugin.getInstrumentOutput(1), 1);
    EXPECT_EQ(plugin.getInstrumentOutput(8), 1);
    EXPECT_EQ(plugin.getInstrumentOutput(16), 12);
    EXPECT_EQ(plugin.getParameterManager().getInt(ParameterIds::outputNumber + 16), 12);
    EXPECT_TRUE(plugin.getCore()->isTriggerOutEnabled());
    EXPECT_EQ(plugin.getCore()->triggerOutSource, 17);
    EXPECT_EQ(plugin.getTriggerOutput(), 7) << "a song keeps the output its pulse goes to";

    const auto written = plugin.createAudioOutputSettings(false);
    EXPECT_EQ(written->getChildByName("TriggerOut")->getStringAttribute("instrument"), "AC");
    EXPECT_EQ(written->getChildByName("TriggerOut")->getIntAttribute("output"), 7);
    EXPECT_EQ(written->getChildByName("OutAssignations")->getChildByName("BD")->getIntAttribute("out"), 4);
    EXPECT_EQ(written->getChildByName("OutAssignations")->getNumChildElements(), 17);
}
