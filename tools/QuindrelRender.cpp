// quindrel-render: plays Quindrel as a host would, with no window, and writes
// what it gives back: the audio as a 32-bit float WAV, and on request the MIDI
// it generates.

#include "RenderOptions.h"
#include "RenderSession.h"

#include <juce_audio_formats/juce_audio_formats.h>
#include <juce_events/juce_events.h>

#include <iostream>

namespace
{
constexpr int exitFailure = 1;
constexpr int exitBadInput = 2;

// Writes through a temporary file, so that a failed write leaves no partial output.
bool writeWav(const juce::File& file, const juce::AudioBuffer<float>& audio, int firstChannel, int numChannels, double sampleRate)
{
    juce::TemporaryFile temporary(file);
    {
        auto stream = temporary.getFile().createOutputStream();
        if (stream == nullptr)
            return false;

        std::unique_ptr<juce::AudioFormatWriter> writer(
            juce::WavAudioFormat().createWriterFor(stream.get(), sampleRate, (unsigned int) numChannels, 32, {}, 0));
        if (writer == nullptr)
            return false;
        stream.release(); // the writer owns it now

        std::vector<const float*> channels;
        for (int c = 0; c < numChannels; ++c)
            channels.push_back(audio.getReadPointer(firstChannel + c));
        if (!writer->writeFromFloatArrays(channels.data(), numChannels, audio.getNumSamples()))
            return false;
    }
    return temporary.overwriteTargetFileWithTemporary();
}

bool writeMidiFile(const juce::File& file, const std::vector<RenderSession::TimedMessage>& messages, double sampleRate, double tempo)
{
    constexpr int ticksPerQuarter = 960;
    juce::MidiMessageSequence track;
    track.addEvent(juce::MidiMessage::tempoMetaEvent(juce::roundToInt(60000000.0 / tempo)), 0.0);
    for (const auto& m : messages)
    {
        auto message = m.message;
        message.setTimeStamp(std::round((double) m.sample / sampleRate * tempo / 60.0 * ticksPerQuarter));
        track.addEvent(message);
    }
    track.updateMatchedPairs();

    juce::MidiFile midiFile;
    midiFile.setTicksPerQuarterNote(ticksPerQuarter);
    midiFile.addTrack(track);

    juce::TemporaryFile temporary(file);
    {
        auto stream = temporary.getFile().createOutputStream();
        if (stream == nullptr || !midiFile.writeTo(*stream))
            return false;
    }
    return temporary.overwriteTargetFileWithTemporary();
}

bool writePng(const juce::File& file, const juce::Image& image)
{
    juce::TemporaryFile temporary(file);
    {
        auto stream = temporary.getFile().createOutputStream();
        if (stream == nullptr || !image.isValid() || !juce::PNGImageFormat().writeImageToStream(image, *stream))
            return false;
    }
    return temporary.overwriteTargetFileWithTemporary();
}

bool writeEvents(const juce::File& file, const std::vector<RenderSession::TimedMessage>& messages)
{
    juce::String text;
    for (const auto& m : messages)
    {
        const auto* data = m.message.getRawData();
        const int size = m.message.getRawDataSize();
        text << juce::String(m.sample) << "\t" << (int) data[0] << "\t" << (size > 1 ? (int) data[1] : 0) << "\t"
             << (size > 2 ? (int) data[2] : 0) << "\n";
    }

    juce::TemporaryFile temporary(file);
    return temporary.getFile().replaceWithText(text) && temporary.overwriteTargetFileWithTemporary();
}

void printSummary(const RenderSession::Result& result, int firstChannel, int numChannels, double sampleRate, const juce::File& file)
{
    const double seconds = result.audio.getNumSamples() / sampleRate;
    std::cout << file.getFullPathName() << ": " << juce::String(seconds, 3) << " s at " << sampleRate << " Hz, "
              << numChannels << (numChannels == 1 ? " channel" : " channels") << "\n";

    for (int c = firstChannel; c < firstChannel + numChannels; ++c)
    {
        const auto peak = result.audio.getMagnitude(c, 0, result.audio.getNumSamples());
        const auto rms = result.audio.getRMSLevel(c, 0, result.audio.getNumSamples());
        std::cout << "  channel " << c + 1 << ": peak " << juce::String(juce::Decibels::gainToDecibels(peak, -200.0f), 1)
                  << " dBFS, RMS " << juce::String(juce::Decibels::gainToDecibels(rms, -200.0f), 1) << " dBFS\n";
    }

    std::cout << "  " << result.generated.size() << " MIDI events generated\n";
    std::cout << "  rendered in " << juce::String(result.renderSeconds, 3) << " s, "
              << juce::String(result.renderSeconds > 0.0 ? seconds / result.renderSeconds : 0.0, 1) << "x real time\n";
}
} // namespace

