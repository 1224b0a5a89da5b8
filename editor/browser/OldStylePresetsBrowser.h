#pragma once

#include "editor/GFXButton.h"
#include "editor/browser/ColumnBrowser.h"

class BasePluginOldStyle;

// The preset bank as two columns: its groups, and the presets of the group
// shown. It works on the plug-in's bank directly and refreshes both columns
// after each action of its own.
//
// A click on a preset selects and applies it (the current one is left
// alone), a click on a group shows its presets, a double click renames in
// place. Presets dragged onto another group move to its end, presets dragged
// within their group reorder it, and groups dragged reorder the bank; every
// move keeps the current sound selected. Message thread.
class OldStylePresetsBrowser : public ColumnBrowser
{
public:
    // A column over the bank, with its buttons at its foot.
    class CommonColumn : public ColumnBrowser::ListColumn
    {
    public:
        CommonColumn(OldStylePresetsBrowser& browser, const juce::String& title);

        TextButtonEx* getButton(const juce::String& text) const;
        void resized() override;

    protected:
        TextButtonEx& addButton(const juce::String& text, const juce::String& tooltip, std::function<void()> action);
        // A drag description of this browser, or null.
        const juce::DynamicObject* ownDrag(const juce::var& description) const;

        OldStylePresetsBrowser& browser;
        BasePluginOldStyle& plugin;

    private:
        juce::OwnedArray<TextButtonEx> buttons;
    };

    class GroupListColumn : public CommonColumn
    {
    public:
        explicit GroupListColumn(OldStylePresetsBrowser& browser);

        int getPreferredWidth() const override { return 220; }
        int getNumItems() const override;
        juce::String getItemText(int index) const override;
        juce::String getItemName(int index) const override;
        bool isItemCurrent(int index) const override;
        void itemClicked(int index) override;
        void itemRenamed(int index, const juce::String& newName) override;
        juce::var getDragDescription() const override;
        DropMode getDropMode(const juce::var& description) const override;
        void itemsDropped(const juce::var& description, int index) override;
    };

    class PresetListColumn : public CommonColumn
    {
    public:
        explicit PresetListColumn(OldStylePresetsBrowser& browser);

        int getNumItems() const override;
        juce::String getItemText(int index) const override;
        juce::String getItemName(int index) const override;
        bool isItemCurrent(int index) const override;
        bool allowsMultipleSelection() const override { return true; }
        void itemClicked(int index) override;
        void itemRenamed(int index, const juce::String& newName) override;
        juce::var getDragDescription() const override;
        DropMode getDropMode(const juce::var& description) const override;
        void itemsDropped(const juce::var& description, int index) override;

        // The preset's number in the bank for a row of the group shown, or -1.
        int getPresetNumber(int index) const;
    };

    // Event uids of the buttons that act as the panel's events do.
    static constexpr int selectNextEvent = 1002, selectPreviousEvent = 1003, copyEvent = 1007, pasteEvent = 1008;

    explicit OldStylePresetsBrowser(BasePluginOldStyle& plugin);

    BasePluginOldStyle& getPlugin() const { return plugin; }
    GroupListColumn& getGroupColumn() const { return *groupColumn; }
    PresetListColumn& getPresetColumn() const { return *presetColumn; }

    // Both columns read the bank again.
    void refresh();
    // Shows the current preset's group with the current preset selected.
    void followCurrentPreset();
    void showGroup(int group);
    int getShownGroup() const { return shownGroup; }

    // The actions of the rows and buttons, each followed by a refresh.
    void clickPreset(int number);
    void addGroup();
    void removeGroup();
    void runEvent(int uid);
    // indices are rows of fromGroup. Moved to the end of toGroup.
    bool movePresetsToGroup(int fromGroup, const juce::SparseSet<int>& indices, int toGroup);
    // The rows of group as one block, in their order, placed at the boundary
    // before row `boundary` of the rows as they stand.
    bool reorderPresets(int group, const juce::SparseSet<int>& indices, int boundary);
    // The group placed at the boundary before group `boundary`.
    bool moveGroupTo(int group, int boundary);

private:
    void updateButtons();

    BasePluginOldStyle& plugin;
    GroupListColumn* groupColumn;
    PresetListColumn* presetColumn;
    int shownGroup = 0;
};
