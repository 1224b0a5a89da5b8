// quindrel-render --snapshot and --skin, as a skin's maker runs them.

#include "EditorTestSupport.h"

#include "support/RenderProcess.h"

using namespace editortest;

TEST(EditorSnapshot, PaintsTheSkinFromAFolderWithTheValuesAtTheEndAndAScriptWorksItsWindows)
{
    TestSkin skin;
    setSkinDirectory({}); // the renderer is told the folder itself
    skin.writeStrip("Knob.png", 40, 40, 11);
    skin.writeSkin(900, 700, R"(<Knob name="Volume"><links><link as="connectedTo" param="Main Volume"/></links>
  <gfx resource="Knob.png" framesNum="11"/><pos left="100" top="50"/></Knob>)");
    const auto file = [&skin](const char* name)
    { return skin.getFolder().getChildFile(name).getFullPathName(); };
    const auto snapshot = [&](const juce::StringArray& options)
    {
        auto arguments = options;
        arguments.addArray({ "--seconds", "0.5", "--skin", file(""), "--snapshot", file("panel.png") });
        const auto run = runRender(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.output;
        return juce::ImageFileFormat::loadFrom(juce::File(file("panel.png")));
    };

    const auto image = snapshot({});
    ASSERT_TRUE(image.isValid());
    EXPECT_EQ(image.getWidth(), 900);
    EXPECT_GT(image.getHeight(), 700) << "the status bar under the panel";
    EXPECT_EQ(image.getPixelAt(10, 10), backgroundColour);
    EXPECT_EQ(frameOf(image.getPixelAt(120, 70)), 5) << "Main Volume starts at 0.5";

    // A script's events and clicks go through the panel, its windows found by their names.
    juce::File(file("map.qdccmap")).replaceWithText(R"(<MidiControlMap name="Quindrel"><assign CC="7" param="Main Volume"/></MidiControlMap>)");
    juce::File(file("clear.tsv")).replaceWithText("0\tevent\tOptions\n0.1\tclick\tClear All\n0.2\tclick\tYes\n");
    const auto options = snapshot({ "--ccmap", file("map.qdccmap"), "--script", file("clear.tsv"), "--save-state", file("state.xml") });
    EXPECT_LT(options.getPixelAt(10, 10).getBrightness(), backgroundColour.getBrightness()) << "the panel dimmed behind the window";
    const auto saved = juce::parseXML(juce::File(file("state.xml")));
    ASSERT_TRUE(saved != nullptr && saved->getChildByName("MidiCCMap") != nullptr);
    EXPECT_EQ(saved->getChildByName("MidiCCMap")->getNumChildElements(), 0) << "the alert's Yes cleared the map";

    // Without a folder: the built-in skin.
    ASSERT_EQ(runRender({ "--seconds", "0.1", "--snapshot", file("built-in.png") }).exitCode, 0);
    EXPECT_EQ(juce::ImageFileFormat::loadFrom(juce::File(file("built-in.png"))).getWidth(), 900) << "the shipped background's width";

    // A name the panel lacks, a click with no panel or a folder with no skin of
    // ours: one line, nothing written.
    juce::File(file("unknown.tsv")).replaceWithText("0\tevent\tOptions\n0.1\tclick\tClear Everything\n");
    const auto unknown = runRender({ "--script", file("unknown.tsv"), "--snapshot", file("bad.png") });
    EXPECT_TRUE(unknown.exitCode == 2 && unknown.output.contains("line 2")) << unknown.output;
    EXPECT_EQ(runRender({ "--script", file("unknown.tsv"), "-o", file("bad.wav") }).exitCode, 2);
    juce::File(file("skin.xml")).replaceWithText("<Skin/>");
    const auto bad = runRender({ "--skin", file(""), "--snapshot", file("bad.png") });
    EXPECT_TRUE(bad.exitCode == 2 && bad.output.contains("not PluginEditor")) << bad.output;
    EXPECT_FALSE(juce::File(file("bad.png")).exists() || juce::File(file("bad.wav")).exists());
}
