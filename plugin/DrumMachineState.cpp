// DrumMachine's parts of the plug-in state: the sequencer's modes, the live
// routing, the patterns and the drum map. On the thread the host calls on,
// while blocks may be playing: every field set here is one the panel's
// switches also set, word by word.

#include "plugin/DrumMachine.h"

namespace
{
bool isOn(const juce::XmlElement& element)
{
    return element.getStringAttribute("state") == "on";
}

void addSwitch(juce::XmlElement& parent, const char* tag, bool on)
{
    parent.createNewChildElement(tag)->setAttribute("state", on ? "on" : "off");
}
} // namespace

std::unique_ptr<juce::XmlElement> DrumMachine::createStateXml()
{
    auto xml = BasePluginOldStyle::createStateXml();
    xml->insertChildElement(createInternalSequencerState().release(), 0);
    xml->insertChildElement(createAudioOutputSettings(false).release(), 1);
    xml->insertChildElement(sequencer->writePatternsState().release(), 2);
    xml->addChildElement(createDrumMapXml().release());
    return xml;
}

void DrumMachine::loadState(const juce::XmlElement& xml)
{
    BasePluginOldStyle::loadState(xml);

    if (!canLoadState(xml))
        return;

    for (auto* child : xml.getChildIterator())
    {
        if (child->hasTagName("AudioOutputSettings"))
            loadAudioOutputSettings(*child, false);
        else if (isDrumMapXml(*child))
            loadDrumMap(*child);
        else if (child->hasTagName("InternalSequencer"))
            loadInternalSequencerState(*child);
        else if (child->hasTagName("PatternsState"))
            sequencer->readPatternsState(*child);
    }
}

std::unique_ptr<juce::XmlElement> DrumMachine::createInternalSequencerState() const
{
    auto xml = std::make_unique<juce::XmlElement>("InternalSequencer");
    const bool intSeq = internalSequencer;
    addSwitch(*xml, "IntSeq", intSeq);
    addSwitch(*xml, "IntSync", internalSync);
    addSwitch(*xml, "HostMode", hostMode);
    addSwitch(*xml, "NoteOff", noteOffMode);
    // What the panel shows: in host mode the pattern is edited whatever the flag.
    addSwitch(*xml, "PattWriteMode", intSeq && (writeMode || hostMode));
    addSwitch(*xml, "AutoFollow", isEditing() && !lengthMode && (autoFollow || tapMode));
    if (auto edition = sequencer->writeEditionState())
        xml->addChildElement(edition.release());
    return xml;
}

void DrumMachine::loadInternalSequencerState(const juce::XmlElement& xml)
{
    for (auto* row : xml.getChildIterator())
    {
        if (row->hasTagName("IntSeq"))
        {
            setInternalSequencer(isOn(*row));
        }
        else if (row->hasTagName("IntSync"))
        {
            internalSync = isOn(*row);
            updateInternalSyncState();
        }
        else if (row->hasTagName("HostMode"))
        {
            setHostMode(isOn(*row));
        }
        else if (row->hasTagName("NoteOff"))
        {
            noteOffMode = isOn(*row);
            updateNoteOffState();
        }
        else if (row->hasTagName("PattWriteMode"))
        {
            writeMode = isOn(*row);
            updateWriteModeState();
        }
        else if (row->hasTagName("AutoFollow"))
        {
            autoFollow = isOn(*row);
            updateAutoFollowState();
        }
        else if (row->hasTagName("DMSeqEditionState"))
        {
            sequencer->readEditionState(*row);
        }
    }
}
