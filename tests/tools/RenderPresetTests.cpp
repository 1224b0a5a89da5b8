// quindrel-render's preset and state options, run as a user runs them.

#include <gtest/gtest.h>
#include <juce_audio_formats/juce_audio_formats.h>
#include <juce_audio_processors/juce_audio_processors.h>

namespace
{
struct Run
{
    int exitCode = -1;
    juce::String output;
};

Run run(const juce::StringArray& arguments, int streams = juce::ChildProcess::wantStdOut | juce::ChildProcess::wantStdErr)
{
    juce::StringArray command{ QUINDREL_RENDER_PATH };
    command.addArray(arguments);

    juce::ChildProcess process;
    Run result;
    if (!process.start(command, streams))
        return result;
    result.output = process.readAllProcessOutput();
    process.waitForProcessToFinish(60000);
    result.exitCode = (int) process.getExitCode();
    return result;
}

juce::AudioBuffer<float> readWav(const juce::File& file)
{
    juce::WavAudioFormat format;
    std::unique_ptr<juce::AudioFormatReader> reader(format.createReaderFor(file.createInputStream().release(), true));
    juce::AudioBuffer<float> audio;
    if (reader != nullptr)
    {
        audio.setSize((int) reader->numChannels, (int) reader->lengthInSamples);
        reader->read(&audio, 0, (int) reader->lengthInSamples, 0, true, true);
    }
    return audio;
}

struct Folder
{
    Folder() { folder.createDirectory(); }
    ~Folder() { folder.deleteRecursively(); }
    juce::File operator[](const char* name) const { return folder.getChildFile(name); }
    juce::File folder = juce::File::createTempFile("render-presets");
};
} // namespace

TEST(ToolsRenderPresets, ListShowsTheFactoryBankAndTheChosenPreset)
{
    const auto listing = run({ "--list-presets", "--preset", "5" });
    ASSERT_EQ(listing.exitCode, 0) << listing.output;

    const auto lines = juce::StringArray::fromLines(listing.output.trimEnd());
    EXPECT_EQ(lines[0], "Quindrel Factory Presets");
    EXPECT_EQ(lines[1].trim(), "All presets (16)");
    EXPECT_EQ(lines[18].trim(), "Not used (112)");
    EXPECT_EQ(lines[19].trim(), "16  Preset 16");
    EXPECT_EQ(lines.size(), 1 + 2 + 128 + 1);
    EXPECT_TRUE(lines[lines.size() - 1].startsWith("current preset: 5  ")) << lines[lines.size() - 1];
    EXPECT_TRUE(lines[lines.size() - 1].endsWith(lines[7].fromFirstOccurrenceOf("5  ", false, false))) << "the name of preset 5";
}

TEST(ToolsRenderPresets, AnOlderBankLoadsPlaysAndIsSavedInTheNewForm)
{
    Folder folder;
    const auto old = folder["old.qdb"];
    old.replaceWithText("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<QuindrelPresetBank>"
                        "<QuindrelPreset name=\"Quiet\"><param name=\"BD Level\" value=\"0.1\"/></QuindrelPreset>"
                        "<QuindrelPreset name=\"Loud\"><param name=\"BD Level\" value=\"1\"/><param name=\"BD Decay\" value=\"1\"/></QuindrelPreset>"
                        "</QuindrelPresetBank>\n");

    const auto saved = folder["saved.qdprsb"];
    const auto quiet = folder["quiet.wav"], loud = folder["loud.wav"];
    const auto midi = juce::File(QUINDREL_SOURCE_DIR).getChildFile("tools/data/groove.mid").getFullPathName();
    ASSERT_EQ(run({ "--preset-bank", old.getFullPathName(), "--midi", midi, "--seconds", "2", "-o", quiet.getFullPathName() }).exitCode, 0);
    ASSERT_EQ(run({ "--preset-bank", old.getFullPathName(), "--preset", "1", "--midi", midi, "--seconds", "2", "-o", loud.getFullPathName(),
                    "--save-preset-bank", saved.getFullPathName() })
                  .exitCode,
              0);
    EXPECT_GT(readWav(loud).getRMSLevel(0, 0, 96000), 2.0f * readWav(quiet).getRMSLevel(0, 0, 96000));

    const auto text = saved.loadFileAsString();
    EXPECT_TRUE(text.contains("<PresetGroup name=\"All presets\">")) << text.substring(0, 300);
    EXPECT_TRUE(text.contains("<Preset application=\"Quindrel\" name=\"Loud\">"));
    const auto listing = run({ "--list-presets", "--preset-bank", saved.getFullPathName() });
    EXPECT_TRUE(listing.output.contains("All presets (2)\n      0  Quiet\n      1  Loud\n  Not used (126)")) << listing.output;
}

