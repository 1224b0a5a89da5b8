#include "plugin/BasePluginOldStyle.h"

#include "parameters/StateParameters.h"

BasePluginOldStyle::BasePluginOldStyle(const BusesProperties& buses, const PluginPaths& paths)
    : BasePlugin(buses, paths)
{
    addPresetParameters(parameterManager);
}

void BasePluginOldStyle::initialise()
{
    createHostParameters();

    if (!lastDirectory.isDirectory())
        lastDirectory = juce::File::getSpecialLocation(juce::File::userDocumentsDirectory);

    midiControl->setApplicationName(getPluginName());
    parameterManager.addListenerToAll(this);
    readUserSettingsFile();
    midiControl->loadDefaultMapIfAsked();
    afterInitialise();
}

void BasePluginOldStyle::loadUserSettings(const juce::XmlElement& xml)
{
    if (!canLoadUserSettings(xml))
        return;

    for (auto* child : xml.getChildIterator())
    {
        if (child->hasTagName("PluginDirectories"))
        {
            if (auto* recent = child->getChildByName("RecentlyUsed"))
            {
                const juce::File directory(recent->getStringAttribute("dir"));
                if (juce::File::isAbsolutePath(recent->getStringAttribute("dir")) && directory.isDirectory())
                    lastDirectory = directory;
            }
        }
        else if (child->hasTagName("ResourcesSettings"))
        {
            loadResourcesSettings(*child);
        }
    }
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createUserSettings()
{
    auto xml = std::make_unique<juce::XmlElement>("UserSettings");
    xml->setAttribute("application", getPluginName());

    auto* directories = xml->createNewChildElement("PluginDirectories");
    directories->createNewChildElement("RecentlyUsed")->setAttribute("dir", lastDirectory.getFullPathName());

    if (auto resources = createResourcesSettings())
        xml->addChildElement(resources.release());

    return xml;
}

void BasePluginOldStyle::loadResourcesSettings(const juce::XmlElement& xml)
{
    if (!xml.hasTagName("ResourcesSettings"))
        return;

    if (auto* map = xml.getChildByName("MidiCCMap"))
    {
        const auto word = map->getStringAttribute("default");
        if (word == "noMapping")
        {
            midiControl->setLoadDefaultMap(false);
        }
        else if (word == "userDefinedMidiCCMap")
        {
            midiControl->setLoadDefaultMap(true);
            midiControl->setDefaultMapFile(juce::File(map->getStringAttribute("file")).getFullPathName());
        }
    }
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createResourcesSettings()
{
    auto xml = std::make_unique<juce::XmlElement>("ResourcesSettings");

    auto* map = xml->createNewChildElement("MidiCCMap");
    map->setAttribute("default", midiControl->getLoadDefaultMap() ? "userDefinedMidiCCMap" : "noMapping");
    if (midiControl->getLoadDefaultMap())
        map->setAttribute("file", midiControl->getDefaultMapFile());

    return xml;
}
