#pragma once

#include "plugin/BasePlugin.h"

// The family's frame with presets, banks and the files beside the plug-in:
// the recently used folder and the resource settings of the user settings
// file. Message thread.
class BasePluginOldStyle : public BasePlugin
{
public:
    BasePluginOldStyle(const BusesProperties& buses, const PluginPaths& paths);

    void initialise() override;
    void loadUserSettings(const juce::XmlElement& xml) override;
    std::unique_ptr<juce::XmlElement> createUserSettings() override;

    // The ResourcesSettings element of the user settings.
    virtual void loadResourcesSettings(const juce::XmlElement& xml);
    virtual std::unique_ptr<juce::XmlElement> createResourcesSettings();

    const juce::File& getLastDirectory() const { return lastDirectory; }
    void setLastDirectory(const juce::File& directory) { lastDirectory = directory; }

protected:
    juce::File lastDirectory;
};
