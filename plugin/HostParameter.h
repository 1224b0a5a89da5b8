#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

class BasePlugin;

// What the host sees of one parameter: the host index is the parameter id.
// Value, text and name come from the plug-in, so that the plug-in's own
// parameters stay the one source of truth; a change made by the host is
// applied with its echo back to the host suppressed. Called on any thread the
// host chooses.
class HostParameter : public juce::AudioProcessorParameterWithID
{
public:
    HostParameter(BasePlugin& owner, int index, const juce::String& identifier, float defaultValue, bool isToggle);

    // A stable identifier made from the parameter's name ("bass_drum_level"),
    // which LV2 hosts use in the parameter's URI and VST3 hosts hash.
    static juce::String makeIdentifier(const juce::String& name, int index);

    float getValue() const override;
    void setValue(float newValue) override;
    float getDefaultValue() const override { return defaultValue; }
    juce::String getName(int maximumStringLength) const override;
    juce::String getLabel() const override { return {}; }
    juce::String getText(float value, int maximumStringLength) const override;
    float getValueForText(const juce::String& text) const override;
    bool isAutomatable() const override;
    bool isBoolean() const override { return toggle; }
    bool isDiscrete() const override { return toggle; }
    int getNumSteps() const override { return toggle ? 2 : AudioProcessorParameter::getNumSteps(); }

private:
    BasePlugin& owner;
    const int index;
    const float defaultValue;
    const bool toggle;
};
