// A song's drum machine through real hosting: the built VST3 and LV2 loaded
// by JUCE's own plug-in hosting. The state taken from an instance whose knobs,
// modes, routing and a pattern were changed, given to a fresh instance, gives
// back the same bytes, and both play the same audio for the same MIDI.

#include <gtest/gtest.h>
#include <juce_audio_processors/juce_audio_processors.h>

namespace
{
// What a host cannot reach but through the state - modes, routing, a pattern -
// changed as edits of the state's text.
const std::pair<const char*, const char*> edits[] = {
    { "<HostMode state=\"off\"/>", "<HostMode state=\"on\"/>" },
    { "<NoteOff state=\"off\"/>", "<NoteOff state=\"on\"/>" },
    { "<SD out=\"1\"/>", "<SD out=\"3\"/>" },
    { "<TriggerOut state=\"off\" instrument=\"BD\" output=\"12\"/>", "<TriggerOut state=\"on\" instrument=\"CP\" output=\"5\"/>" },
    { "<BD>O.......o.o.....</BD>", "<BD>O.O.O.O.O.O.O.O.</BD>" }, // the first host pattern, played by key 12
};

std::unique_ptr<juce::AudioPluginInstance> instantiate(juce::AudioPluginFormat& format, const juce::String& identifier)
{
    juce::OwnedArray<juce::PluginDescription> types;
    format.findAllTypesForFile(types, identifier);
    if (types.isEmpty())
        return {};

    juce::String error;
    auto instance = format.createInstanceFromDescription(*types[0], 48000.0, 512, error);
    EXPECT_TRUE(error.isEmpty()) << error;
    return instance;
}

// Where each format keeps the plug-in's own block in what the host stores:
// VST3 in base64 inside the host's XML, with JUCE's private data behind it;
// LV2 as a base64 string property of the lilv state.
struct Wrapping
{
    virtual ~Wrapping() = default;
    virtual juce::MemoryBlock inner(const juce::MemoryBlock& hosted) const = 0;
    virtual juce::MemoryBlock replaceInner(const juce::MemoryBlock& hosted, const juce::MemoryBlock& block) const = 0;
};

// The plug-in's block is the framework's XML block, a mark and a length first.
juce::MemoryBlock blockPart(const juce::MemoryBlock& data)
{
    if (data.getSize() < 9)
        return {};
    const auto length = juce::ByteOrder::littleEndianInt(juce::addBytesToPointer(data.getData(), 4));
    return juce::MemoryBlock(data.getData(), juce::jmin(data.getSize(), (size_t) length + 9));
}

struct Vst3Wrapping : Wrapping
{
    juce::MemoryBlock inner(const juce::MemoryBlock& hosted) const override { return blockPart(component(hosted)); }

    juce::MemoryBlock replaceInner(const juce::MemoryBlock& hosted, const juce::MemoryBlock& block) const override
    {
        const auto old = component(hosted);
        juce::MemoryBlock data(block);
        const auto kept = blockPart(old).getSize();
        data.append(juce::addBytesToPointer(old.getData(), kept), old.getSize() - kept);

        auto xml = juce::AudioProcessor::getXmlFromBinary(hosted.getData(), (int) hosted.getSize());
        auto* child = xml->getChildByName("IComponent");
        child->deleteAllTextElements();
        child->addTextElement(data.toBase64Encoding());
        juce::MemoryBlock result;
        juce::AudioProcessor::copyXmlToBinary(*xml, result);
        return result;
    }

    static juce::MemoryBlock component(const juce::MemoryBlock& hosted)
    {
        juce::MemoryBlock data;
        if (auto xml = juce::AudioProcessor::getXmlFromBinary(hosted.getData(), (int) hosted.getSize()))
            if (auto* child = xml->getChildByName("IComponent"))
                data.fromBase64Encoding(child->getAllSubText());
        return data;
    }
};

struct Lv2Wrapping : Wrapping
{
    juce::MemoryBlock inner(const juce::MemoryBlock& hosted) const override
    {
        juce::MemoryBlock data;
        data.fromBase64Encoding(encoded(hosted.toString()));
        return blockPart(data);
    }

    juce::MemoryBlock replaceInner(const juce::MemoryBlock& hosted, const juce::MemoryBlock& block) const override
    {
        const auto text = hosted.toString();
        const auto old = encoded(text);
        const auto replaced = text.replace(old, block.toBase64Encoding());
        return juce::MemoryBlock(replaced.toRawUTF8(), replaced.getNumBytesAsUTF8());
    }

