#pragma once

#include <juce_core/juce_core.h>

// Identity of a plug-in of this family, as shown in the about box and in
// support reports.
class SoftwareDesignation
{
public:
    virtual ~SoftwareDesignation() = default;

    virtual juce::String getProductName() const = 0;
    virtual juce::String getCodeName() const = 0;
    virtual juce::String getVersion() const = 0;
    virtual juce::String getHomePage() const = 0;
    virtual juce::String getYear() const = 0;
    virtual juce::String getPluginPath() const = 0;
    virtual juce::String getBuildDate() const = 0;
    virtual juce::String getEdition() const = 0;
    virtual juce::String getBuildNumber() const = 0;
    virtual juce::String getFormatName() const = 0;
    virtual juce::String getArchitecture() const = 0;
    virtual juce::String getPatchLevel() const = 0;
};
