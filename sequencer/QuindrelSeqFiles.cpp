// The XML forms of QuindrelSeq: host and native pattern elements, the older
// tags and attributes still read, file types, the edition state and the banks
// loaded at start. Message thread, or the host's thread while the state is
// restored.

#include "sequencer/QuindrelSeq.h"

#include "plugin/DrumMachine.h"

namespace
{
// What the sequencer calls itself when it runs without a plug-in (tests, tools).
constexpr const char* defaultApplication = "Quindrel";
constexpr const char* defaultShortName = "QD";

const char* const variationTags[] = { "VariationA", "VariationB" };
const char* const partTags[] = { "Part1", "Part2" };

// A decimal attribute, or an older name for it, or a default.
double readDouble(const juce::XmlElement& xml, const char* name, const char* olderName, double fallback)
{
    if (xml.hasAttribute(name))
        return xml.getDoubleAttribute(name);
    if (olderName != nullptr && xml.hasAttribute(olderName))
        return xml.getDoubleAttribute(olderName);
    return fallback;
}

// What a host pattern and a native part share before their tracks: cleared
// steps, so that steps no track text names stay off, a length and a scale.
void readStepsHeader(const juce::XmlElement& xml, Pattern& pattern)
{
    pattern.clearSteps();
    pattern.setLength(xml.getIntAttribute("length", Pattern::stepCount));

    int scale = 4;
    if (xml.hasAttribute("scale"))
        scale = xml.getIntAttribute("scale");
    else if (xml.hasAttribute("stepsPerBeat"))
        scale = xml.getIntAttribute("stepsPerBeat");
    pattern.setScale(scale);
}

void readTracks(const juce::XmlElement& xml, Pattern& pattern)
{
    for (auto* child : xml.getChildIterator())
    {
        const int track = Tracks::indexOf(child->getTagName());
        if (track >= 0)
            pattern.setTrackString(track, child->getAllSubText());
    }
}

void writeTracks(juce::XmlElement& xml, const Pattern& pattern)
{
    for (int track = 0; track < Tracks::count; ++track)
    {
        auto* child = xml.createNewChildElement(shortCodes[track]);
        const auto text = pattern.getTrackString(track);
        if (text.isNotEmpty())
            child->addTextElement(text);
    }
}

void readHostPattern(const juce::XmlElement& xml, Pattern& pattern)
{
    pattern.setName(xml.getStringAttribute("name"));
    readStepsHeader(xml, pattern);
    pattern.setShuffle(xml.getDoubleAttribute("shuffle", 0.0));
    pattern.setTempo(readDouble(xml, "tempo", "bpm", 120.0));
    readTracks(xml, pattern);
}

void readVariation(const juce::XmlElement& xml, Variation& variation)
{
    variation.setShuffle(xml.getDoubleAttribute("shuffle", 0.0));
    variation.setTempo(readDouble(xml, "tempo", "bpm", 120.0));

    for (auto* child : xml.getChildIterator())
    {
        for (int part = 0; part < Variation::partCount; ++part)
        {
            if (child->hasTagName(partTags[part]))
            {
                // Only the second part keeps a length of 0: the part is absent.
                auto& target = variation.getPart(part);
                readStepsHeader(*child, target);
                readTracks(*child, target);
            }
        }
    }
}

void readNativePattern(const juce::XmlElement& xml, NativePattern& pattern)
{
    pattern.setName(xml.getStringAttribute("name"));

    for (auto* child : xml.getChildIterator())
        for (int variation = 0; variation < NativePattern::variationCount; ++variation)
            if (child->hasTagName(variationTags[variation]))
                readVariation(*child, pattern.getVariation(variation));
}

juce::String oldPatternExtension(int type)
{
    return type == DrumMachineSeq::hostType ? ".qsp" : type == DrumMachineSeq::nativeType ? ".qep"
                                                                                          : juce::String();
}

juce::String oldBankExtension(int type)
{
    return type == DrumMachineSeq::hostType ? ".qsb" : type == DrumMachineSeq::nativeType ? ".qeb"
                                                                                          : juce::String();
}

// "." + short code + "ptr" (or "ptrb") in lower case, then "H" or "N" for the type.
juce::String buildExtension(const juce::String& shortName, const char* kind, int type)
{
    auto extension = ("." + shortName + kind).toLowerCase();
    if (type == DrumMachineSeq::hostType)
        extension << "H";
    else if (type == DrumMachineSeq::nativeType)
        extension << "N";
    return extension;
}

juce::String joinWildcards(const juce::String& extension, const juce::String& olderExtension)
{
    auto wildcards = "*" + extension;
    if (olderExtension.isNotEmpty())
        wildcards << "; *" << olderExtension;
    return wildcards;
}
} // namespace

