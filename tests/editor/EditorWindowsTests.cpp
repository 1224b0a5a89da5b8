// Windows and menus inside the panel, and the look that every machine draws
// the same.

#include "EditorTestSupport.h"

#include "editor/AlertWindow.h"
#include "editor/GFXKnob.h"
#include "editor/PopupMenuEx.h"

using namespace editortest;

namespace
{
struct WindowsPanel : SkinnedPanel
{
    WindowsPanel()
        : SkinnedPanel([](const TestSkin& skin)
                       {
            skin.writeStrip("Knob.png", 40, 40, 11);
            skin.writeSkin(900, 600, R"(<Knob name="Centre"><links><link as="connectedTo" param="Main Volume"/></links>
  <gfx resource="Knob.png" framesNum="11"/><pos left="430" top="280"/></Knob>)"); })
    {
    }
};
} // namespace

TEST(EditorWindows, AWindowCoversThePanelWhichGoesOnMovingBehindIt)
{
    WindowsPanel p;
    auto& editor = p.editor();
    auto& knob = p.control<GFXKnob>("Centre");
    auto& options = *editor.getOptionsWindow();
    const auto before = editor.createComponentSnapshot({ 5, 5, 1, 1 }).getPixelAt(0, 0);

    editor.getStatusBar()->setMessage("a hint", 4);
    editor.performEvent(BasePluginEditor::optionsEvent);
    ASSERT_TRUE(options.isShown() && editor.getStatusBar()->getMessage().isEmpty()) << "opening clears the status bar";
    EXPECT_EQ(options.getBounds().getCentre(), juce::Point<int>(450, (600 + editor.getStatusBar()->getHeight()) / 2));

    // The cover takes the clicks, dims the panel, and the panel still moves.
    EXPECT_TRUE(editor.getComponentAt(5, 5) == &options.getCoveringWindow() && editor.getComponentAt(450, 300) != &knob);
    EXPECT_LT(editor.createComponentSnapshot({ 5, 5, 1, 1 }).getPixelAt(0, 0).getBrightness(), before.getBrightness());
    p.parameter("Main Volume").setNormalised(1.0f, true);
    pump();
    EXPECT_EQ(shownFrame(knob), 10);

    // Shown again it stays where it was moved; closed and shown, centred again.
    options.setTopLeftPosition(5, 5);
    editor.performEvent(BasePluginEditor::optionsEvent);
    EXPECT_EQ(options.getPosition(), juce::Point<int>(5, 5));
    click(p.control<GFXButton>("CloseButton", &options));
    EXPECT_TRUE(!options.isShown() && editor.getComponentAt(450, 300) == &knob);
    editor.performEvent(BasePluginEditor::optionsEvent);
    EXPECT_NE(options.getPosition(), juce::Point<int>(5, 5));

    // A tab change clears a hint left by the page before.
    editor.showDefaultResourceHint("Default Presets");
    ASSERT_FALSE(editor.getStatusBar()->getMessage().isEmpty());
    options.getTabs().setCurrentTabIndex(1);
    EXPECT_TRUE(editor.getStatusBar()->getMessage().isEmpty());

    // The about box credits what the program is built with, licences included.
    editor.performEvent(BasePluginEditor::aboutEvent);
    auto& about = *editor.getAboutWindow();
    EXPECT_TRUE(about.isShown() && about.getFacts()["Version"].isNotEmpty());
    EXPECT_TRUE(about.getCredits().contains("JUCE 7") && about.getCredits().contains("GNU General Public License, version 3"));
    EXPECT_TRUE(about.getCredits().contains("Permission is hereby granted")) << "the fonts' licence in full";

    // On a panel lower than the window, the window fits in it, title bar and all.
    options.close();
    editor.setEditorSize(900, 500);
    editor.performEvent(BasePluginEditor::optionsEvent);
    EXPECT_TRUE(editor.getLocalBounds().contains(options.getBounds()));
}

TEST(EditorWindows, AMenuOpensBesideItsControlAndStaysInThePanel)
{
    WindowsPanel p;
    struct Picker : PopupMenuEx::Listener
    {
        void menuItemSelected(PopupMenuEx&, int id) override { picked.add(id); }
        juce::Array<int> picked;
    } picker;
    auto& knob = p.control<GFXKnob>("Centre");
    PopupMenuEx menu;
    menu.addItem("Load pattern", 0);
    menu.addItem("Load pattern bank", 1);
    menu.addListener(&picker);
    menu.show(&knob, { -30, 0 });
    ASSERT_TRUE(menu.isShown());
    EXPECT_TRUE(menu.getComponent().getPosition() == juce::Point<int>(400, 280) && !menu.getComponent().dimsBackground());

    auto& rows = menu.getComponent().getWindow();
    rows.mouseUp(mouseAt(rows, { 20, 2 + 1.5f * PopupMenuEx::Window::rowHeight }, {}, {}));
    EXPECT_TRUE(picker.picked == juce::Array<int>({ 1 }) && !menu.isShown());

    menu.show(&knob, { 10000, 10000 });
    EXPECT_TRUE(p.editor().getLocalBounds().contains(menu.getComponent().getBounds())) << "kept inside the panel";
    auto& cover = menu.getComponent().getCoveringWindow();
    down(cover, { 3, 3 });
    EXPECT_FALSE(menu.isShown()) << "a click beside a menu closes it";
    EXPECT_EQ(picker.picked.size(), 1);
}

TEST(EditorWindows, ThePanelDrawsWithItsOwnFont)
{
    const auto font = DefaultLookAndFeel::getPanelFont(13.0f);
    EXPECT_EQ(font.getTypefaceName(), "DejaVu Sans") << "the embedded face, not whatever the machine has";
    EXPECT_TRUE(font.getTypefaceStyle() == "Condensed" && DefaultLookAndFeel::getPanelFont(13.0f, true).getTypefaceStyle() == "Condensed Bold");
}
