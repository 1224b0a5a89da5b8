// quindrel-render as a user runs it: a separate process, its files, its
// messages and its exit code.

#include "support/RenderProcess.h"

#include <gtest/gtest.h>
#include <juce_audio_formats/juce_audio_formats.h>
#include <juce_audio_processors/juce_audio_processors.h>

namespace
{
juce::AudioBuffer<float> readWav(const juce::File& file, double* rate = nullptr)
{
    juce::WavAudioFormat format;
    std::unique_ptr<juce::AudioFormatReader> reader(format.createReaderFor(file.createInputStream().release(), true));
    juce::AudioBuffer<float> audio;
    if (reader == nullptr)
        return audio;
    EXPECT_TRUE(reader->bitsPerSample == 32 && reader->usesFloatingPointData) << file.getFileName();
    audio.setSize((int) reader->numChannels, (int) reader->lengthInSamples);
    reader->read(&audio, 0, audio.getNumSamples(), 0, true, true);
    if (rate != nullptr)
        *rate = reader->sampleRate;
    return audio;
}

struct Folder
{
    Folder() { folder.createDirectory(); }
    ~Folder() { folder.deleteRecursively(); }
    juce::File operator[](const char* name) const { return folder.getChildFile(name); }
    juce::String path(const char* name) const { return folder.getChildFile(name).getFullPathName(); }
    juce::String write(const char* name, const juce::String& text) const
    {
        folder.getChildFile(name).replaceWithText(text);
        return path(name);
    }
    juce::File folder = juce::File::createTempFile("render");
};

const juce::String groove = juce::File(QUINDREL_SOURCE_DIR).getChildFile("tools/data/groove.mid").getFullPathName();
} // namespace

TEST(ToolsRender, BadInputStopsTheRunWithOneLineAndWritesNothing)
{
    Folder f;
    const auto wav = f.path("out.wav"), after = f.path("after.qdprsb");
    const auto notXml = f.write("notes.txt", "a shopping list");
    const auto bank = f.write("bank.qdprsb", "<PresetBank name=\"B\"><PresetGroup name=\"G\"><Preset application=\"Quindrel\" name=\"P\"/></PresetGroup></PresetBank>");
    const auto unknownEvent = f.write("event.tsv", "0\tevent\tToggle Randomizer\n# a comment\n1\tevent\tNxt\n");
    // Files it cannot take: one line naming the problem.
    const std::pair<juce::StringArray, const char*> badFiles[] = {
        { { "--script", unknownEvent }, "line 3" },
        { { "--script", f.write("param.tsv", "0\tparam\tBass Drum Rand Treshold\t0.5\n") }, "" },
        { { "--script", f.write("value.tsv", "0\tparam\tBass Drum Rand Threshold\t1.5\n") }, "" },
        { { "--script", f.write("form.tsv", "0 event Next\n") }, "" },
        { { "--script", f.write("late.tsv", "3\tevent\tNext\n"), "--seconds", "2" }, "" },
        { { "--midi", f.path("missing.mid") }, "" },
        { { "--midi", f.write("garbage.mid", "this is not a MIDI file") }, "" },
        { { "--patterns", f.write("nothing.qdptrbH", "<Nothing/>") }, "" },
        { { "--ccmap", groove }, "" },
        { { "--preset-bank", notXml }, "" },
        { { "--preset-bank", f.path("missing.qdprsb") }, "" },
        { { "--preset-file", bank }, "" },
        { { "--preset-bank", bank, "--preset-file", notXml, "--save-preset-bank", after }, "" },
        { { "--save-preset-bank", f.path("no/such/folder/bank.qdprsb") }, "" },
        { { "--state", bank }, "not a state of Quindrel" },
        { { "--state", groove }, "not a state of Quindrel" },
    };
    // Mistakes of the command line: a line, then the usage.
    const juce::StringArray badCommands[] = {
        { "--random-seed", "0" },
        { "--frobnicate" },
        { "--rate", "fast" },
        { "--block", "0" },
        { "--outputs", "quad" },
        { "--native-pattern", "17" },
        { "--preset", "128" },
        { "--seconds" },
    };
    auto check = [&](const juce::StringArray& options, const char* message, bool usage)
    {
        juce::StringArray arguments{ "-o", wav };
        arguments.addArray(options);
        const auto run = runRender(arguments, juce::ChildProcess::wantStdErr);
        const auto firstLine = run.output.upToFirstOccurrenceOf("\n", false, false);
        EXPECT_TRUE(run.exitCode == 2 && firstLine.startsWith("quindrel-render: ") && firstLine.contains(message)) << arguments.joinIntoString(" ") + "\n" + run.output;
        EXPECT_EQ(run.output.fromFirstOccurrenceOf("\n", false, false).trim().startsWith("usage:"), usage) << run.output;
        EXPECT_FALSE(juce::File(wav).exists() || juce::File(after).exists()) << arguments.joinIntoString(" ");
    };
    for (const auto& [arguments, message] : badFiles)
        check(arguments, message, false);
    for (const auto& arguments : badCommands)
        check(arguments, "", true);
    const auto run = runRender({ "--midi", groove }, juce::ChildProcess::wantStdErr);
    EXPECT_TRUE(run.exitCode == 2 && run.output.startsWith("quindrel-render: no output file")) << run.output;
}

