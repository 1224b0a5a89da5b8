// The drum map: which MIDI key plays which instrument, in both directions.
// Loaded on the message thread while the audio thread may read it; each entry
// is a single word.

#include "plugin/DrumMachine.h"

#include "presets/XmlFiles.h"

void DrumMachine::resetDrumMap()
{
    for (auto& entry : keyToInstrument)
        entry = -1;
    drumMapName = {};
}

bool DrumMachine::isDrumMapXml(const juce::XmlElement& xml) const
{
    // The tag alone decides: a map written by another plug-in of the family,
    // or by hand, is as welcome as our own.
    return xml.hasTagName("DrumMap");
}

void DrumMachine::readDrumMapVersion(const juce::XmlElement& xml, const char* keyAttribute)
{
    for (auto* row : xml.getChildWithTagNameIterator("assign"))
    {
        if (!row->hasAttribute(keyAttribute))
            continue;

        const int key = row->getIntAttribute(keyAttribute, -1);
        const int instrument = indexOfShortCode(row->getStringAttribute("instrument").toStdString());

        // The accent is a track, not a sound: no key can play it.
        if (key < 0 || key > 127 || instrument < 0 || instrument >= instrumentCount)
            continue;

        keyToInstrument[(size_t) key] = instrument;
    }
}

void DrumMachine::loadDrumMap(const juce::XmlElement& xml)
{
    if (!isDrumMapXml(xml))
        return;

    resetDrumMap();

    const auto version = xml.getStringAttribute("ver", "1.0");
    if (version == "1.1")
    {
        drumMapName = xml.getStringAttribute("name");
        readDrumMapVersion(xml, "midiKey");
    }
    else if (version == "1.0")
    {
        readDrumMapVersion(xml, "note");
    }
}

void DrumMachine::loadDrumMapFromResource(const juce::String& text)
{
    if (auto xml = juce::parseXML(text))
        loadDrumMap(*xml);
}

void DrumMachine::loadDrumMapFromFile()
{
    if (juce::File::isAbsolutePath(drumMapFile))
        loadDrumMapFile(juce::File(drumMapFile));
}

bool DrumMachine::loadDrumMapFile(const juce::File& file)
{
    if (!file.existsAsFile())
        return false;

    const auto xml = XmlFiles::parse(file);
    if (xml == nullptr || !isDrumMapXml(*xml))
        return false;

    loadDrumMap(*xml);
    updateHostDisplay();
    return true;
}

void DrumMachine::setDrumMapSource(int source, const juce::String& file)
{
    drumMapSource = source == 1 ? 1 : 0;
    drumMapFile = juce::File::isAbsolutePath(file) ? juce::File(file).getFullPathName() : file;
}

std::unique_ptr<juce::XmlElement> DrumMachine::createDrumMapXml() const
{
    auto xml = std::make_unique<juce::XmlElement>("DrumMap");
    xml->setAttribute("application", getPluginName());
    xml->setAttribute("ver", "1.1");
    xml->setAttribute("name", drumMapName);

    for (int key = 0; key < 128; ++key)
    {
        const int instrument = keyToInstrument[(size_t) key];
        if (instrument < 0)
            continue;

        auto* row = xml->createNewChildElement("assign");
        row->setAttribute("midiKey", key);
        row->setAttribute("instrument", shortCodes[instrument]);
    }
    return xml;
}

bool DrumMachine::saveDrumMap(const juce::File& file) const
{
    return createDrumMapXml()->writeTo(file); // UTF-8
}

juce::String DrumMachine::getDrumMapExtension() const
{
    return "." + (getPluginShortName() + "drmap").toLowerCase();
}

juce::String DrumMachine::getDrumMapWildcard() const
{
    auto wildcard = "*" + getDrumMapExtension();
    for (int i = 0; i < getExtraDrumMapExtensionCount(); ++i)
        wildcard << "; *" << getExtraDrumMapExtension(i);
    return wildcard;
}

juce::String DrumMachine::getInstrumentName(int index) const
{
    return juce::isPositiveAndBelow(index, trackCount) ? juce::String(instrumentNames[index]) : juce::String();
}

int DrumMachine::getKeyInstrument(int key) const
{
    return juce::isPositiveAndBelow(key, 128) ? keyToInstrument[(size_t) key].load() : -1;
}

juce::String DrumMachine::getMidiKeyName(int key) const
{
    if (!internalSequencer)
    {
        const int instrument = getKeyInstrument(key);
        return instrument >= 0 ? getInstrumentName(instrument) : juce::String("---");
    }

    if (hostMode)
        return (key >= 12 && key <= 107) ? sequencer->getPatternName(key - 12, DrumMachineSeq::hostType) : juce::String("---");

    return {};
}
