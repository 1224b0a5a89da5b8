#include "plugin/BasePlugin.h"

#include "editor/BasePluginEditor.h"
#include "editor/PluginEditorWindow.h"
#include "plugin/HostParameter.h"
#include "plugin/Resources.h"
#include "presets/XmlFiles.h"

PluginPaths PluginPaths::forLoadedModule(const juce::String& pluginName)
{
    // JUCE's folder for user data is ~/.config whatever XDG_CONFIG_HOME says.
    const auto xdgConfig = juce::SystemStats::getEnvironmentVariable("XDG_CONFIG_HOME", {});
    const auto userData = juce::File::isAbsolutePath(xdgConfig) ? juce::File(xdgConfig)
                                                                : juce::File::getSpecialLocation(juce::File::userApplicationDataDirectory);
    return forModule(pluginName,
                     juce::File::getSpecialLocation(juce::File::currentExecutableFile),
                     juce::File::getSpecialLocation(juce::File::hostApplicationPath),
                     userData);
}

PluginPaths PluginPaths::forModule(const juce::String& pluginName, const juce::File& module,
                                   const juce::File& hostExecutable, const juce::File& userDataDirectory)
{
    PluginPaths paths;
    paths.pluginFile = module;

    const auto host = hostExecutable.getFileName();
    if (host.startsWith("juce_lv2_helper") || host.startsWith("juce_vst3_helper"))
        return paths;

    paths.settingsFile = userDataDirectory.getChildFile(pluginName).getChildFile(pluginName + ".ini");
    return paths;
}

BasePlugin::BasePlugin(const BusesProperties& buses, const PluginPaths& paths)
    : juce::AudioProcessor(buses)
    , pluginFile(paths.pluginFile)
    , pluginDirectory(paths.pluginFile.getParentDirectory())
    , settingsFile(paths.settingsFile)
    , writeSettings(paths.writeSettings)
{
    hostParameters.ensureStorageAllocated(maxHostParameters);
    for (auto& value : hostParameterValues)
        value = 0.0f;
    for (auto& flag : ignoreParameterEcho)
        flag = 0;

    midiControl = std::make_unique<MidiControl>(parameterManager);
    parameterManager.loadFromXml(loadResourceText("parameters.xml"));
    events.loadFromText(loadResourceText("events.xml"));

    static constexpr const char* baseEvents[] = {
        "Options", "About", "Select next preset", "Select previous preset", "Browse presets",
        "Save Preset", "Save Preset As", "Copy current preset", "Paste copied preset",
        "Store current preset", "Toggle Midi Learn"
    };

    for (int i = 0; i < (int) std::size(baseEvents); ++i)
        events.add(1000 + i, baseEvents[i]);
}

BasePlugin::~BasePlugin()
{
    cancelPendingUpdate();
    midiControl.reset();
}

void BasePlugin::initialise()
{
    midiControl->setApplicationName(getPluginName());
    parameterManager.addListenerToAll(this);
    readUserSettingsFile();
    afterInitialise();
}

//==============================================================================
juce::AudioProcessorEditor* BasePlugin::createEditor()
{
    return new PluginEditorWindow(*this, createPluginEditor());
}

std::unique_ptr<BasePluginEditor> BasePlugin::createPluginEditor()
{
    return std::make_unique<BasePluginEditor>(this);
}

void BasePlugin::getStateInformation(juce::MemoryBlock& destData)
{
    if (auto xml = createStateXml())
        copyXmlToBinary(*xml, destData);

    stateSavedPending = 1;
    triggerAsyncUpdate();
}

void BasePlugin::setStateInformation(const void* data, int sizeInBytes)
{
    // A block nested deeper than any state would exhaust the parser's stack: it is no state.
    if (auto xml = XmlFiles::parseBinary(data, sizeInBytes))
        loadState(*xml);

    stateRestoredPending = 1;
    triggerAsyncUpdate();
}

void BasePlugin::getCurrentProgramStateInformation(juce::MemoryBlock& destData)
{
    if (auto xml = createCurrentProgramXml())
        copyXmlToBinary(*xml, destData);
}

void BasePlugin::setCurrentProgramStateInformation(const void* data, int sizeInBytes)
{
    if (auto xml = XmlFiles::parseBinary(data, sizeInBytes))
        loadCurrentProgramXml(*xml);
}

void BasePlugin::handleAsyncUpdate()
{
    if (stateRestoredPending.exchange(0) == 1)
        listeners.call([this](Listener& l)
                       { l.pluginStateRestored(*this); });

    if (stateSavedPending.exchange(0) == 1)
        listeners.call([this](Listener& l)
                       { l.pluginStateSaved(*this); });
}

//==============================================================================
bool BasePlugin::canLoadState(const juce::XmlElement& xml) const
{
    return xml.hasTagName("PluginState") && xml.getStringAttribute("application") == getPluginName();
}

void BasePlugin::loadState(const juce::XmlElement&)
{
}

std::unique_ptr<juce::XmlElement> BasePlugin::createStateXml()
{
    return {};
}

bool BasePlugin::canLoadUserSettings(const juce::XmlElement& xml) const
{
    return xml.hasTagName("UserSettings") && xml.getStringAttribute("application") == getPluginName();
}

void BasePlugin::readUserSettingsFile()
{
    if (settingsFile == juce::File() || !settingsFile.existsAsFile())
        return;

    if (auto xml = XmlFiles::parse(settingsFile))
        loadUserSettings(*xml);
}

