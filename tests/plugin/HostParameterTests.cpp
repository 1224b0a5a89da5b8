#include "PluginTestHost.h"

#include "parameters/ParameterIds.h"

#include <gtest/gtest.h>

TEST(PluginHostParameters, TheHostSeesIds0To110WithNamesAndTextsAndHearsOnlyChangesItDidNotMake)
{
    PluginTestHost host;
    auto& plugin = *host.plugin;
    auto& params = plugin.getParameterManager();
    const auto& parameters = plugin.getParameters();
    ASSERT_EQ(parameters.size(), 111);
    EXPECT_TRUE(parameters[0]->getName(100) == "Bass Drum Level" && parameters[24]->getName(100) == "Low Conga Tunning" && parameters[110]->getName(100) == "Accent Rand Threshold");
    EXPECT_TRUE(plugin.getHostParameterName(111) == "" && plugin.getHostParameterValue(111) == 0.0f);
    plugin.setHostParameterValue(111, 0.3f);
    EXPECT_EQ(params.getInt(ParameterIds::outputNumber), 1) << "index 111 is no host parameter";

    const std::tuple<int, float, const char*> texts[] = {
        { 18, 0.25f, "0.250" }, { 59, 1.0f, "On" }, { 76, 0.0f, "Off" }, { 93, 0.206f, "21%" }, { 93, 0.125f, "13%" }, { 110, 0.625f, "63%" }, // half away from zero, not to even
    };
    for (const auto& [index, value, text] : texts)
        EXPECT_EQ(parameters[index]->getText(value, 100), text) << index << " at " << value;
    EXPECT_TRUE(parameters[59]->isBoolean());
    EXPECT_EQ(parameters[93]->getCurrentValueAsText(), juce::String("20%"));
    EXPECT_EQ(parameters[32]->getDefaultValue(), 1.0f) << "Low Tom Snappy starts at 1";
    EXPECT_NEAR(parameters[93]->getValueForText("35%"), 0.35f, 1e-6f);

    // What the panel's displays show of the pattern's settings.
    EXPECT_TRUE(plugin.getParameterDisplayText(ParameterIds::patternShuffle) == "0%" && plugin.getParameterDisplayText(ParameterIds::patternTempo) == "120");
    for (const int id : { ParameterIds::patternShuffle, ParameterIds::patternFlam })
        for (const auto& [value, text] : { std::pair{ 0.125f, "13%" }, { 0.625f, "63%" } })
        {
            params.setNormalised(id, value);
            EXPECT_EQ(plugin.getParameterDisplayText(id), text) << params.getName(id) << " at " << value;
        }

    // The host's own changes are not echoed back to it; other changes reach it.
    struct Recorder : juce::AudioProcessorListener
    {
        void audioProcessorParameterChanged(juce::AudioProcessor*, int index, float value) override { changes.push_back({ index, value }); }
        void audioProcessorChanged(juce::AudioProcessor*, const ChangeDetails&) override {}
        void audioProcessorParameterChangeGestureBegin(juce::AudioProcessor*, int index) override { gestures.push_back(index); }
        void audioProcessorParameterChangeGestureEnd(juce::AudioProcessor*, int index) override { gestures.push_back(-index - 1); }
        std::vector<std::pair<int, float>> changes;
        std::vector<int> gestures;
    } recorder;
    plugin.addListener(&recorder);

    plugin.getParameters()[19]->setValue(0.8f); // the host automates Bass Drum Decay
    EXPECT_FLOAT_EQ((float) params.getNormalised(19), 0.8f);
    EXPECT_TRUE(recorder.changes.empty());

    params.setNormalised(19, 0.25f);                          // the panel moves it
    params.setNormalised(ParameterIds::patternShuffle, 0.5f); // not a host parameter
    EXPECT_EQ(recorder.changes, (std::vector<std::pair<int, float>>{ { 19, 0.25f } }));
    EXPECT_FLOAT_EQ(plugin.getParameters()[19]->getValue(), 0.25f);

    params.getParameter(19)->beginGesture();
    params.getParameter(19)->endGesture();
    EXPECT_EQ(recorder.gestures, (std::vector<int>{ 19, -20 }));
    plugin.removeListener(&recorder);
}