TEST(ToolsRender, AMidiGroovePlaysIntoAFloatWavOfEveryOutput)
{
    Folder f;
    const auto run = runRender({ "--midi", groove, "--rate", "44100", "--block", "100", "-o", f.path("groove.wav") });
    ASSERT_TRUE(run.exitCode == 0 && run.output.contains("peak") && run.output.contains("real time")) << run.output;

    double rate = 0.0;
    const auto audio = readWav(f["groove.wav"], &rate);
    EXPECT_TRUE(rate == 44100.0 && audio.getNumChannels() == 2);
    EXPECT_NEAR(audio.getNumSamples() / 44100.0, 8.0 + 2.0, 0.1); // four bars and the tail
    EXPECT_GT(audio.getMagnitude(0, 0, 4410), 0.05f) << "the first bass drum is missing";

    ASSERT_EQ(runRender({ "--midi", groove, "--outputs", "mono", "--all-outputs", "--seconds", "1", "-o", f.path("all.wav") }).exitCode, 0);
    EXPECT_EQ(readWav(f["all.wav"]).getNumChannels(), 12);
}

TEST(ToolsRender, AScriptedRenderWithASeedRepeats)
{
    Folder f;
    const auto script = f.write("session.tsv", "0\tevent\tToggle Pattern Write Mode\n0\tevent\tClear All Instruments\n"
                                               "0\tevent\tToggle Randomizer\n0\tevent\tNext\n"
                                               "1.5\tparam\tBass Drum Rand Threshold\t0.7\n2\tevent\tNext\n3\tevent\tAccept\n");
    auto renderWithSeed = [&](const char* seed)
    {
        EXPECT_EQ(runRender({ "--script", script, "--random-seed", seed, "--native-pattern", "1", "-o", f.path("out.wav") }).exitCode, 0);
        juce::MemoryBlock audio;
        f["out.wav"].loadFileAsData(audio);
        return audio;
    };
    const auto first = renderWithSeed("4357");
    EXPECT_GT(first.getSize(), 48000u * 5 * 4) << "the length covers the script";
    EXPECT_TRUE(first == renderWithSeed("4357")) << "the same seed and script give the same audio";
    EXPECT_FALSE(first == renderWithSeed("4358"));
}