void BasePlugin::writeUserSettingsFile()
{
    if (settingsFile == juce::File() || !writeSettings)
        return;

    if (auto xml = createUserSettings())
    {
        settingsFile.getParentDirectory().createDirectory();
        xml->writeTo(settingsFile); // UTF-8
    }
}

juce::String BasePlugin::getParameterDisplayText(int id) const
{
    if (auto* parameter = parameterManager.getParameter(id))
        return parameter->getText();

    return {};
}

//==============================================================================
void BasePlugin::createHostParameters()
{
    const int count = juce::jmin(getNumHostParameters(), maxHostParameters);

    {
        const juce::ScopedLock sl(hostParametersLock);
        hostParameters.clearQuick();
        for (int index = 0; index < count; ++index)
            hostParameters.add(parameterManager.getParameter(index));
    }
    {
        const juce::ScopedLock sl(hostIndexLock);
        hostIndexOfParameter.clear();
        for (int index = 0; index < count; ++index)
            if (parameterManager.getParameter(index) != nullptr)
                hostIndexOfParameter.set(index, index);
    }

    // The host's objects exist once, for the whole life of the instance.
    if (getParameters().isEmpty())
    {
        for (int index = 0; index < count; ++index)
        {
            const auto* parameter = parameterManager.getParameter(index);
            const float start = parameter != nullptr ? (float) parameter->getNormalised() : 0.0f;
            const auto identifier = HostParameter::makeIdentifier(parameter != nullptr ? parameter->getName() : juce::String(), index);
            addParameter(new HostParameter(*this, index, identifier, start, isHostParameterToggle(index)));
        }
    }
}

Parameter* BasePlugin::getHostParameterTarget(int index) const
{
    const juce::ScopedLock sl(hostParametersLock);
    return juce::isPositiveAndBelow(index, hostParameters.size()) ? hostParameters.getUnchecked(index) : nullptr;
}

HostParameter* BasePlugin::getHostParameterObject(int index) const
{
    const auto& objects = getParameters();
    return juce::isPositiveAndBelow(index, objects.size()) ? static_cast<HostParameter*>(objects.getUnchecked(index)) : nullptr;
}

int BasePlugin::getHostIndexOf(int id) const
{
    const juce::ScopedLock sl(hostIndexLock);
    return hostIndexOfParameter.contains(id) ? hostIndexOfParameter[id] : -1;
}

float BasePlugin::getHostParameterValue(int index) const
{
    if (!juce::isPositiveAndBelow(index, juce::jmin(getNumHostParameters(), maxHostParameters)))
        return 0.0f;

    if (auto* parameter = getHostParameterTarget(index))
        return (float) parameter->getNormalised();

    return hostParameterValues[(size_t) index];
}

void BasePlugin::setHostParameterValue(int index, float value)
{
    if (!juce::isPositiveAndBelow(index, juce::jmin(getNumHostParameters(), maxHostParameters)))
        return;

    hostParameterValues[(size_t) index] = value;

    if (auto* parameter = getHostParameterTarget(index))
    {
        ignoreParameterEcho[(size_t) index] = 1;
        parameter->setNormalised(value, true);
        ignoreParameterEcho[(size_t) index] = 0;
    }
}

juce::String BasePlugin::getHostParameterText(int index) const
{
    if (getHostParameterTarget(index) != nullptr)
        return getParameterDisplayText(index);

    if (juce::isPositiveAndBelow(index, maxHostParameters))
        return juce::String(hostParameterValues[(size_t) index].load());

    return {};
}

juce::String BasePlugin::getHostParameterTextFor(int index, float) const
{
    return getHostParameterText(index);
}

juce::String BasePlugin::getHostParameterName(int index) const
{
    if (!juce::isPositiveAndBelow(index, getNumHostParameters()))
        return {};

    if (auto* parameter = getHostParameterTarget(index))
        return parameter->getName();

    return "Parameter " + juce::String(index);
}

void BasePlugin::parameterChanged(Parameter& parameter)
{
    const int index = getHostIndexOf(parameter.getId());

    if (index < 0 || ignoreParameterEcho[(size_t) index] != 0)
        return;

    if (auto* hostParameter = getHostParameterObject(index))
        hostParameter->sendValueChangedMessageToListeners((float) parameter.getNormalised());
}

void BasePlugin::parameterGestureBegin(Parameter& parameter)
{
    if (auto* hostParameter = getHostParameterObject(getHostIndexOf(parameter.getId())))
        hostParameter->beginChangeGesture();
}

void BasePlugin::parameterGestureEnd(Parameter& parameter)
{
    if (auto* hostParameter = getHostParameterObject(getHostIndexOf(parameter.getId())))
        hostParameter->endChangeGesture();
}

//==============================================================================
std::optional<juce::MemoryBlock> BasePlugin::loadResourceData(const juce::String& nameAndType) const
{
    return Resources::loadResourceData(nameAndType);
}

juce::String BasePlugin::loadResourceText(const juce::String& nameAndType) const
{
    return Resources::loadResourceText(nameAndType);
}

bool BasePlugin::loadResourceImage(const juce::String& nameAndType, juce::Image& image) const
{
    return Resources::loadResourceImage(nameAndType, image);
}

juce::String BasePlugin::getFormatName() const
{
    return juce::AudioProcessor::getWrapperTypeDescription(wrapperType);
}

juce::String BasePlugin::getArchitecture() const
{
    return sizeof(void*) == 8 ? "64bit" : "32bit";
}