int main(int argc, char* argv[])
{
    RenderOptions options;
    try
    {
        options = parseRenderOptions(juce::ArgumentList(argc, argv));
    }
    catch (const BadFile& error)
    {
        std::cerr << "quindrel-render: " << error.what() << "\n";
        return exitBadInput;
    }
    catch (const BadInput& error)
    {
        std::cerr << "quindrel-render: " << error.what() << "\n\n"
                  << renderUsage;
        return exitBadInput;
    }

    if (options.help)
    {
        std::cout << renderUsage;
        return 0;
    }

    // Parameters and clocks post their updates to a message queue, which must exist.
    juce::ScopedJuceInitialiser_GUI juce;

    RenderSession::Result result;
    std::unique_ptr<RenderSession> session;
    try
    {
        session = std::make_unique<RenderSession>(options);
        if (options.listPresets)
        {
            session->listPresets(std::cout);
            return 0;
        }
        result = session->run();
    }
    catch (const BadInput& error)
    {
        std::cerr << "quindrel-render: " << error.what() << "\n";
        return exitBadInput;
    }

    const int firstChannel = 0;
    const int numChannels = options.allOutputs ? result.audio.getNumChannels() : result.mainChannels;
    if (options.snapshot != juce::File() && !writePng(options.snapshot, result.snapshot))
    {
        std::cerr << "quindrel-render: could not write " << options.snapshot.getFullPathName() << "\n";
        return exitFailure;
    }
    if (options.snapshot != juce::File())
        std::cout << options.snapshot.getFullPathName() << ": panel of " << result.snapshot.getWidth() << " by "
                  << result.snapshot.getHeight() << " pixels\n";
    if (options.output != juce::File() && !writeWav(options.output, result.audio, firstChannel, numChannels, options.sampleRate))
    {
        std::cerr << "quindrel-render: could not write " << options.output.getFullPathName() << "\n";
        return exitFailure;
    }
    if (options.midiOut != juce::File() && !writeMidiFile(options.midiOut, result.generated, options.sampleRate, options.tempo))
    {
        std::cerr << "quindrel-render: could not write " << options.midiOut.getFullPathName() << "\n";
        return exitFailure;
    }
    if (options.eventsOut != juce::File() && !writeEvents(options.eventsOut, result.generated))
    {
        std::cerr << "quindrel-render: could not write " << options.eventsOut.getFullPathName() << "\n";
        return exitFailure;
    }

    if (options.savePresetBank != juce::File() && !session->preparePlugin().saveBankFile(options.savePresetBank))
    {
        std::cerr << "quindrel-render: could not write " << options.savePresetBank.getFullPathName() << "\n";
        return exitFailure;
    }

    if (options.saveState != juce::File() && !session->saveState(options.saveState))
    {
        std::cerr << "quindrel-render: could not write " << options.saveState.getFullPathName() << "\n";
        return exitFailure;
    }
    if (options.saveSettings != juce::File() && !session->saveSettings(options.saveSettings))
    {
        std::cerr << "quindrel-render: could not write " << options.saveSettings.getFullPathName() << "\n";
        return exitFailure;
    }

    if (options.output != juce::File())
        printSummary(result, firstChannel, numChannels, options.sampleRate, options.output);
    return 0;
}