//==============================================================================
int QuindrelSeq::getPatternFileTypeCount(int type) const
{
    return type == hostType || type == nativeType ? 1 : 0;
}

juce::String QuindrelSeq::getPatternFileType(int index, int type) const
{
    return index == 0 ? oldPatternExtension(type) : juce::String();
}

juce::String QuindrelSeq::getPatternFileExtension(int type) const
{
    return buildExtension(plugin != nullptr ? plugin->getPluginShortName() : defaultShortName, "ptr", type);
}

juce::String QuindrelSeq::getPatternFileWildcards(int type) const
{
    return joinWildcards(getPatternFileExtension(type), oldPatternExtension(type));
}

int QuindrelSeq::getBankFileTypeCount(int type) const
{
    return type == hostType || type == nativeType ? 1 : 0;
}

juce::String QuindrelSeq::getBankFileType(int index, int type) const
{
    return index == 0 ? oldBankExtension(type) : juce::String();
}

juce::String QuindrelSeq::getBankFileExtension(int type) const
{
    return buildExtension(plugin != nullptr ? plugin->getPluginShortName() : defaultShortName, "ptrb", type);
}

juce::String QuindrelSeq::getBankFileWildcards(int type) const
{
    return joinWildcards(getBankFileExtension(type), oldBankExtension(type));
}

//==============================================================================
bool QuindrelSeq::isPatternElement(const juce::XmlElement& xml, int type) const
{
    // The type attribute is not tested: a native file opened as a host
    // pattern reads as an empty host pattern.
    const auto application = plugin != nullptr ? plugin->getPluginName() : juce::String(defaultApplication);
    if (xml.hasTagName("Pattern") && xml.getStringAttribute("application") == application)
        return true;

    if (type == hostType)
        return xml.hasTagName("QuindrelHostPattern") || xml.hasTagName("QuindrelSimplePattern");
    if (type == nativeType)
        return xml.hasTagName("QuindrelNativePattern") || xml.hasTagName("QuindrelExtendedPattern");
    return false;
}

void QuindrelSeq::readPattern(const juce::XmlElement& xml, int index, int type)
{
    if (!isPatternElement(xml, type))
        return;

    if (type == hostType)
    {
        if (juce::isPositiveAndBelow(index, hostPatternCount))
            readHostPattern(xml, hostPatterns[(size_t) index]);
    }
    else if (juce::isPositiveAndBelow(index, nativePatternCount))
    {
        readNativePattern(xml, nativePatterns[(size_t) index]);
    }
}

