// The preset browser as a user works the bank with it: buttons, clicks on
// rows, renaming in place and dragging rows, on the factory bank.

#include "EditorTestSupport.h"

#include "editor/DrumMachineEditor.h"
#include "editor/browser/OldStylePresetBrowserWindow.h"

using namespace editortest;

namespace
{
struct BrowserPanel : OpenPanel
{
    BrowserPanel()
    {
        editor().performEvent(BasePluginEditor::browsePresetsEvent);
        pump();
    }

    OldStylePresetBrowserWindow& window() { return *dynamic_cast<BasePluginEditorOldStyle&>(editor()).getPresetBrowser(); }
    OldStylePresetsBrowser& browser() { return window().getBrowser(); }

    void press(const char* text)
    {
        click(control<GFXButton>(text, &browser()));
        pump();
    }

    // The drag of a column's selection, dropped on another list at a row's
    // middle or at the boundary above it.
    void drop(ColumnBrowser::ListColumn& from, ColumnBrowser::ListColumn& onto, int row, bool onBoundary)
    {
        const juce::Point<int> at(10, row * ColumnBrowser::ListColumn::rowHeight + (onBoundary ? 0 : 10));
        auto& target = onto.getList();
        const juce::DragAndDropTarget::SourceDetails details(from.getDragDescription(), from.getList().getItem(0), at);
        ASSERT_TRUE(target.isInterestedInDragSource(details));
        target.itemDragEnter(details);
        target.itemDropped(details);
    }

    juce::StringArray presetNames(int group)
    {
        juce::StringArray names;
        for (int i = 0; i < plugin->getGroupCount(group); ++i)
            names.add(plugin->getPresetName(plugin->getPresetNumber(group, i)));
        return names;
    }
};
} // namespace

TEST(EditorBrowser, TheButtonsWorkTheBankAndTheColumnsShowIt)
{
    BrowserPanel b;
    auto& plugin = *b.plugin;
    auto& groups = b.browser().getGroupColumn();
    auto& presets = b.browser().getPresetColumn();
    ASSERT_TRUE(b.window().isShown());
    EXPECT_TRUE(groups.getNumItems() == 2 && groups.getItemText(0) == "All presets  (16)");
    EXPECT_TRUE(presets.getList().getNumItemComponents() == 16 && presets.isSelected(0));

    // The browser follows the current preset, and Up steps from it.
    plugin.selectAndApplyPreset(127);
    pump();
    EXPECT_TRUE(b.browser().getShownGroup() == 1 && presets.isSelected(111));
    b.press("Up");
    EXPECT_TRUE(plugin.getCurrentPreset() == 126 && presets.isSelected(110));

    // Copy one preset and paste it over another: the copy's name says so.
    plugin.selectAndApplyPreset(2);
    pump();
    b.press("Copy");
    b.press("Down");
    b.press("Paste");
    EXPECT_EQ(presets.getItemName(3), plugin.getPresetName(2) + "_copy");

    // A group goes in behind the one selected, empty, and is shown; an empty group can go.
    b.press("Add Group");
    EXPECT_TRUE(plugin.getGroupName(1) == "New Group" && plugin.getGroupCount(1) == 0);
    EXPECT_TRUE(b.browser().getShownGroup() == 1 && presets.getNumItems() == 0);
    b.press("Rem Group");
    EXPECT_TRUE(plugin.getNumGroups() == 2 && groups.getNumItems() == 2);
}

TEST(EditorBrowser, RowsAreClickedRenamedAndDraggedKeepingTheSoundSelected)
{
    BrowserPanel b;
    auto& plugin = *b.plugin;
    auto& groups = b.browser().getGroupColumn();
    auto& presets = b.browser().getPresetColumn();

    // A click applies a preset; a click on the current one changes nothing.
    click(*presets.getList().getItem(5));
    EXPECT_EQ(plugin.getCurrentPreset(), 5);
    auto& tone = b.parameter("Bass Drum Tone");
    EXPECT_FLOAT_EQ(tone.getNormalised(), plugin.getPresetValue(5, tone.getId()));
    tone.setNormalised(0.123f, true);
    click(*presets.getList().getItem(5));
    EXPECT_FLOAT_EQ(tone.getNormalised(), 0.123f) << "the current preset is not applied again";

    // A double click renames in place.
    auto& item = *presets.getList().getItem(5);
    item.mouseDoubleClick(mouseAt(item, { 20, 10 }, { 20, 10 }, juce::ModifierKeys(), 2));
    ASSERT_TRUE(item.isRenaming());
    item.getEditor()->setText("Kick Room");
    item.getEditor()->keyPressed(juce::KeyPress(juce::KeyPress::returnKey));
    pump();
    EXPECT_TRUE(!item.isRenaming() && plugin.getPresetName(5) == "Kick Room");
    EXPECT_EQ(b.parameter("Current Preset Name").getText(), "Kick Room");

    // Three rows, the current among them, dragged onto the other group go to
    // its end; the sound stays selected and is not applied again.
    const auto movedNames = juce::StringArray{ plugin.getPresetName(4), "Kick Room", plugin.getPresetName(6) };
    click(*presets.getList().getItem(4), withCtrl);
    click(*presets.getList().getItem(6), juce::ModifierKeys(juce::ModifierKeys::leftButtonModifier | juce::ModifierKeys::shiftModifier));
    ASSERT_EQ(presets.getSelection().size(), 3);
    EXPECT_EQ(plugin.getCurrentPreset(), 5) << "extending the selection applies nothing";
    tone.setNormalised(0.321f, true);
    b.drop(presets, groups, 1, false);
    EXPECT_TRUE(plugin.getGroupCount(0) == 13 && plugin.getGroupCount(1) == 115 && presets.getNumItems() == 13);
    EXPECT_EQ(b.presetNames(1).joinIntoString("|").fromLastOccurrenceOf("Preset 127|", false, false), movedNames.joinIntoString("|"));
    EXPECT_EQ(plugin.getPresetName(plugin.getCurrentPreset()), "Kick Room");
    EXPECT_FLOAT_EQ(tone.getNormalised(), 0.321f);

    // Within a group rows reorder, and groups reorder the bank.
    b.browser().showGroup(0);
    presets.selectOnly(0);
    const auto first = b.presetNames(0)[0];
    b.drop(presets, presets, 3, true);
    EXPECT_TRUE(b.presetNames(0)[2] == first && presets.isSelected(2));
    groups.selectOnly(1);
    b.drop(groups, groups, 0, true);
    EXPECT_EQ(plugin.getGroupName(0), "Not used");
    EXPECT_TRUE(plugin.getPresetName(plugin.getCurrentPreset()) == "Kick Room" && plugin.getGroupOfPreset(plugin.getCurrentPreset()) == 0);
    EXPECT_EQ(b.parameter("Current Preset Number").getInt(), plugin.getCurrentPreset());
}