TEST(ToolsRenderPresets, AFileThePluginDoesNotTakeStopsTheRunWithOneLine)
{
    Folder folder;
    const auto wav = folder["out.wav"];
    const auto bank = folder["bank.qdprsb"];
    const auto notXml = folder["notes.txt"];
    notXml.replaceWithText("a shopping list");
    ASSERT_EQ(run({ "--seconds", "0.1", "-o", wav.getFullPathName(), "--save-preset-bank", bank.getFullPathName() }).exitCode, 0);
    wav.deleteFile();

    const juce::StringArray cases[] = {
        { "--preset-bank", notXml.getFullPathName(), "-o", wav.getFullPathName() },
        { "--preset-bank", folder["missing.qdprsb"].getFullPathName(), "-o", wav.getFullPathName() },
        { "--preset-file", bank.getFullPathName(), "-o", wav.getFullPathName() },
        { "--preset-bank", bank.getFullPathName(), "--preset-file", notXml.getFullPathName(), "-o", wav.getFullPathName(),
          "--save-preset-bank", folder["after.qdprsb"].getFullPathName() },
        { "--preset", "128", "-o", wav.getFullPathName() },
        { "--save-preset-bank", folder["no/such/folder/bank.qdprsb"].getFullPathName(), "-o", wav.getFullPathName() },
    };

    for (const auto& arguments : cases)
    {
        const auto result = run(arguments, juce::ChildProcess::wantStdErr);
        EXPECT_EQ(result.exitCode, 2) << arguments.joinIntoString(" ");
        EXPECT_TRUE(result.output.startsWith("quindrel-render: ")) << result.output;
        if (!arguments.contains("128")) // a mistake of the command line also shows the usage
        {
            EXPECT_EQ(juce::StringArray::fromLines(result.output.trimEnd()).size(), 1) << result.output;
        }
        EXPECT_FALSE(wav.exists()) << arguments.joinIntoString(" ");
        EXPECT_FALSE(folder["after.qdprsb"].exists());
    }
}

TEST(ToolsRenderState, ASavedStatePlaysWhatWasSavedAsXmlAndAsAHostsBlock)
{
    Folder folder;
    const auto saved = folder["song.xml"], block = folder["song.bin"], again = folder["again.xml"];
    const auto first = folder["first.wav"], fromXml = folder["xml.wav"], fromBlock = folder["block.wav"];

    // The disco kit, whose hi hat filters are moved: they must be heard as saved.
    ASSERT_EQ(run({ "--native-pattern", "2", "--preset", "3", "--seconds", "3", "-o", first.getFullPathName(),
                    "--save-state", saved.getFullPathName() })
                  .exitCode,
              0);
    juce::MemoryBlock binary;
    juce::AudioProcessor::copyXmlToBinary(*juce::parseXML(saved), binary);
    block.replaceWithData(binary.getData(), binary.getSize());

    ASSERT_EQ(run({ "--state", saved.getFullPathName(), "--seconds", "3", "-o", fromXml.getFullPathName(),
                    "--save-state", again.getFullPathName() })
                  .exitCode,
              0);
    ASSERT_EQ(run({ "--state", block.getFullPathName(), "--seconds", "3", "-o", fromBlock.getFullPathName() }).exitCode, 0);
    EXPECT_TRUE(again.hasIdenticalContentTo(saved));

    const auto a = readWav(first), b = readWav(fromXml), c = readWav(fromBlock);
    ASSERT_EQ(a.getNumSamples(), b.getNumSamples());
    EXPECT_GT(a.getRMSLevel(0, 0, a.getNumSamples()), 0.01f);
    for (int i = 0; i < a.getNumSamples(); ++i)
    {
        ASSERT_EQ(a.getSample(0, i), b.getSample(0, i)) << "the restored song plays something else from sample " << i;
        ASSERT_EQ(b.getSample(0, i), c.getSample(0, i)) << "XML and binary block differ at " << i;
    }
}

TEST(ToolsRenderState, SettingsAreReadOnlyAndSavedOnlyWhereAsked)
{
    Folder folder;
    const auto settings = folder["in.ini"], out = folder["out.ini"], wav = folder["x.wav"];
    settings.replaceWithText("<UserSettings application=\"Quindrel\"><PresetSettings storing=\"automatic\"/>"
                             "<InternalSequencer><HostPlayDetection type=\"byLowestCNoteOn\"/></InternalSequencer></UserSettings>");
    const auto before = settings.loadFileAsString();

    ASSERT_EQ(run({ "--settings", settings.getFullPathName(), "--seconds", "0.1", "-o", wav.getFullPathName(),
                    "--save-settings", out.getFullPathName() })
                  .exitCode,
              0);
    EXPECT_EQ(settings.loadFileAsString(), before);
    const auto written = juce::parseXML(out);
    ASSERT_NE(written, nullptr);
    EXPECT_EQ(written->getChildByName("PresetSettings")->getStringAttribute("storing"), "automatic");
    EXPECT_EQ(written->getChildByName("InternalSequencer")->getChildByName("HostPlayDetection")->getStringAttribute("type"), "byLowestCNoteOn");

    // What is no state stops the run before anything is written.
    for (const auto& notState : { settings, folder["x.wav"] })
    {
        const auto result = run({ "--state", notState.getFullPathName(), "-o", folder["y.wav"].getFullPathName() }, juce::ChildProcess::wantStdErr);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_TRUE(result.output.startsWith("quindrel-render: not a state of Quindrel")) << result.output;
        EXPECT_FALSE(folder["y.wav"].exists());
    }
}
