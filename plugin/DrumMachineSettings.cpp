// DrumMachine's parts of the user settings: sequencer defaults, output
// defaults, drum map source and the pattern resources. Message thread.

#include "plugin/DrumMachine.h"

#include "parameters/ParameterIds.h"
#include "presets/XmlFiles.h"

namespace
{
bool isOn(const juce::XmlElement& element)
{
    return element.getStringAttribute("state") == "on";
}

juce::String onOff(bool value)
{
    return value ? "on" : "off";
}

const char* const resourceKindNames[] = { "factoryPatterns", "clearPatterns", "userDefinedPatterns" };

void readPatternResource(const juce::XmlElement& element, int& kind, juce::String& file)
{
    const auto word = element.getStringAttribute("default");
    for (int k = 0; k < 3; ++k)
    {
        if (word == resourceKindNames[k])
        {
            kind = k;
            if (k == DrumMachineSeq::userDefinedPatterns)
                file = juce::File(element.getStringAttribute("file")).getFullPathName();
        }
    }
}

void writePatternResource(juce::XmlElement& parent, const char* tag, int kind, const juce::String& file)
{
    auto* element = parent.createNewChildElement(tag);
    element->setAttribute("default", resourceKindNames[juce::jlimit(0, 2, kind)]);
    if (kind == DrumMachineSeq::userDefinedPatterns)
        element->setAttribute("file", file);
}
} // namespace

int DrumMachine::readStoredOutputType(const juce::File& settingsFile)
{
    if (settingsFile == juce::File() || !settingsFile.existsAsFile())
        return stereoOutputs;

    const auto xml = XmlFiles::parse(settingsFile);
    if (xml == nullptr || !xml->hasTagName("UserSettings"))
        return stereoOutputs;

    if (auto* outputs = xml->getChildByName("AudioOutputSettings"))
        if (auto* characteristics = outputs->getChildByName("OutCharacteristics"))
            if (characteristics->getStringAttribute("type") == "mono")
                return monoOutputs;

    return stereoOutputs;
}

void DrumMachine::loadUserSettings(const juce::XmlElement& xml)
{
    BasePluginOldStyle::loadUserSettings(xml);

    if (!canLoadUserSettings(xml))
        return;

    for (auto* child : xml.getChildIterator())
    {
        if (child->hasTagName("AudioOutputSettings"))
        {
            loadAudioOutputSettings(*child, true);
        }
        else if (child->hasTagName("InternalSequencer"))
        {
            for (auto* row : child->getChildIterator())
            {
                if (row->hasTagName("IntSeq"))
                    defaultInternalSequencer = isOn(*row);
                else if (row->hasTagName("IntSync"))
                    defaultInternalSync = isOn(*row);
                else if (row->hasTagName("HostMode"))
                    defaultHostMode = isOn(*row);
                else if (row->hasTagName("NoteOff"))
                    defaultNoteOffMode = isOn(*row);
                else if (row->hasTagName("HostPlayDetection"))
                {
                    const auto type = row->getStringAttribute("type");
                    if (type == "byTransportChange")
                        hostPlayDetection = byTransportChange;
                    else if (type == "byLowestCNoteOn")
                        hostPlayDetection = byLowestCNoteOn;
                }
            }
        }
    }
}

std::unique_ptr<juce::XmlElement> DrumMachine::createUserSettings()
{
    auto xml = BasePluginOldStyle::createUserSettings();

    xml->addChildElement(createAudioOutputSettings(true).release());

    auto* sequencerSettings = xml->createNewChildElement("InternalSequencer");
    sequencerSettings->createNewChildElement("IntSeq")->setAttribute("state", onOff(defaultInternalSequencer));
    sequencerSettings->createNewChildElement("IntSync")->setAttribute("state", onOff(defaultInternalSync));
    sequencerSettings->createNewChildElement("HostMode")->setAttribute("state", onOff(defaultHostMode));
    sequencerSettings->createNewChildElement("NoteOff")->setAttribute("state", onOff(defaultNoteOffMode));
    sequencerSettings->createNewChildElement("HostPlayDetection")
        ->setAttribute("type", hostPlayDetection == byLowestCNoteOn ? "byLowestCNoteOn" : "byTransportChange");

    return xml;
}

void DrumMachine::loadResourcesSettings(const juce::XmlElement& xml)
{
    BasePluginOldStyle::loadResourcesSettings(xml);

    if (!xml.hasTagName("ResourcesSettings"))
        return;

    for (auto* child : xml.getChildIterator())
    {
        if (child->hasTagName("DMSeqRes") && sequencer != nullptr)
        {
            for (auto* row : child->getChildIterator())
            {
                if (row->hasTagName("HostPatterns"))
                    readPatternResource(*row, sequencer->hostResourceKind, sequencer->hostResourceFile);
                else if (row->hasTagName("NativePatterns"))
                    readPatternResource(*row, sequencer->nativeResourceKind, sequencer->nativeResourceFile);
                else if (row->hasTagName("Patterns"))
                    readPatternResource(*row, sequencer->patternsResourceKind, sequencer->patternsResourceFile);
            }
        }
        else if (child->hasTagName("DrumMap"))
        {
            const auto word = child->getStringAttribute("default");
            if (word == "factoryMapping")
            {
                drumMapSource = 0;
            }
            else if (word == "userDefinedDrumMap")
            {
                drumMapSource = 1;
                drumMapFile = juce::File(child->getStringAttribute("file")).getFullPathName();
            }
        }
    }
}

