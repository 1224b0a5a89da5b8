#include "PluginTestHost.h"

#include "parameters/ParameterIds.h"

#include <gtest/gtest.h>

namespace
{
struct RecordingListener : juce::AudioProcessorListener
{
    void audioProcessorParameterChanged(juce::AudioProcessor*, int index, float value) override
    {
        changes.push_back({ index, value });
    }
    void audioProcessorChanged(juce::AudioProcessor*, const ChangeDetails&) override {}
    void audioProcessorParameterChangeGestureBegin(juce::AudioProcessor*, int index) override { gestures.push_back(index); }
    void audioProcessorParameterChangeGestureEnd(juce::AudioProcessor*, int index) override { gestures.push_back(-index - 1); }

    std::vector<std::pair<int, float>> changes;
    std::vector<int> gestures;
};
} // namespace

TEST(PluginHostParameters, TheHostSeesIds0To110WithNamesAndTexts)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    const auto& parameters = plugin.getParameters();
    ASSERT_EQ(parameters.size(), 111);

    EXPECT_EQ(parameters[0]->getName(100), "Bass Drum Level");
    EXPECT_EQ(parameters[24]->getName(100), "Low Conga Tunning");
    EXPECT_EQ(parameters[110]->getName(100), "Accent Rand Threshold");
    EXPECT_EQ(plugin.getHostParameterName(111), "");
    EXPECT_EQ(plugin.getHostParameterValue(111), 0.0f);
    plugin.setHostParameterValue(111, 0.3f); // changes nothing
    EXPECT_EQ(plugin.getParameterManager().getInt(ParameterIds::outputNumber), 1);

    for (auto* parameter : parameters)
        EXPECT_TRUE(parameter->isAutomatable());

    EXPECT_EQ(parameters[18]->getText(0.25f, 100), "0.250");
    EXPECT_EQ(parameters[59]->getText(1.0f, 100), "On");
    EXPECT_EQ(parameters[76]->getText(0.0f, 100), "Off");
    EXPECT_TRUE(parameters[59]->isBoolean());
    EXPECT_EQ(parameters[93]->getText(0.206f, 100), "21%");
    EXPECT_EQ(parameters[93]->getCurrentValueAsText(), juce::String("20%"));
    EXPECT_EQ(parameters[32]->getDefaultValue(), 1.0f) << "Low Tom Snappy starts at 1";
    EXPECT_NEAR(parameters[93]->getValueForText("35%"), 0.35f, 1e-6f);

    EXPECT_EQ(plugin.getParameterDisplayText(ParameterIds::patternShuffle), "0%");

    // Percentages round half away from zero, not to even.
    EXPECT_EQ(parameters[93]->getText(0.125f, 100), "13%");
    EXPECT_EQ(parameters[110]->getText(0.625f, 100), "63%");
    auto& params = plugin.getParameterManager();
    for (const int id : { ParameterIds::patternShuffle, ParameterIds::patternFlam })
    {
        params.setNormalised(id, 0.125f);
        EXPECT_EQ(plugin.getParameterDisplayText(id), "13%") << params.getName(id);
        params.setNormalised(id, 0.625f);
        EXPECT_EQ(plugin.getParameterDisplayText(id), "63%") << params.getName(id);
    }
    EXPECT_EQ(plugin.getParameterDisplayText(ParameterIds::patternTempo), "120");
    EXPECT_EQ(plugin.getParameterDisplayText(150), "");
}

TEST(PluginHostParameters, HostChangesAreNotEchoedButOtherChangesReachTheHost)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    RecordingListener listener;
    plugin.addListener(&listener);

    plugin.getParameters()[19]->setValue(0.8f); // the host automates Bass Drum Decay
    EXPECT_FLOAT_EQ((float) plugin.getParameterManager().getNormalised(19), 0.8f);
    EXPECT_TRUE(listener.changes.empty());

    plugin.getParameterManager().setNormalised(19, 0.25f); // the panel moves it
    ASSERT_EQ(listener.changes.size(), 1u);
    EXPECT_EQ(listener.changes[0].first, 19);
    EXPECT_FLOAT_EQ(listener.changes[0].second, 0.25f);
    EXPECT_FLOAT_EQ(plugin.getParameters()[19]->getValue(), 0.25f);

    plugin.getParameterManager().setNormalised(ParameterIds::patternShuffle, 0.5f); // not a host parameter
    EXPECT_EQ(listener.changes.size(), 1u);

    auto* decay = plugin.getParameterManager().getParameter(19);
    decay->beginGesture();
    decay->endGesture();
    EXPECT_EQ(listener.gestures, (std::vector<int>{ 19, -20 }));

    plugin.removeListener(&listener);
}
