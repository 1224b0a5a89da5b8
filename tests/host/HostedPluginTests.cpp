// Loads the built plug-in the way a real host does, through JUCE's own VST3
// and LV2 hosting: it plays, leaves no settings in its bundle, and a song's
// state - knobs set by the host, modes, routing and a pattern - comes back
// whole in a fresh instance, which then plays the same audio. The user's
// settings go to a folder of the test's own, never to the real one.

#include "support/JuceEnvironment.h"

#include <juce_audio_processors/juce_audio_processors.h>

namespace
{
struct PlayHead : juce::AudioPlayHead
{
    juce::Optional<PositionInfo> getPosition() const override
    {
        PositionInfo info;
        info.setIsPlaying(playing);
        info.setBpm(120.0);
        info.setPpqPosition(ppq);
        return info;
    }
    bool playing = false;
    double ppq = 0.0;
};

struct Format
{
    juce::AudioPluginFormat& format;
    juce::String identifier;
    juce::File bundle;
    bool vst3;

    std::unique_ptr<juce::AudioPluginInstance> instantiate() const
    {
        juce::OwnedArray<juce::PluginDescription> types;
        format.findAllTypesForFile(types, identifier);
        juce::String error;
        auto instance = types.isEmpty() ? nullptr : format.createInstanceFromDescription(*types[0], 48000.0, 512, error);
        EXPECT_TRUE(error.isEmpty()) << error;
        return instance;
    }
};

// Half a second of silence, in which a new instance's knobs glide to their
// places, then `seconds` with the transport running if asked, key 12 (the
// first host pattern) and a kit change halfway if asked. Every channel.
juce::AudioBuffer<float> play(juce::AudioPluginInstance& plugin, int seconds, bool transport, bool keyAndKit)
{
    PlayHead head;
    plugin.setPlayHead(&head);
    plugin.prepareToPlay(48000.0, 512);
    const int channels = plugin.getTotalNumOutputChannels(), length = seconds * 48000;
    juce::AudioBuffer<float> result(channels, length), buffer(channels, 512);
    juce::MidiBuffer midi;
    for (int block = 0; block < 50; ++block)
        plugin.processBlock(buffer, midi);

    head.playing = transport;
    for (int start = 0; start < length; start += 512)
    {
        midi.clear();
        if (keyAndKit && start == 0)
            midi.addEvent(juce::MidiMessage::noteOn(1, 12, (juce::uint8) 100), 10);
        if (keyAndKit && start == 48128)
            midi.addEvent(juce::MidiMessage::programChange(1, 6), 100);
        plugin.processBlock(buffer, midi);
        for (int c = 0; c < channels; ++c)
            result.copyFrom(c, start, buffer, c, 0, juce::jmin(512, length - start));
        head.ppq += transport ? 512.0 / 48000.0 * 2.0 : 0.0;
    }
    plugin.releaseResources();
    plugin.setPlayHead(nullptr);
    return result;
}

juce::MemoryBlock stateOf(juce::AudioPluginInstance& plugin)
{
    juce::MemoryBlock block;
    plugin.getStateInformation(block);
    return block;
}
// What the host keeps, as text (VST3's XML in a binary block, LV2's turtle),
// and back. Our own block sits in it base64 encoded: in VST3's IComponent
// element with JUCE's private data behind it, as a string in LV2's turtle.
juce::String hostedText(const juce::MemoryBlock& hosted, bool vst3)
{
    const auto xml = vst3 ? juce::AudioProcessor::getXmlFromBinary(hosted.getData(), (int) hosted.getSize()) : nullptr;
    return vst3 ? (xml != nullptr ? xml->toString() : juce::String()) : hosted.toString();
}

juce::MemoryBlock ourData(const juce::String& hosted, bool vst3)
{
    juce::MemoryBlock data;
    data.fromBase64Encoding(vst3 ? hosted.fromFirstOccurrenceOf("<IComponent>", false, false).upToFirstOccurrenceOf("</IComponent>", false, false)
                                 : hosted.fromFirstOccurrenceOf("StateString>", false, false).fromFirstOccurrenceOf("\"", false, false).upToFirstOccurrenceOf("\"", false, false));
    return data;
}

juce::String ourText(const juce::MemoryBlock& hosted, bool vst3)
{
    const auto data = ourData(hostedText(hosted, vst3), vst3);
    const auto xml = juce::AudioProcessor::getXmlFromBinary(data.getData(), (int) data.getSize());
    return xml != nullptr ? xml->toString(juce::XmlElement::TextFormat().singleLine()) : juce::String();
}

// What the host keeps, with our XML replaced by `text`.
juce::MemoryBlock withOurText(const juce::MemoryBlock& hosted, bool vst3, const juce::String& ourNewText)
{
    const auto hostText = hostedText(hosted, vst3);
    const auto old = ourData(hostText, vst3);
    juce::MemoryBlock ours;
    juce::AudioProcessor::copyXmlToBinary(*juce::parseXML(ourNewText), ours);
    const auto kept = (size_t) juce::ByteOrder::littleEndianInt(juce::addBytesToPointer(old.getData(), 4)) + 9; // mark, length, text, nul
    ours.append(juce::addBytesToPointer(old.getData(), kept), old.getSize() - kept);
    const auto text = hostText.replace(old.toBase64Encoding(), ours.toBase64Encoding());
    juce::MemoryBlock block(text.toRawUTF8(), text.getNumBytesAsUTF8());
    if (vst3)
        juce::AudioProcessor::copyXmlToBinary(*juce::parseXML(text), block);
    return block;
}

void checkHosted(const Format& f)
{
    const auto settingsFolder = juce::File(juce::SystemStats::getEnvironmentVariable("XDG_CONFIG_HOME", {})).getChildFile("Quindrel");
    settingsFolder.deleteRecursively();
    auto original = f.instantiate();
    ASSERT_NE(original, nullptr) << f.identifier;

    // What a host sees and hears of the plug-in.
    EXPECT_EQ(original->getName(), "Quindrel");
    EXPECT_TRUE(original->acceptsMidi() && original->getTotalNumInputChannels() == 0 && original->getTotalNumOutputChannels() == 24);

    // A wrapper may add its own (bypass, MIDI controllers); ours are all there
    // under their names, and nothing beyond the host range is.
    juce::StringArray names;
    for (auto* parameter : original->getParameters())
        names.add(parameter->getName(100));
    EXPECT_GE(names.size(), 111);
    for (const auto* name : { "Bass Drum Level", "Low Conga Tunning", "Hi Hat Filters Freq", "Main Volume", "Closed Hi Hat Solo", "Accent Rand Threshold" })
        EXPECT_TRUE(names.contains(name)) << name;
    for (const auto& name : names)
        EXPECT_FALSE(name.contains("Output Number") || name.contains("Activity")) << name;

    const auto audio = play(*original, 8, true, false);
    EXPECT_GT(audio.getMagnitude(0, 0, audio.getNumSamples()), 0.01f) << "the factory pattern did not sound with the transport";
    for (int c = 0; c < audio.getNumChannels(); ++c)
        EXPECT_TRUE(std::isfinite(audio.getRMSLevel(c, 0, audio.getNumSamples()))) << "channel " << c;

    // A song's state - knobs set by the host, modes, routing and a pattern -
    // comes back whole in a fresh instance, which then plays the same audio.
    for (const auto& [name, value] : { std::pair{ "Bass Drum Decay", 0.875f }, { "Closed Hi Hat Level", 0.25f }, { "Cow Bell Mute", 1.0f } })
        for (auto* parameter : original->getParameters())
            if (parameter->getName(100) == name)
                parameter->setValueNotifyingHost(value);
    play(*original, 0, false, false); // a host hands parameter changes over with the next block

    // What a host cannot reach but through the state, as edits of its text.
    const std::pair<const char*, const char*> edits[] = {
        { "<HostMode state=\"off\"/>", "<HostMode state=\"on\"/>" },
        { "<NoteOff state=\"off\"/>", "<NoteOff state=\"on\"/>" },
        { "<SD out=\"1\"/>", "<SD out=\"3\"/>" },
        { "<TriggerOut state=\"off\" instrument=\"BD\" output=\"12\"/>", "<TriggerOut state=\"on\" instrument=\"CP\" output=\"5\"/>" },
        { "<BD>O.......o.o.....</BD>", "<BD>O.O.O.O.O.O.O.O.</BD>" }, // the first host pattern
    };
    auto text = ourText(stateOf(*original), f.vst3);
    ASSERT_FALSE(text.isEmpty()) << "no state of ours in what the host keeps";
    for (const auto& [from, to] : edits)
    {
        ASSERT_TRUE(text.contains(from)) << from;
        text = text.replaceFirstOccurrenceOf(from, to);
    }
    const auto edited = withOurText(stateOf(*original), f.vst3, text);
    original->setStateInformation(edited.getData(), (int) edited.getSize());

    const auto saved = stateOf(*original);
    const auto savedText = ourText(saved, f.vst3);
    EXPECT_TRUE(savedText.contains("<HostMode state=\"on\"/>") && savedText.contains("<param name=\"Bass Drum Decay\" value=\"0.875\"/>")) << savedText;

    auto restored = f.instantiate();
    ASSERT_NE(restored, nullptr);
    restored->setStateInformation(saved.getData(), (int) saved.getSize());
    EXPECT_EQ(ourText(stateOf(*restored), f.vst3), savedText);
    EXPECT_EQ(stateOf(*restored), saved) << "what the host keeps differs";

    const auto a = play(*original, 2, false, true), b = play(*restored, 2, false, true);
    EXPECT_TRUE(a.getMagnitude(0, 0, a.getNumSamples()) > 0.01f && a.getMagnitude(4, 0, a.getNumSamples()) > 0.01f) << "the pattern did not play, or the snare was not routed to output 3";
    for (int c = 0; c < a.getNumChannels(); ++c)
        for (int i = 0; i < a.getNumSamples(); ++i)
            ASSERT_EQ(a.getSample(c, i), b.getSample(c, i)) << "channel " << c << ", sample " << i;

    original.reset();
    restored.reset();
    EXPECT_TRUE(f.bundle.findChildFiles(juce::File::findFiles, true, "*.ini").isEmpty()) << "a settings file in the bundle";
    EXPECT_TRUE(settingsFolder.getChildFile("Quindrel.ini").existsAsFile()) << "the user's settings were not written";
}

void withFormat(bool vst3, void (*check)(const Format&))
{
    juce::VST3PluginFormat vst3Format;
    juce::LV2PluginFormat lv2Format;
    lv2Format.searchPathsForPlugins(juce::FileSearchPath(QUINDREL_LV2_DIR), true, false);
    check(vst3 ? Format{ vst3Format, QUINDREL_VST3_PATH, juce::File(QUINDREL_VST3_PATH), true }
               : Format{ lv2Format, QUINDREL_LV2_URI, juce::File(QUINDREL_LV2_DIR), false });
}
} // namespace

TEST(PluginHosted, Vst3LoadsPlaysAndKeepsASong) { withFormat(true, checkHosted); }
TEST(PluginHosted, Lv2LoadsPlaysAndKeepsASong) { withFormat(false, checkHosted); }

int main(int argc, char** argv)
{
    const juce::TemporaryFile config;
    config.getFile().createDirectory();
    setenv("XDG_CONFIG_HOME", config.getFile().getFullPathName().toRawUTF8(), 1);

    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new JuceEnvironment());
    const int result = RUN_ALL_TESTS();
    config.getFile().deleteRecursively();
    return result;
}
