#include "plugin/HostParameter.h"

#include "plugin/BasePlugin.h"

HostParameter::HostParameter(BasePlugin& ownerToUse, int indexToUse, float defaultValueToUse, bool isToggle)
    : owner(ownerToUse)
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