TEST(ToolsRender, PatternOptionsChooseWhatPlays)
{
    Folder f;
    auto notesOf = [&](const juce::StringArray& options)
    {
        auto arguments = options;
        arguments.addArray({ "--seconds", "2", "--events-out", f.path("events.tsv"), "--midi-out", f.path("out.mid"), "-o", f.path("out.wav") });
        const auto run = runRender(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.output;
        return juce::StringArray::fromLines(f["events.tsv"].loadFileAsString().trim());
    };

    // Each pattern its own notes, from sample 0 on channel 1; the Standard
    // MIDI File holds the same notes as the event list.
    const auto first = notesOf({ "--native-pattern", "1" });
    juce::MidiFile midiFile;
    juce::FileInputStream stream(f["out.mid"]);
    ASSERT_TRUE(midiFile.readFrom(stream));
    int notesInFile = 0;
    for (int t = 0; t < midiFile.getNumTracks(); ++t)
        for (const auto* event : *midiFile.getTrack(t))
            notesInFile += event->message.isNoteOnOrOff() ? 1 : 0;
    EXPECT_EQ(notesInFile, first.size());
    const auto host = notesOf({ "--host-pattern", "24" });
    EXPECT_TRUE(first[0].startsWith("0\t144\t") && host[0].startsWith("0\t144\t")) << first[0] << ", " << host[0];
    EXPECT_NE(first, notesOf({ "--native-pattern", "3" }));
    EXPECT_NE(first, host);

    // A bank of one's own replaces the factory store its type names.
    const auto bank = f.write("mine.qdptrbN", "<PatternBank type=\"nativePattern\"><Pattern application=\"Quindrel\" name=\"Four\" type=\"nativePattern\">"
                                              "<VariationA shuffle=\"0\" tempo=\"120\"><Part1 length=\"4\" scale=\"4\"><CB>o...</CB></Part1>"
                                              "<Part2 length=\"0\" scale=\"4\"/></VariationA></Pattern></PatternBank>");
    const auto mine = notesOf({ "--patterns", bank, "--native-pattern", "1" });
    EXPECT_EQ(mine.size(), 4 + 3) << "a cow bell on each of four beats, each but the first after its note-off";
    for (const auto& line : mine)
        EXPECT_TRUE(!line.contains("\t144\t") || line.fromFirstOccurrenceOf("\t144\t", false, false).startsWith("56\t")) << "only the cow bell plays: " << line;
}

TEST(ToolsRender, AControlMapLetsTheMidiFileMoveALevel)
{
    Folder f;
    // A bass drum each beat for two bars; controller 20 silences it after the first bar.
    juce::MidiMessageSequence track;
    for (int beat = 0; beat < 8; ++beat)
        track.addEvent(juce::MidiMessage::noteOn(10, 36, (juce::uint8) 120).withTimeStamp(beat * 480.0));
    track.addEvent(juce::MidiMessage::controllerEvent(10, 20, 0).withTimeStamp(4 * 480.0 - 240.0));
    juce::MidiFile file;
    file.setTicksPerQuarterNote(480);
    file.addTrack(track);
    {
        juce::FileOutputStream stream(f["beats.mid"]);
        ASSERT_TRUE(file.writeTo(stream));
    }
    const auto map = f.write("level.qcc", "<MidiCCMap><assign CC=\"20\" param=\"BD Level\"/></MidiCCMap>");
    const auto run = runRender({ "--midi", f.path("beats.mid"), "--ccmap", map, "--rate", "48000", "-o", f.path("out.wav") });
    ASSERT_EQ(run.exitCode, 0) << run.output;

    const auto audio = readWav(f["out.wav"]);
    const float firstBar = audio.getMagnitude(0, 0, 48000 * 2 - 12000);
    EXPECT_GT(firstBar, 0.05f);
    EXPECT_LT(audio.getMagnitude(0, 48000 * 2, 48000 * 2), firstBar * 1.0e-3f) << "controller 20 did not reach the bass drum level";
}

TEST(ToolsRenderPresets, AnOlderBankLoadsPlaysAndIsSavedAndListedInTheNewFormAndSettingsAreSavedOnlyWhereAsked)
{
    Folder f;
    const auto old = f.write("old.qdb", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<QuindrelPresetBank>"
                                        "<QuindrelPreset name=\"Quiet\"><param name=\"BD Level\" value=\"0.1\"/></QuindrelPreset>"
                                        "<QuindrelPreset name=\"Loud\"><param name=\"BD Level\" value=\"1\"/><param name=\"BD Decay\" value=\"1\"/></QuindrelPreset>"
                                        "</QuindrelPresetBank>\n");
    // The user's settings are read, never written but where asked.
    const auto settings = f.write("in.ini", "<UserSettings application=\"Quindrel\"><PresetSettings storing=\"automatic\"/></UserSettings>");
    const auto before = f["in.ini"].loadFileAsString();
    ASSERT_EQ(runRender({ "--preset-bank", old, "--midi", groove, "--seconds", "2", "-o", f.path("quiet.wav"), "--settings", settings, "--save-settings", f.path("out.ini") }).exitCode, 0);
    EXPECT_EQ(f["in.ini"].loadFileAsString(), before);
    EXPECT_TRUE(f["out.ini"].loadFileAsString().contains("<PresetSettings storing=\"automatic\"/>"));
    ASSERT_EQ(runRender({ "--preset-bank", old, "--preset", "1", "--midi", groove, "--seconds", "2", "-o", f.path("loud.wav"),
                          "--save-preset-bank", f.path("saved.qdprsb") })
                  .exitCode,
              0);
    EXPECT_GT(readWav(f["loud.wav"]).getRMSLevel(0, 0, 96000), 2.0f * readWav(f["quiet.wav"]).getRMSLevel(0, 0, 96000));
    EXPECT_TRUE(f["saved.qdprsb"].loadFileAsString().contains("<Preset application=\"Quindrel\" name=\"Loud\">"));

    const auto listing = runRender({ "--list-presets", "--preset-bank", f.path("saved.qdprsb"), "--preset", "1" });
    ASSERT_EQ(listing.exitCode, 0) << listing.output;
    const auto lines = juce::StringArray::fromLines(listing.output.trimEnd());
    EXPECT_TRUE(lines.size() == 1 + 2 + 128 + 1 && lines[lines.size() - 1] == "current preset: 1  Loud") << listing.output;
    EXPECT_TRUE(listing.output.contains("\n  All presets (2)\n      0  Quiet\n      1  Loud\n  Not used (126)\n      2  Preset 2\n")) << listing.output;
}

TEST(ToolsRenderState, ASavedStatePlaysWhatWasSavedAsXmlAndAsAHostsBlock)
{
    Folder f;
    // The disco kit, whose hi hat filters are moved: they must be heard as saved.
    ASSERT_EQ(runRender({ "--native-pattern", "2", "--preset", "3", "--seconds", "3", "-o", f.path("first.wav"), "--save-state", f.path("song.xml") }).exitCode, 0);
    juce::MemoryBlock binary;
    juce::AudioProcessor::copyXmlToBinary(*juce::parseXML(f["song.xml"]), binary);
    f["song.bin"].replaceWithData(binary.getData(), binary.getSize());

    ASSERT_EQ(runRender({ "--state", f.path("song.xml"), "--seconds", "3", "-o", f.path("xml.wav"), "--save-state", f.path("again.xml") }).exitCode, 0);
    ASSERT_EQ(runRender({ "--state", f.path("song.bin"), "--seconds", "3", "-o", f.path("block.wav") }).exitCode, 0);
    EXPECT_TRUE(f["again.xml"].hasIdenticalContentTo(f["song.xml"]));

    const auto a = readWav(f["first.wav"]);
    EXPECT_GT(a.getRMSLevel(0, 0, a.getNumSamples()), 0.01f);
    EXPECT_TRUE(f["xml.wav"].hasIdenticalContentTo(f["first.wav"])) << "the restored song plays something else";
    EXPECT_TRUE(f["block.wav"].hasIdenticalContentTo(f["first.wav"])) << "XML and binary block differ";
}
