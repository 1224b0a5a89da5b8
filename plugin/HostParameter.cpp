#include "plugin/HostParameter.h"

#include "plugin/BasePlugin.h"

HostParameter::HostParameter(BasePlugin& ownerToUse, int indexToUse, const juce::String& identifierToUse, float defaultValueToUse, bool isToggle)
    : juce::AudioProcessorParameterWithID(juce::ParameterID(identifierToUse, 1), identifierToUse)
    , owner(ownerToUse)
    , index(indexToUse)
    , defaultValue(defaultValueToUse)
    , toggle(isToggle)
{
}

float HostParameter::getValue() const
{
    return owner.getHostParameterValue(index);
}

void HostParameter::setValue(float newValue)
{
    owner.setHostParameterValue(index, newValue);
}

juce::String HostParameter::getName(int maximumStringLength) const
{
    return owner.getHostParameterName(index).substring(0, maximumStringLength);
}

juce::String HostParameter::getText(float value, int maximumStringLength) const
{
    return owner.getHostParameterTextFor(index, value).substring(0, maximumStringLength);
}

float HostParameter::getValueForText(const juce::String& text) const
{
    const auto trimmed = text.trim();

    if (toggle)
        return (trimmed.equalsIgnoreCase("on") || trimmed.getFloatValue() >= 0.5f) ? 1.0f : 0.0f;

    // Percentages are shown as 0 to 100.
    if (trimmed.endsWithChar('%'))
        return juce::jlimit(0.0f, 1.0f, trimmed.dropLastCharacters(1).getFloatValue() / 100.0f);

    return juce::jlimit(0.0f, 1.0f, trimmed.getFloatValue());
}

bool HostParameter::isAutomatable() const
{
    return owner.isHostParameterAutomatable(index);
}

juce::String HostParameter::makeIdentifier(const juce::String& name, int index)
{
    juce::String result;
    for (auto c : name.toLowerCase())
        result << (juce::CharacterFunctions::isLetterOrDigit(c) ? juce::String::charToString(c) : juce::String("_"));

    if (result.isEmpty() || !juce::CharacterFunctions::isLetter(result[0]))
        result = "parameter_" + juce::String(index);
    return result;
}
