// Loads the built plug-in the way a real host does, through JUCE's own VST3
// and LV2 hosting, and plays it. The user's settings go to a folder of the
// test's own, never to the real one.

#include "support/JuceEnvironment.h"

#include <juce_audio_processors/juce_audio_processors.h>

namespace
{
class PlayingHead : public juce::AudioPlayHead
{
public:
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

std::unique_ptr<juce::AudioPluginInstance> load(juce::AudioPluginFormat& format, const juce::String& identifier)
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

// Plays four bars with the transport running; returns the peak of the main output.
float playFourBars(juce::AudioPluginInstance& plugin)
{
    PlayingHead head;
    plugin.setPlayHead(&head);
    plugin.prepareToPlay(48000.0, 512);

    juce::AudioBuffer<float> buffer(plugin.getTotalNumOutputChannels(), 512);
    juce::MidiBuffer midi;
    float peak = 0.0f;

    head.playing = true;
    for (int block = 0; block < 48000 * 8 / 512; ++block)
    {
        midi.clear();
        plugin.processBlock(buffer, midi);
        peak = juce::jmax(peak, buffer.getMagnitude(0, 0, 512));
        for (int c = 0; c < buffer.getNumChannels(); ++c)
            for (int i = 0; i < 512; ++i)
                EXPECT_TRUE(std::isfinite(buffer.getSample(c, i)));
        head.ppq += 512.0 / 48000.0 * 2.0;
    }

    plugin.releaseResources();
    plugin.setPlayHead(nullptr);
    return peak;
}

juce::File settingsFolder()
{
    return juce::File(juce::SystemStats::getEnvironmentVariable("XDG_CONFIG_HOME", {})).getChildFile("Quindrel");
}

// Every settings file that an instance left inside the bundle.
juce::Array<juce::File> settingsFilesIn(const juce::File& bundle)
{
    return bundle.findChildFiles(juce::File::findFiles, true, "*.ini");
}

void checkInstance(juce::AudioPluginInstance& plugin)
{
    EXPECT_EQ(plugin.getName(), "Quindrel");
    EXPECT_TRUE(plugin.acceptsMidi());
    EXPECT_EQ(plugin.getTotalNumInputChannels(), 0);
    EXPECT_EQ(plugin.getTotalNumOutputChannels(), 24);
    // A wrapper may add its own (bypass, MIDI controllers); ours are all there
    // under their names, and nothing beyond the host range is.
    juce::StringArray names;
    for (auto* parameter : plugin.getParameters())
        names.add(parameter->getName(100));
    EXPECT_GE(names.size(), 111);
    for (const auto* name : { "Bass Drum Level", "Low Conga Tunning", "Hi Hat Filters Freq", "Main Volume",
                              "Closed Hi Hat Solo", "Accent Rand Threshold" })
        EXPECT_TRUE(names.contains(name)) << name;
    for (const auto& name : names)
        EXPECT_FALSE(name.contains("Output Number") || name.contains("Activity")) << name;
    EXPECT_GT(playFourBars(plugin), 0.01f) << "the factory pattern did not sound with the transport";
}
} // namespace

TEST(PluginHosted, Vst3LoadsAndPlays)
{
    settingsFolder().deleteRecursively();
    juce::VST3PluginFormat format;
    auto plugin = load(format, QUINDREL_VST3_PATH);
    ASSERT_NE(plugin, nullptr) << QUINDREL_VST3_PATH;
    checkInstance(*plugin);
    plugin.reset();
    EXPECT_TRUE(settingsFilesIn(juce::File(QUINDREL_VST3_PATH)).isEmpty()) << "a settings file in the bundle";
    EXPECT_TRUE(settingsFolder().getChildFile("Quindrel.ini").existsAsFile()) << "the user's settings were not written";
}

TEST(PluginHosted, Lv2LoadsAndPlays)
{
    settingsFolder().deleteRecursively();
    juce::LV2PluginFormat format;
    format.searchPathsForPlugins(juce::FileSearchPath(QUINDREL_LV2_DIR), true, false);
    auto plugin = load(format, QUINDREL_LV2_URI);
    ASSERT_NE(plugin, nullptr) << QUINDREL_LV2_URI;
    checkInstance(*plugin);
    plugin.reset();
    EXPECT_TRUE(settingsFilesIn(juce::File(QUINDREL_LV2_DIR)).isEmpty()) << "a settings file in the bundle";
    EXPECT_TRUE(settingsFolder().getChildFile("Quindrel.ini").existsAsFile()) << "the user's settings were not written";
}

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
