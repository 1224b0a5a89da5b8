// Building the panel from a skin: sizes, stacking, frames, links and actions,
// and the generic grid when there is no skin.

#include "EditorTestSupport.h"

#include "editor/GFXAnimation.h"
#include "editor/GFXButton.h"
#include "editor/GFXKnob.h"
#include "editor/GFXMultiStateButton.h"
#include "editor/GFXToggleButton.h"
#include "plugin/Resources.h"

using namespace editortest;

// (A skin of another root never reaches the plug-in: quindrel-render refuses it.)
TEST(EditorSkin, ASkinGivesItsControlsOverItsBackground)
{
    SkinnedPanel panel([](const TestSkin& skin)
                       {
        skin.writeStrip("Knob.png", 20, 20, 3);
        skin.writeSkin(300, 200, "<Knob name=\"K\"><gfx resource=\"Knob.png\" framesNum=\"3\"/></Knob>"); });
    auto& editor = panel.editor();
    EXPECT_TRUE(editor.isSkinLoaded() && editor.getNumDefaultControls() == 0 && editor.getMidiLearnButton() == nullptr) << "no grid either";
    EXPECT_TRUE(editor.getControls().size() == 1 && editor.getPanelHeight() == 200);
    EXPECT_EQ(editor.getBounds(), juce::Rectangle<int>(300, 200 + editor.getStatusBar()->getHeight()));
    EXPECT_EQ(panel.window->getBounds(), editor.getBounds()) << "the host's window follows the panel";
    EXPECT_EQ(panel.window->createComponentSnapshot({ 0, 0, 300, 200 }).getPixelAt(150, 100), backgroundColour);
}

// The grid stands in for a skin that cannot be read.
TEST(EditorSkin, WithoutSkinTheGridHoldsEveryHostParameterAndWorks)
{
    SkinnedPanel panel([](const TestSkin& skin)
                       { skin.getFolder().getChildFile("skin.xml").replaceWithText("<PluginEditor><Knob"); });
    auto& editor = panel.editor();
    ASSERT_FALSE(editor.isSkinLoaded());
    EXPECT_TRUE(editor.getNumDefaultControls() == panel.plugin->getNumHostParameters() && editor.getWidth() == BasePluginEditor::defaultWidth);
    for (int id = 0; id < panel.plugin->getNumHostParameters(); ++id)
    {
        auto* component = editor.findControl(panel.plugin->getParameterManager().getName(id));
        EXPECT_TRUE(component != nullptr && juce::Rectangle<int>(editor.getWidth(), editor.getPanelHeight()).contains(component->getBounds())) << id;
    }

    // A knob of the grid turns its parameter; a mute is a toggle.
    auto& level = panel.control<GFXKnob>("Bass Drum Level");
    const auto before = panel.parameter("Bass Drum Level").getNormalised(); // the first kit's
    drag(level, { 25, 60 }, { { 25, 35 } });
    EXPECT_NEAR(panel.parameter("Bass Drum Level").getNormalised(), before + 0.1, 1e-6);
    click(panel.control<GFXToggleButton>("Snare Drum Mute"));
    EXPECT_TRUE(panel.parameter("Snare Drum Mute").getBool());
    EXPECT_EQ(editor.getStatusBar()->getMessage(), "Snare Drum Mute: " + panel.plugin->getParameterDisplayText(60));
}

