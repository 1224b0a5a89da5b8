// quindrel-render as a user runs it: a separate process, its files and its exit code.

#include <gtest/gtest.h>
#include <juce_audio_formats/juce_audio_formats.h>

namespace
{
struct Run
{
    int exitCode = -1;
    juce::String output;
};

Run render(const juce::StringArray& arguments)
{
    juce::StringArray command{ QUINDREL_RENDER_PATH };
    command.addArray(arguments);

    juce::ChildProcess process;
    Run run;
    if (!process.start(command))
        return run;
    run.output = process.readAllProcessOutput();
    // The output can end before the process has been reaped.
    process.waitForProcessToFinish(60000);
    run.exitCode = (int) process.getExitCode();
    return run;
}

juce::File groove()
{
    return juce::File(QUINDREL_SOURCE_DIR).getChildFile("tools/data/groove.mid");
}

std::unique_ptr<juce::AudioFormatReader> openWav(const juce::File& file)
{
    juce::WavAudioFormat format;
    return std::unique_ptr<juce::AudioFormatReader>(format.createReaderFor(file.createInputStream().release(), true));
}
} // namespace

TEST(ToolsRender, BadInputExitsWithTwoAndLeavesNoFile)
{
    const auto folder = juce::File::createTempFile("render-bad");
    folder.createDirectory();
    const auto wav = folder.getChildFile("out.wav");
    const auto garbage = folder.getChildFile("garbage.mid");
    garbage.replaceWithText("this is not a MIDI file");

    auto script = [&folder](const char* name, const char* text)
    {
        const auto file = folder.getChildFile(name);
        file.replaceWithText(text);
        return file.getFullPathName();
    };
    const auto unknownEvent = script("event.tsv", "0\tevent\tToggle Randomizer\n# a comment\n1\tevent\tNxt\n");

    const juce::StringArray cases[] = {
        { "--script", unknownEvent, "-o", wav.getFullPathName() },
        { "--script", script("param.tsv", "0\tparam\tBass Drum Rand Treshold\t0.5\n"), "-o", wav.getFullPathName() },
        { "--script", script("value.tsv", "0\tparam\tBass Drum Rand Threshold\t1.5\n"), "-o", wav.getFullPathName() },
        { "--script", script("form.tsv", "0 event Next\n"), "-o", wav.getFullPathName() },
        { "--script", script("late.tsv", "3\tevent\tNext\n"), "--seconds", "2", "-o", wav.getFullPathName() },
        { "--random-seed", "0", "-o", wav.getFullPathName() },
        { "--midi", folder.getChildFile("missing.mid").getFullPathName(), "-o", wav.getFullPathName() },
        { "--midi", garbage.getFullPathName(), "-o", wav.getFullPathName() },
        { "--frobnicate", "-o", wav.getFullPathName() },
        { "--rate", "fast", "-o", wav.getFullPathName() },
        { "--block", "0", "-o", wav.getFullPathName() },
        { "--outputs", "quad", "-o", wav.getFullPathName() },
        { "--native-pattern", "17", "-o", wav.getFullPathName() },
        { "--seconds" },
        { "--midi", groove().getFullPathName() },
    };

    for (const auto& arguments : cases)
    {
        const auto run = render(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments.joinIntoString(" ") << "\n"
                                   << run.output;
        EXPECT_TRUE(run.output.contains("quindrel-render:")) << run.output;
        EXPECT_FALSE(wav.exists()) << arguments.joinIntoString(" ");
    }
    EXPECT_TRUE(render({ "--script", unknownEvent, "-o", wav.getFullPathName() }).output.contains("line 3")) << "the line of the unknown name";
    folder.deleteRecursively();
}

TEST(ToolsRender, AScriptedRenderWithASeedRepeats)
{
    const auto folder = juce::File::createTempFile("render-script");
    folder.createDirectory();
    const auto script = folder.getChildFile("session.tsv");
    script.replaceWithText("0\tevent\tToggle Pattern Write Mode\n"
                           "0\tevent\tClear All Instruments\n"
                           "0\tevent\tToggle Randomizer\n"
                           "0\tevent\tNext\n"
                           "1.5\tparam\tBass Drum Rand Threshold\t0.7\n"
                           "2\tevent\tNext\n"
                           "3\tevent\tAccept\n");

    auto renderWithSeed = [&](const char* seed)
    {
        const auto wav = folder.getChildFile(juce::String(seed) + ".wav");
        const auto run = render({ "--script", script.getFullPathName(), "--random-seed", seed, "--native-pattern", "1", "-o", wav.getFullPathName() });
        EXPECT_EQ(run.exitCode, 0) << run.output;
        juce::MemoryBlock audio;
        wav.loadFileAsData(audio);
        wav.deleteFile();
        return audio;
    };

    const auto first = renderWithSeed("4357");
    EXPECT_GT(first.getSize(), 48000u * 5 * 4) << "the length covers the script";
    EXPECT_TRUE(first == renderWithSeed("4357")) << "the same seed and script give the same audio";
    EXPECT_FALSE(first == renderWithSeed("4358"));
    folder.deleteRecursively();
}

TEST(ToolsRender, MidiGrooveThroughThePlugin)
{
    const auto folder = juce::File::createTempFile("render-good");
    folder.createDirectory();
    const auto wav = folder.getChildFile("groove.wav");

    const auto run = render({ "--midi", groove().getFullPathName(), "--rate", "44100", "--block", "100", "-o", wav.getFullPathName() });
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_TRUE(run.output.contains("peak")) << run.output;
    EXPECT_TRUE(run.output.contains("real time")) << run.output;

    auto reader = openWav(wav);
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(reader->sampleRate, 44100.0);
    EXPECT_EQ(reader->numChannels, 2u);
    EXPECT_EQ(reader->bitsPerSample, 32u);
    EXPECT_TRUE(reader->usesFloatingPointData);
    EXPECT_NEAR((double) reader->lengthInSamples / 44100.0, 8.0 + 2.0, 0.1); // four bars and the tail

    juce::AudioBuffer<float> audio(2, (int) reader->lengthInSamples);
    reader->read(&audio, 0, audio.getNumSamples(), 0, true, true);
    EXPECT_GT(audio.getMagnitude(0, 0, 4410), 0.05f) << "the first bass drum is missing";

    // Every output, mono.
    const auto all = folder.getChildFile("all.wav");
    ASSERT_EQ(render({ "--midi", groove().getFullPathName(), "--outputs", "mono", "--all-outputs", "--seconds", "1", "-o", all.getFullPathName() }).exitCode, 0);
    EXPECT_EQ(openWav(all)->numChannels, 12u);

    folder.deleteRecursively();
}

TEST(ToolsRender, PatternOptionsChooseWhatPlays)
{
    const auto folder = juce::File::createTempFile("render-patterns");
    folder.createDirectory();

    // Each native pattern and host pattern generates its own notes.
    auto notesOf = [&](const juce::StringArray& options)
    {
        const auto events = folder.getChildFile("events.tsv");
        auto arguments = options;
        arguments.addArray({ "--seconds", "2", "--events-out", events.getFullPathName(), "-o", folder.getChildFile("out.wav").getFullPathName() });
        const auto run = render(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.output;
        return events.loadFileAsString();
    };

    const auto first = notesOf({ "--native-pattern", "1" });

    // The same notes as a Standard MIDI File.
    const auto smf = folder.getChildFile("out.mid");
    ASSERT_EQ(render({ "--native-pattern", "1", "--seconds", "2", "--midi-out", smf.getFullPathName(), "-o", folder.getChildFile("out.wav").getFullPathName() }).exitCode, 0);
    juce::MidiFile midiFile;
    juce::FileInputStream smfStream(smf);
    ASSERT_TRUE(midiFile.readFrom(smfStream));
    int notesInFile = 0;
    for (int t = 0; t < midiFile.getNumTracks(); ++t)
        for (const auto* event : *midiFile.getTrack(t))
            if (event->message.isNoteOnOrOff())
                ++notesInFile;
    juce::StringArray eventLines;
    eventLines.addLines(first.trim());
    EXPECT_EQ(notesInFile, eventLines.size());
    const auto third = notesOf({ "--native-pattern", "3" });
    const auto host = notesOf({ "--host-pattern", "24" });
    EXPECT_TRUE(first.startsWith("0\t144\t")) << "the first step sounds at sample 0 on channel 1";
    EXPECT_NE(first, third);
    EXPECT_NE(first, host);
    EXPECT_TRUE(host.startsWith("0\t144\t"));

    // A bank of one's own replaces the factory store its type names.
    const auto bank = folder.getChildFile("mine.qdptrbN");
    bank.replaceWithText("<PatternBank type=\"nativePattern\"><Pattern application=\"Quindrel\" name=\"Four\" type=\"nativePattern\">"
                         "<VariationA shuffle=\"0\" tempo=\"120\"><Part1 length=\"4\" scale=\"4\"><CB>o...</CB></Part1>"
                         "<Part2 length=\"0\" scale=\"4\"/></VariationA></Pattern></PatternBank>");
    const auto mine = notesOf({ "--patterns", bank.getFullPathName(), "--native-pattern", "1" });
    juce::StringArray lines;
    lines.addLines(mine.trim());
    ASSERT_FALSE(lines.isEmpty());
    for (const auto& line : lines)
    {
        if (line.contains("\t144\t"))
        {
            EXPECT_EQ(line.fromFirstOccurrenceOf("\t144\t", false, false).upToFirstOccurrenceOf("\t", false, false), "56") << "only the cow bell plays";
        }
    }
    EXPECT_EQ(lines.size(), 4 + 3) << "a cow bell on each of four beats, each but the first after its note-off";

    const auto notABank = folder.getChildFile("nothing.qdptrbH");
    notABank.replaceWithText("<Nothing/>");
    EXPECT_EQ(render({ "--patterns", notABank.getFullPathName(), "-o", folder.getChildFile("x.wav").getFullPathName() }).exitCode, 2);
    EXPECT_FALSE(folder.getChildFile("x.wav").exists());

    folder.deleteRecursively();
}

TEST(ToolsRender, AControlMapLetsTheMidiFileMoveALevel)
{
    const auto folder = juce::File::createTempFile("render-ccmap");
    folder.createDirectory();

    // A bass drum each beat for two bars; controller 20 silences it after the first bar.
    juce::MidiMessageSequence track;
    for (int beat = 0; beat < 8; ++beat)
        track.addEvent(juce::MidiMessage::noteOn(10, 36, (juce::uint8) 120).withTimeStamp(beat * 480.0));
    track.addEvent(juce::MidiMessage::controllerEvent(10, 20, 0).withTimeStamp(4 * 480.0 - 240.0));
    juce::MidiFile file;
    file.setTicksPerQuarterNote(480);
    file.addTrack(track);
    const auto midi = folder.getChildFile("beats.mid");
    {
        juce::FileOutputStream stream(midi);
        ASSERT_TRUE(file.writeTo(stream));
    }
    const auto map = folder.getChildFile("level.qcc");
    map.replaceWithText("<MidiCCMap><assign CC=\"20\" param=\"BD Level\"/></MidiCCMap>");

    const auto wav = folder.getChildFile("out.wav");
    const auto run = render({ "--midi", midi.getFullPathName(), "--ccmap", map.getFullPathName(), "--rate", "48000", "-o", wav.getFullPathName() });
    ASSERT_EQ(run.exitCode, 0) << run.output;

    auto reader = openWav(wav);
    ASSERT_NE(reader, nullptr);
    juce::AudioBuffer<float> audio(2, (int) reader->lengthInSamples);
    reader->read(&audio, 0, audio.getNumSamples(), 0, true, true);
    const float firstBar = audio.getMagnitude(0, 0, 48000 * 2 - 12000);
    const float secondBar = audio.getMagnitude(0, 48000 * 2, 48000 * 2);
    EXPECT_GT(firstBar, 0.05f);
    EXPECT_LT(secondBar, firstBar * 1.0e-3f) << "controller 20 did not reach the bass drum level";

    EXPECT_EQ(render({ "--ccmap", midi.getFullPathName(), "-o", wav.getFullPathName() + "x" }).exitCode, 2) << "a MIDI file is no map";
    folder.deleteRecursively();
}