std::unique_ptr<juce::XmlElement> QuindrelSeq::writePattern(int index, int type) const
{
    const auto application = plugin != nullptr ? plugin->getPluginName() : juce::String(defaultApplication);
    auto xml = std::make_unique<juce::XmlElement>("Pattern");
    xml->setAttribute("application", application);

    if (type == hostType)
    {
        const auto& pattern = hostPatterns[(size_t) juce::jlimit(0, hostPatternCount - 1, index)];
        xml->setAttribute("name", pattern.getName());
        xml->setAttribute("type", "hostPattern");
        xml->setAttribute("length", pattern.getLength());
        xml->setAttribute("scale", pattern.getScale());
        xml->setAttribute("shuffle", pattern.getShuffle());
        xml->setAttribute("tempo", pattern.getTempo());
        writeTracks(*xml, pattern);
        return xml;
    }

    const auto& pattern = nativePatterns[(size_t) juce::jlimit(0, nativePatternCount - 1, index)];
    xml->setAttribute("name", pattern.getName());
    xml->setAttribute("type", "nativePattern");

    for (int v = 0; v < NativePattern::variationCount; ++v)
    {
        const auto& variation = pattern.getVariation(v);
        auto* variationXml = xml->createNewChildElement(variationTags[v]);
        variationXml->setAttribute("shuffle", variation.getShuffle());
        variationXml->setAttribute("tempo", variation.getTempo());

        for (int p = 0; p < Variation::partCount; ++p)
        {
            const auto& part = variation.getPart(p);
            auto* partXml = variationXml->createNewChildElement(partTags[p]);
            partXml->setAttribute("length", part.getLength());
            partXml->setAttribute("scale", part.getScale());
            writeTracks(*partXml, part);
        }
    }
    return xml;
}

bool QuindrelSeq::isBankElement(const juce::XmlElement& xml, int type) const
{
    if (xml.hasTagName("PatternBank"))
    {
        if (!xml.hasAttribute("type") || type == plainType)
            return true;
        return xml.getStringAttribute("type") == (type == hostType ? "hostPattern" : "nativePattern");
    }

    if (type == hostType)
        return xml.hasTagName("QuindrelHostPatternBank") || xml.hasTagName("QuindrelSimplePatternBank");
    if (type == nativeType)
        return xml.hasTagName("QuindrelNativePatternBank") || xml.hasTagName("QuindrelExtendedPatternBank");
    return false;
}

//==============================================================================
void QuindrelSeq::readEditionState(const juce::XmlElement& xml)
{
    if (!xml.hasTagName("DMSeqEditionState"))
        return;

    for (auto* child : xml.getChildIterator())
    {
        if (!child->hasAttribute("value"))
            continue;

        const auto value = child->getStringAttribute("value");
        if (child->hasTagName("HostPatternNumber"))
            setEditedHostPattern(value.getIntValue());
        else if (child->hasTagName("NativePatternNumber"))
            setEditedNativePattern(value.getIntValue());
        else if (child->hasTagName("NativePatternVariation") && (value == "A" || value == "B"))
            editedVariation = value == "A" ? 0 : 1;
        else if (child->hasTagName("NativePatternPart") && (value == "1" || value == "2"))
            editedPart = value == "1" ? 0 : 1;
    }
}

std::unique_ptr<juce::XmlElement> QuindrelSeq::writeEditionState() const
{
    auto xml = std::make_unique<juce::XmlElement>("DMSeqEditionState");
    xml->createNewChildElement("HostPatternNumber")->setAttribute("value", editedHostPattern);
    xml->createNewChildElement("NativePatternNumber")->setAttribute("value", editedNativePattern);
    xml->createNewChildElement("NativePatternVariation")->setAttribute("value", editedVariation == 0 ? "A" : "B");
    xml->createNewChildElement("NativePatternPart")->setAttribute("value", editedPart == 0 ? "1" : "2");
    return xml;
}

//==============================================================================
void QuindrelSeq::loadAtStart()
{
    for (int index = 0; index < hostPatternCount; ++index)
        setPatternName(index, "Pattern " + juce::String(index + 1), hostType);
    for (int index = 0; index < nativePatternCount; ++index)
        setPatternName(index, "Pattern " + juce::String(index + 1), nativeType);

    auto loadBank = [this](int type, int kind, const juce::String& file)
    {
        if (kind == factoryPatterns && plugin != nullptr)
        {
            // "default.QDPTRBH" and "default.QDPTRBN".
            if (auto xml = juce::parseXML(plugin->loadResourceText("default." + getBankFileExtension(type).substring(1).toUpperCase())))
                readBank(*xml, type);
        }
        else if (kind == userDefinedPatterns && juce::File::isAbsolutePath(file))
        {
            loadBankFile(juce::File(file), type);
        }
    };

    loadBank(hostType, hostResourceKind, hostResourceFile);
    loadBank(nativeType, nativeResourceKind, nativeResourceFile);
}