TEST(EditorSkin, FrameCountsComeFromStatesAndStyleAndEarlierControlsStackOnTop)
{
    SkinnedPanel panel([](const TestSkin& skin)
                       {
        skin.writeStrip("Two.png", 20, 10, 2);
        skin.writeStrip("Three3D.png", 20, 10, 6);
        skin.writeStrip("Digit.png", 27, 34, 12, 2); // 410 rows for 12 frames
        skin.writeSkin(400, 200, "<MultiStateButton name=\"One\" states=\"1\"><gfx resource=\"Two.png\" framesNum=\"9\"/></MultiStateButton>"
                                 "<MultiStateButton name=\"Three\" states=\"3\" style=\"3D\"><gfx resource=\"Three3D.png\" framesNum=\"2\"/>"
                                 "<pos left=\"30\"/></MultiStateButton>"
                                 "<Animation name=\"Digit\"><gfx resource=\"Digit.png\" framesNum=\"12\"/><pos left=\"60\"/></Animation>"
                                 "<Animation name=\"Under\"><gfx resource=\"Two.png\" framesNum=\"2\"/></Animation>"); });
    auto& editor = panel.editor();
    auto& one = panel.control<GFXMultiStateButton>("One");
    EXPECT_EQ(editor.getComponentAt(5, 5), &one) << "the earlier control is on top";
    EXPECT_LT(editor.getIndexOfChildComponent(editor.getStatusBar()), editor.getIndexOfChildComponent(editor.findControl("Under")));
    EXPECT_EQ(one.getStatesNum(), 2);
    EXPECT_EQ(one.getFrameHeight(), 10);

    auto& three = panel.control<GFXMultiStateButton>("Three");
    EXPECT_EQ(three.getFrameHeight(), 10) << "six frames, whatever framesNum says";
    three.setCurrentState(2);
    EXPECT_EQ(shownFrame(three), 4);

    auto& digit = panel.control<GFXAnimation>("Digit");
    EXPECT_EQ(digit.getHeight(), 34);
    digit.setFrame(11);
    EXPECT_EQ(shownFrame(digit, 3, 33), 11) << "the last frame ends before the leftover rows";
}

TEST(EditorSkin, LinksAndActionsBindByNameAndSkipWhatTheyDoNotKnow)
{
    SkinnedPanel panel([](const TestSkin& skin)
                       {
        skin.writeStrip("Knob.png", 20, 20, 11);
        skin.writeStrip("Button.png", 20, 10, 2);
        skin.writeSkin(400, 200, "<Knob name=\"Twice\"><links><link as=\"connectedTo\" param=\"Bass Drum Level\"/>"
                                 "<link as=\"connectedTo\" param=\"Snare Drum Level\"/></links><gfx resource=\"Knob.png\" framesNum=\"11\"/></Knob>"
                                 "<Knob name=\"Other\"><links><link as=\"drives\" param=\"Bass Drum Level\"/>"
                                 "<link as=\"connectedTo\" param=\"No Such Parameter\"/></links><gfx resource=\"Knob.png\" framesNum=\"11\"/>"
                                 "<pos left=\"40\"/></Knob>"
                                 "<Button name=\"Options\"><actions><action type=\"onClick\" event=\"Options\"/>"
                                 "<action type=\"onClickWithCtrl\" event=\"No Such Event\"/></actions><gfx resource=\"Button.png\" framesNum=\"2\"/>"
                                 "<pos left=\"80\"/></Button>"
                                 "<Knob name=\"Missing\"><gfx resource=\"Nothing.png\" framesNum=\"11\"/><size width=\"33\" height=\"44\"/></Knob>"); });
    auto& twice = panel.control<GFXKnob>("Twice");
    panel.parameter("Bass Drum Level").setNormalised(1.0f, true);
    panel.parameter("Snare Drum Level").setNormalised(0.3f, true);
    pump();
    EXPECT_EQ(shownFrame(twice), 3) << "it follows only the second link";

    EXPECT_EQ(panel.control<GFXKnob>("Other").getParameter(), nullptr) << "a link of another kind, or to no parameter, binds nothing";

    auto& options = panel.control<GFXButton>("Options");
    EXPECT_EQ(options.getTooltip(), "Options");
    click(options, withCtrl);
    EXPECT_FALSE(panel.editor().getOptionsWindow()->isShown()) << "a Ctrl click never falls back to the plain event";
    click(options);
    EXPECT_TRUE(panel.editor().getOptionsWindow()->isShown());

    EXPECT_EQ(panel.control<GFXKnob>("Missing").getBounds(), juce::Rectangle<int>(0, 0, 33, 44)) << "no image: size from the skin, position (0, 0)";
}

// The shipped skin on the built editor: every control is there, and every
// link is bound to its parameter.
TEST(EditorSkin, TheBuiltInSkinBuildsEveryControlAndBindsEveryLink)
{
    const auto xml = juce::parseXML(Resources::loadResourceText("skin.xml"));
    ASSERT_NE(xml, nullptr);
    OpenPanel panel;
    EXPECT_EQ(panel.editor().getControls().size(), xml->getNumChildElements());
    for (const auto* element : xml->getChildIterator())
    {
        const auto name = element->getStringAttribute("name");
        auto* controller = dynamic_cast<GUIController*>(panel.editor().findControl(name));
        EXPECT_TRUE(controller != nullptr && (controller->getParameter() != nullptr) == (element->getChildByName("links") != nullptr)) << name;
    }
}
