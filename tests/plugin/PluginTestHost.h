#pragma once

#include "parameters/ParameterIds.h"
#include "plugin/Quindrel.h"
#include "plugin/Resources.h"
#include "sequencer/QuindrelSeq.h"

#include <gtest/gtest.h>
#include <juce_audio_processors/juce_audio_processors.h>

#include <cmath>
#include <functional>
#include <vector>

// Drives a Quindrel instance as a host does: prepare, a play head, blocks of a
// chosen size, MIDI at exact sample positions. No user files are touched.
class PluginTestHost
{
public:
    struct Event
    {
        int sample;
        juce::MidiMessage message;
    };

    class PlayHead : public juce::AudioPlayHead
    {
    public:
        juce::Optional<PositionInfo> getPosition() const override
        {
            if (!present)
                return {};
            PositionInfo info;
            info.setIsPlaying(playing);
            info.setBpm(bpm);
            info.setPpqPosition(ppq);
            info.setTimeInSamples(timeInSamples);
            return info;
        }

        bool present = true;
        bool playing = false;
        double bpm = 120.0;
        double ppq = 0.0;
        juce::int64 timeInSamples = 0;
    };

    // Makes and initialises the instance under test; a test may supply a
    // subclass of Quindrel.
    using Factory = std::function<std::unique_ptr<Quindrel>(const PluginPaths&)>;

    explicit PluginTestHost(double sampleRate = 48000.0, int blockSize = 512, const juce::File& settingsFile = {},
                            Factory factory = factoryFor<Quindrel>())
        : rate(sampleRate)
        , block(blockSize)
    {
        PluginPaths paths;
        paths.settingsFile = settingsFile;
        plugin = factory(paths);
        plugin->setPlayHead(&playHead);
        plugin->setRateAndBufferSizeDetails(sampleRate, blockSize);
        plugin->prepareToPlay(sampleRate, blockSize);
    }

    ~PluginTestHost()
    {
        plugin->releaseResources();
    }

    // Renders numSamples in blocks of the host's size, delivering events at
    // their sample positions counted from the start of this call; returns
    // every channel, and collects the MIDI the plug-in gives back with
    // positions counted from the host's first sample.
    juce::AudioBuffer<float> render(int numSamples, const std::vector<Event>& events = {})
    {
        const int channels = plugin->getTotalNumOutputChannels();
        juce::AudioBuffer<float> result(channels, numSamples);
        juce::AudioBuffer<float> buffer(channels, block);
        juce::MidiBuffer midi;

        for (int start = 0; start < numSamples; start += block)
        {
            const int length = juce::jmin(block, numSamples - start);
            buffer.setSize(channels, length, false, false, true);
            midi.clear();
            for (const auto& e : events)
                if (e.sample >= start && e.sample < start + length)
                    midi.addEvent(e.message, e.sample - start);

            plugin->processBlock(buffer, midi);
            for (const auto metadata : midi)
                output.push_back({ start + position + metadata.samplePosition, metadata.getMessage() });

            for (int c = 0; c < channels; ++c)
                result.copyFrom(c, start, buffer, c, 0, length);

            if (playHead.playing)
                playHead.ppq += length / rate * playHead.bpm / 60.0;
            playHead.timeInSamples += length;
        }
        position += numSamples;
        return result;
    }

    // Fires an event by its name, as the panel's buttons and scripts do.
    static void fire(Quindrel& instance, const juce::String& name)
    {
        const int uid = instance.getEvents().getUid(name);
        EXPECT_GE(uid, 0) << name;
        instance.handleEvent(uid);
    }
    void fire(const juce::String& name) { fire(*plugin, name); }

    // The step row's lamps: 0 off, 0.5 dim, 1 lit.
    std::vector<double> stepLights() const
    {
        std::vector<double> lights;
        for (int s = 0; s < 16; ++s)
            lights.push_back(plugin->getParameterManager().getValue(ParameterIds::stepState + s));
        return lights;
    }

    static Event noteOn(int sample, int key, int velocity = 100)
    {
        return { sample, juce::MidiMessage::noteOn(1, key, (juce::uint8) velocity) };
    }
    static Event noteOff(int sample, int key)
    {
        return { sample, juce::MidiMessage::noteOff(1, key) };
    }

    // The first sample of a channel whose magnitude exceeds a threshold, or -1.
    static int firstSoundAt(const juce::AudioBuffer<float>& buffer, int channel, float threshold = 1.0e-6f)
    {
        for (int i = 0; i < buffer.getNumSamples(); ++i)
            if (std::abs(buffer.getSample(channel, i)) > threshold)
                return i;
        return -1;
    }

    static float peak(const juce::AudioBuffer<float>& buffer, int channel, int start = 0, int length = -1)
    {
        return buffer.getMagnitude(channel, start, length < 0 ? buffer.getNumSamples() - start : length);
    }

    // Samples that are not finite, or are subnormal.
    static int badSamples(const juce::AudioBuffer<float>& buffer)
    {
        int bad = 0;
        for (int c = 0; c < buffer.getNumChannels(); ++c)
            for (int i = 0; i < buffer.getNumSamples(); ++i)
                bad += std::isfinite(buffer.getSample(c, i)) && std::fpclassify(buffer.getSample(c, i)) != FP_SUBNORMAL ? 0 : 1;
        return bad;
    }

    template <typename PluginClass>
    static Factory factoryFor()
    {
        return [](const PluginPaths& paths) -> std::unique_ptr<Quindrel>
        { return Quindrel::createInstance<PluginClass>(paths); };
    }

    // A user settings file with the given elements.
    static juce::File writeSettings(const juce::File& file, const juce::String& elements)
    {
        file.replaceWithText("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<UserSettings application=\"Quindrel\">" + elements + "</UserSettings>\n");
        return file;
    }

    // Both banks as a save writes them: of a sequencer, or of the factory's files.
    static juce::String banksOf(QuindrelSeq& seq)
    {
        return seq.writeBank(DrumMachineSeq::hostType)->toString() + seq.writeBank(DrumMachineSeq::nativeType)->toString();
    }
    static void loadFactoryBanks(QuindrelSeq& seq)
    {
        seq.readBank(*juce::parseXML(Resources::loadResourceText("default.QDPTRBH")), DrumMachineSeq::hostType);
        seq.readBank(*juce::parseXML(Resources::loadResourceText("default.QDPTRBN")), DrumMachineSeq::nativeType);
    }

    std::vector<Event> noteOnsOut() const
    {
        std::vector<Event> result;
        for (const auto& e : output)
            if (e.message.isNoteOn())
                result.push_back(e);
        return result;
    }

    double rate;
    int block;
    int position = 0;
    PlayHead playHead;
    std::unique_ptr<Quindrel> plugin;
    std::vector<Event> output;
};

// An instance without a host, with the given user settings file (none: the
// built-in defaults).
inline std::unique_ptr<Quindrel> makePlugin(const juce::File& settingsFile = {})
{
    PluginPaths paths;
    paths.settingsFile = settingsFile;
    return Quindrel::createInstance(paths);
}