std::unique_ptr<juce::XmlElement> DrumMachine::createResourcesSettings()
{
    auto xml = BasePluginOldStyle::createResourcesSettings();

    if (sequencer != nullptr)
    {
        auto* resources = xml->createNewChildElement("DMSeqRes");
        writePatternResource(*resources, "HostPatterns", sequencer->hostResourceKind, sequencer->hostResourceFile);
        writePatternResource(*resources, "NativePatterns", sequencer->nativeResourceKind, sequencer->nativeResourceFile);
        writePatternResource(*resources, "Patterns", sequencer->patternsResourceKind, sequencer->patternsResourceFile);
    }

    auto* drumMap = xml->createNewChildElement("DrumMap");
    drumMap->setAttribute("default", drumMapSource == 1 ? "userDefinedDrumMap" : "factoryMapping");
    if (drumMapSource == 1)
        drumMap->setAttribute("file", drumMapFile);

    return xml;
}

//==============================================================================
int DrumMachine::getInstrumentOutput(int instrument) const
{
    return juce::isPositiveAndBelow(instrument, instrumentCount) ? instrumentOutput[(size_t) instrument].load() : 0;
}

void DrumMachine::setInstrumentOutput(int instrument, int output)
{
    if (!juce::isPositiveAndBelow(instrument, instrumentCount))
        return;

    instrumentOutput[(size_t) instrument] = output;
    parameterManager.setInt(ParameterIds::outputNumber + instrument, output);
}

int DrumMachine::getStoredInstrumentOutput(int instrument) const
{
    return juce::isPositiveAndBelow(instrument, instrumentCount) ? storedInstrumentOutput[(size_t) instrument] : 0;
}

void DrumMachine::setStoredInstrumentOutput(int instrument, int output)
{
    if (juce::isPositiveAndBelow(instrument, instrumentCount) && output >= 1 && output <= getOutputCount())
        storedInstrumentOutput[(size_t) instrument] = output;
}

void DrumMachine::storeCurrentOutputs()
{
    for (int i = 0; i < instrumentCount; ++i)
        storedInstrumentOutput[(size_t) i] = instrumentOutput[(size_t) i];
}

void DrumMachine::setTriggerOutput(int output)
{
    triggerOutput = output;
}

void DrumMachine::setTriggerOut(bool shouldBeEnabled, int source)
{
    if (core == nullptr)
        return;

    core->triggerOutSource = source;
    core->setTriggerOutEnabled(shouldBeEnabled);
}

void DrumMachine::loadAudioOutputSettings(const juce::XmlElement& xml, bool userSettings)
{
    for (auto* child : xml.getChildIterator())
    {
        if (child->hasTagName("OutAssignations"))
        {
            for (auto* row : child->getChildIterator())
            {
                const int instrument = indexOfShortCode(row->getTagName().toStdString());
                const int output = row->getIntAttribute("out", 0);
                if (instrument < 0 || instrument >= instrumentCount || output < 1 || output > getOutputCount())
                    continue;

                if (userSettings)
                    storedInstrumentOutput[(size_t) instrument] = output;
                else
                    setInstrumentOutput(instrument, output);
            }
        }
        else if (userSettings && child->hasTagName("OutCharacteristics"))
        {
            const auto type = child->getStringAttribute("type");
            if (type == "mono")
                storedOutputType = monoOutputs;
            else if (type == "stereo")
                storedOutputType = stereoOutputs;
        }
        else if (!userSettings && child->hasTagName("TriggerOut") && core != nullptr)
        {
            int source = core->triggerOutSource;
            const int code = indexOfShortCode(child->getStringAttribute("instrument").toStdString());
            if (code >= 0)
                source = code;
            // Not in older states: the pulse then keeps the output it has.
            const int output = child->getIntAttribute("output", 0);
            if (output >= 1 && output <= getOutputCount())
                setTriggerOutput(output);
            setTriggerOut(child->getStringAttribute("state") == "on", source);
        }
    }
}

std::unique_ptr<juce::XmlElement> DrumMachine::createAudioOutputSettings(bool userSettings) const
{
    auto xml = std::make_unique<juce::XmlElement>("AudioOutputSettings");

    if (userSettings)
    {
        xml->createNewChildElement("OutCharacteristics")->setAttribute("type", storedOutputType == monoOutputs ? "mono" : "stereo");
    }
    else if (core != nullptr)
    {
        auto* trigger = xml->createNewChildElement("TriggerOut");
        trigger->setAttribute("state", onOff(core->isTriggerOutEnabled()));
        trigger->setAttribute("instrument", shortCodes[juce::jlimit(0, trackCount - 1, core->triggerOutSource)]);
        trigger->setAttribute("output", triggerOutput.load());
    }

    auto* assignations = xml->createNewChildElement("OutAssignations");
    for (int i = 0; i < instrumentCount; ++i)
        assignations->createNewChildElement(shortCodes[i])
            ->setAttribute("out", userSettings ? storedInstrumentOutput[(size_t) i] : instrumentOutput[(size_t) i].load());

    return xml;
}