    // The quoted value that follows the state property's name.
    static juce::String encoded(const juce::String& turtle)
    {
        return turtle.fromFirstOccurrenceOf("StateString>", false, false).fromFirstOccurrenceOf("\"", false, false).upToFirstOccurrenceOf("\"", false, false);
    }
};

juce::MemoryBlock stateOf(juce::AudioPluginInstance& plugin)
{
    juce::MemoryBlock block;
    plugin.getStateInformation(block);
    return block;
}

void setState(juce::AudioPluginInstance& plugin, const juce::MemoryBlock& block)
{
    plugin.setStateInformation(block.getData(), (int) block.getSize());
}

juce::String textOf(const juce::MemoryBlock& block)
{
    const auto xml = juce::AudioProcessor::getXmlFromBinary(block.getData(), (int) block.getSize());
    return xml != nullptr ? xml->toString(juce::XmlElement::TextFormat().singleLine()) : juce::String();
}

void setKnob(juce::AudioPluginInstance& plugin, const juce::String& name, float value)
{
    for (auto* parameter : plugin.getParameters())
        if (parameter->getName(100) == name)
            return parameter->setValueNotifyingHost(value);
    ADD_FAILURE() << "no parameter " << name;
}

// Two seconds of the first host pattern, started by its key, and a kit
// change; after half a second of silence, as a host runs an instance before
// the song starts, in which the knobs glide to their places.
juce::AudioBuffer<float> play(juce::AudioPluginInstance& plugin)
{
    plugin.prepareToPlay(48000.0, 512);
    const int channels = plugin.getTotalNumOutputChannels();
    juce::AudioBuffer<float> result(channels, 96000), buffer(channels, 512);
    juce::MidiBuffer midi;
    for (int block = 0; block < 50; ++block)
        plugin.processBlock(buffer, midi);

    for (int start = 0; start < 96000; start += 512)
    {
        midi.clear();
        if (start == 0)
            midi.addEvent(juce::MidiMessage::noteOn(1, 12, (juce::uint8) 100), 10);
        if (start == 48128)
            midi.addEvent(juce::MidiMessage::programChange(1, 6), 100);
        plugin.processBlock(buffer, midi);
        for (int c = 0; c < channels; ++c)
            result.copyFrom(c, start, buffer, c, 0, juce::jmin(512, 96000 - start));
    }
    plugin.releaseResources();
    return result;
}

void checkRoundTrip(juce::AudioPluginFormat& format, const juce::String& identifier, const Wrapping& wrapping)
{
    auto original = instantiate(format, identifier);
    ASSERT_NE(original, nullptr) << identifier;

    // Knobs through the host's parameters; the rest through an edited state.
    setKnob(*original, "Bass Drum Decay", 0.875f);
    setKnob(*original, "Closed Hi Hat Level", 0.25f);
    setKnob(*original, "Cow Bell Mute", 1.0f);
    {
        // A host hands parameter changes over with the next block.
        juce::AudioBuffer<float> buffer(original->getTotalNumOutputChannels(), 512);
        juce::MidiBuffer midi;
        original->prepareToPlay(48000.0, 512);
        original->processBlock(buffer, midi);
        original->releaseResources();
    }
    auto text = textOf(wrapping.inner(stateOf(*original)));
    ASSERT_FALSE(text.isEmpty()) << "no state of ours in what the host keeps";
    for (const auto& [from, to] : edits)
    {
        ASSERT_TRUE(text.contains(from)) << from;
        text = text.replaceSection(text.indexOf(from), (int) strlen(from), to);
    }
    juce::MemoryBlock edited;
    juce::AudioProcessor::copyXmlToBinary(*juce::parseXML(text), edited);
    setState(*original, wrapping.replaceInner(stateOf(*original), edited));

    const auto saved = stateOf(*original);
    const auto savedText = textOf(wrapping.inner(saved));
    EXPECT_TRUE(savedText.contains("<HostMode state=\"on\"/>"));
    EXPECT_TRUE(savedText.contains("<param name=\"Bass Drum Decay\" value=\"0.875\"/>"));

    auto restored = instantiate(format, identifier);
    ASSERT_NE(restored, nullptr);
    setState(*restored, saved);
    EXPECT_EQ(textOf(wrapping.inner(stateOf(*restored))), savedText);
    EXPECT_EQ(stateOf(*restored), saved) << "what the host keeps differs";

    const auto a = play(*original), b = play(*restored);
    ASSERT_EQ(a.getNumChannels(), b.getNumChannels());
    EXPECT_GT(a.getMagnitude(0, 0, a.getNumSamples()), 0.01f) << "the pattern did not play";
    EXPECT_GT(a.getMagnitude(4, 0, a.getNumSamples()), 0.01f) << "the snare was not routed to output 3";
    for (int c = 0; c < a.getNumChannels(); ++c)
        for (int i = 0; i < a.getNumSamples(); ++i)
            ASSERT_EQ(a.getSample(c, i), b.getSample(c, i)) << "channel " << c << ", sample " << i;
}
} // namespace

TEST(PluginHostedState, Vst3StateComesBackWholeInAFreshInstance)
{
    juce::VST3PluginFormat format;
    checkRoundTrip(format, QUINDREL_VST3_PATH, Vst3Wrapping());
}

TEST(PluginHostedState, Lv2StateComesBackWholeInAFreshInstance)
{
    juce::LV2PluginFormat format;
    format.searchPathsForPlugins(juce::FileSearchPath(QUINDREL_LV2_DIR), true, false);
    checkRoundTrip(format, QUINDREL_LV2_URI, Lv2Wrapping());
}
