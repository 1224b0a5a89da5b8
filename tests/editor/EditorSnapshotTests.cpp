// quindrel-render --snapshot and --skin, as a skin's maker runs them.

#include "EditorTestSupport.h"

#include "plugin/Resources.h"
#include "support/RenderProcess.h"

using namespace editortest;

TEST(EditorSnapshot, PaintsTheSkinFromAFolderWithTheValuesAtTheEnd)
{
    TestSkin skin;
    setSkinDirectory({}); // the renderer is told the folder itself
    skin.writeStrip("Knob.png", 40, 40, 11);
    skin.writeSkin(900, 700, R"(<Knob name="Volume"><links><link as="connectedTo" param="Main Volume"/></links>
  <gfx resource="Knob.png" framesNum="11"/><pos left="100" top="50"/></Knob>)");
    const auto picture = skin.getFolder().getChildFile("panel.png");

    const auto run = runRender({ "--seconds", "0.5", "--skin", skin.getFolder().getFullPathName(), "--snapshot", picture.getFullPathName() });
    ASSERT_EQ(run.exitCode, 0) << run.output;
    const auto image = juce::ImageFileFormat::loadFrom(picture);
    ASSERT_TRUE(image.isValid());
    EXPECT_EQ(image.getWidth(), 900);
    EXPECT_GT(image.getHeight(), 700) << "the status bar under the panel";
    EXPECT_EQ(image.getPixelAt(10, 10), backgroundColour);
    EXPECT_EQ(frameOf(image.getPixelAt(120, 70)), 5) << "Main Volume starts at 0.5";

    // A script's event goes through the panel: "Options" opens its window.
    const auto script = skin.getFolder().getChildFile("options.txt");
    script.replaceWithText("0.1\tevent\tOptions\n");
    ASSERT_EQ(runRender({ "--seconds", "0.5", "--script", script.getFullPathName(), "--skin", skin.getFolder().getFullPathName(),
                       "--snapshot", picture.getFullPathName() })
                  .exitCode,
              0);
    EXPECT_LT(juce::ImageFileFormat::loadFrom(picture).getPixelAt(10, 10).getBrightness(), backgroundColour.getBrightness())
        << "the panel dimmed behind the window";

    // Without a folder: the built-in skin. A bad folder: one line, nothing written.
    const auto builtIn = skin.getFolder().getChildFile("built-in.png");
    ASSERT_EQ(runRender({ "--seconds", "0.1", "--snapshot", builtIn.getFullPathName() }).exitCode, 0);
    juce::Image background;
    if (Resources::loadResourceImage("Background.png", background))
    {
        EXPECT_EQ(juce::ImageFileFormat::loadFrom(builtIn).getWidth(), background.getWidth());
    }

    skin.getFolder().getChildFile("skin.xml").replaceWithText("<Skin/>");
    const auto bad = runRender({ "--skin", skin.getFolder().getFullPathName(), "--snapshot", skin.getFolder().getChildFile("bad.png").getFullPathName() });
    EXPECT_EQ(bad.exitCode, 2);
    EXPECT_TRUE(bad.output.contains("not PluginEditor")) << bad.output;
    EXPECT_FALSE(skin.getFolder().getChildFile("bad.png").exists());
}

TEST(EditorSnapshot, AScriptsClicksWorkTheWindowsByTheirNames)
{
    const auto folder = juce::File::createTempFile("render-clicks");
    folder.createDirectory();
    const auto map = folder.getChildFile("map.qdccmap");
    map.replaceWithText(R"(<MidiControlMap name="Quindrel"><assign CC="7" param="Main Volume"/></MidiControlMap>)");
    const auto script = folder.getChildFile("clear.tsv");
    script.replaceWithText("0\tevent\tOptions\n0.1\tclick\tClear All\n0.2\tclick\tYes\n");
    const auto state = folder.getChildFile("state.xml");
    const auto picture = folder.getChildFile("panel.png");

    const auto run = runRender({ "--seconds", "0.5", "--ccmap", map.getFullPathName(), "--script", script.getFullPathName(),
                              "--snapshot", picture.getFullPathName(), "--save-state", state.getFullPathName() });
    ASSERT_EQ(run.exitCode, 0) << run.output;
    const auto saved = juce::parseXML(state);
    ASSERT_NE(saved, nullptr);
    ASSERT_NE(saved->getChildByName("MidiCCMap"), nullptr);
    EXPECT_EQ(saved->getChildByName("MidiCCMap")->getNumChildElements(), 0) << "the alert's Yes cleared the map";

    // A name the panel lacks, or a click with no panel: one line, nothing written.
    script.replaceWithText("0\tevent\tOptions\n0.1\tclick\tClear Everything\n");
    const auto unknown = runRender({ "--script", script.getFullPathName(), "--snapshot", folder.getChildFile("bad.png").getFullPathName() });
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_TRUE(unknown.output.contains("line 2")) << unknown.output;
    EXPECT_EQ(runRender({ "--script", script.getFullPathName(), "-o", folder.getChildFile("bad.wav").getFullPathName() }).exitCode, 2);
    EXPECT_FALSE(folder.getChildFile("bad.png").exists() || folder.getChildFile("bad.wav").exists());
    folder.deleteRecursively();
}
