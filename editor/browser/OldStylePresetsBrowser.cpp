#include "editor/browser/OldStylePresetsBrowser.h"

#include "editor/options/SettingsWidgets.h"
#include "plugin/BasePluginOldStyle.h"

namespace
{
constexpr int buttonRowHeight = SettingsLayout::buttonHeight + 2 * SettingsLayout::gap;

const juce::Identifier kindKey("kind"), groupKey("group"), indicesKey("indices"), browserKey("browser");
const juce::String presetsKind("presets"), groupKind("group");

juce::var describeDrag(const void* browser, const juce::String& kind, int group, const juce::SparseSet<int>* indices)
{
    auto* object = new juce::DynamicObject();
    object->setProperty(browserKey, (juce::int64)(juce::pointer_sized_int) browser);
    object->setProperty(kindKey, kind);
    object->setProperty(groupKey, group);
    if (indices != nullptr)
    {
        juce::Array<juce::var> rows;
        for (int i = 0; i < indices->size(); ++i)
            rows.add((*indices)[i]);
        object->setProperty(indicesKey, rows);
    }
    return juce::var(object);
}

juce::SparseSet<int> indicesOf(const juce::DynamicObject& drag)
{
    juce::SparseSet<int> indices;
    if (const auto* rows = drag.getProperty(indicesKey).getArray())
        for (const auto& row : *rows)
            indices.addRange({ (int) row, (int) row + 1 });
    return indices;
}
} // namespace

//==============================================================================
OldStylePresetsBrowser::CommonColumn::CommonColumn(OldStylePresetsBrowser& browserToUse, const juce::String& title)
    : ListColumn(title)
    , browser(browserToUse)
    , plugin(browserToUse.getPlugin())
{
    setFooterHeight(buttonRowHeight);
}

TextButtonEx& OldStylePresetsBrowser::CommonColumn::addButton(const juce::String& text, const juce::String& tooltip, std::function<void()> action)
{
    auto* button = buttons.add(new TextButtonEx(text, tooltip));
    button->onClick = std::move(action);
    addAndMakeVisible(button);
    resized();
    return *button;
}

TextButtonEx* OldStylePresetsBrowser::CommonColumn::getButton(const juce::String& text) const
{
    for (auto* button : buttons)
        if (button->getButtonText() == text)
            return button;
    return nullptr;
}

const juce::DynamicObject* OldStylePresetsBrowser::CommonColumn::ownDrag(const juce::var& description) const
{
    const auto* object = description.getDynamicObject();
    if (object == nullptr || (juce::pointer_sized_int)(juce::int64) object->getProperty(browserKey) != (juce::pointer_sized_int) &browser)
        return nullptr;
    return object;
}

void OldStylePresetsBrowser::CommonColumn::resized()
{
    ListColumn::resized();
    auto row = getFooterArea().reduced(SettingsLayout::gap);
    const int count = buttons.size();
    if (count == 0)
        return;
    const int width = (row.getWidth() - SettingsLayout::gap * (count - 1)) / count;
    for (auto* button : buttons)
    {
        button->setBounds(row.removeFromLeft(width));
        row.removeFromLeft(SettingsLayout::gap);
    }
}

//==============================================================================
OldStylePresetsBrowser::GroupListColumn::GroupListColumn(OldStylePresetsBrowser& browserToUse)
    : CommonColumn(browserToUse, "Groups")
{
    addButton("Add Group", "Add group", [this]
              { browser.addGroup(); });
    addButton("Rem Group", "Remove empty group", [this]
              { browser.removeGroup(); });
}

int OldStylePresetsBrowser::GroupListColumn::getNumItems() const
{
    return plugin.getNumGroups();
}

juce::String OldStylePresetsBrowser::GroupListColumn::getItemText(int index) const
{
    return plugin.getGroupName(index) + "  (" + juce::String(plugin.getGroupCount(index)) + ")";
}

juce::String OldStylePresetsBrowser::GroupListColumn::getItemName(int index) const
{
    return plugin.getGroupName(index);
}

bool OldStylePresetsBrowser::GroupListColumn::isItemCurrent(int index) const
{
    return plugin.getGroupOfPreset(plugin.getCurrentPreset()) == index;
}

void OldStylePresetsBrowser::GroupListColumn::itemClicked(int index)
{
    browser.showGroup(index);
}

void OldStylePresetsBrowser::GroupListColumn::itemRenamed(int index, const juce::String& newName)
{
    plugin.renameGroup(index, newName);
    browser.refresh();
}

juce::var OldStylePresetsBrowser::GroupListColumn::getDragDescription() const
{
    if (getSelection().size() != 1)
        return {};
    return describeDrag(&browser, groupKind, getSelection()[0], nullptr);
}

ColumnBrowser::ListColumn::DropMode OldStylePresetsBrowser::GroupListColumn::getDropMode(const juce::var& description) const
{
    const auto* drag = ownDrag(description);
    if (drag == nullptr)
        return DropMode::none;
    if (drag->getProperty(kindKey).toString() == groupKind)
        return DropMode::between;
    if (drag->getProperty(kindKey).toString() == presetsKind)
        return DropMode::onto;
    return DropMode::none;
}

void OldStylePresetsBrowser::GroupListColumn::itemsDropped(const juce::var& description, int index)
{
    const auto* drag = ownDrag(description);
    if (drag == nullptr)
        return;
    const int group = drag->getProperty(groupKey);
    if (drag->getProperty(kindKey).toString() == groupKind)
        browser.moveGroupTo(group, index);
    else
        browser.movePresetsToGroup(group, indicesOf(*drag), index);
}

//==============================================================================
OldStylePresetsBrowser::PresetListColumn::PresetListColumn(OldStylePresetsBrowser& browserToUse)
    : CommonColumn(browserToUse, "Presets")
{
    addButton("Copy", "Copy current preset", [this]
              { browser.runEvent(copyEvent); });
    addButton("Paste", "Paste copied preset", [this]
              { browser.runEvent(pasteEvent); });
    addButton("Up", "Select previous preset", [this]
              { browser.runEvent(selectPreviousEvent); });
    addButton("Down", "Select next preset", [this]
              { browser.runEvent(selectNextEvent); });
}

int OldStylePresetsBrowser::PresetListColumn::getPresetNumber(int index) const
{
    return plugin.getPresetNumber(browser.getShownGroup(), index);
}

int OldStylePresetsBrowser::PresetListColumn::getNumItems() const
{
    return plugin.getGroupCount(browser.getShownGroup());
}

juce::String OldStylePresetsBrowser::PresetListColumn::getItemText(int index) const
{
    const int number = getPresetNumber(index);
    return juce::String(number).paddedLeft('0', 3) + "   " + plugin.getPresetName(number);
}

juce::String OldStylePresetsBrowser::PresetListColumn::getItemName(int index) const
{
    return plugin.getPresetName(getPresetNumber(index));
}

bool OldStylePresetsBrowser::PresetListColumn::isItemCurrent(int index) const
{
    return getPresetNumber(index) == plugin.getCurrentPreset();
}

void OldStylePresetsBrowser::PresetListColumn::itemClicked(int index)
{
    browser.clickPreset(getPresetNumber(index));
}

void OldStylePresetsBrowser::PresetListColumn::itemRenamed(int index, const juce::String& newName)
{
    plugin.renamePreset(getPresetNumber(index), newName);
    browser.refresh();
}

juce::var OldStylePresetsBrowser::PresetListColumn::getDragDescription() const
{
    if (getSelection().isEmpty())
        return {};
    const auto selection = getSelection();
    return describeDrag(&browser, presetsKind, browser.getShownGroup(), &selection);
}

ColumnBrowser::ListColumn::DropMode OldStylePresetsBrowser::PresetListColumn::getDropMode(const juce::var& description) const
{
    const auto* drag = ownDrag(description);
    if (drag != nullptr && drag->getProperty(kindKey).toString() == presetsKind && (int) drag->getProperty(groupKey) == browser.getShownGroup())
        return DropMode::between;
    return DropMode::none;
}

void OldStylePresetsBrowser::PresetListColumn::itemsDropped(const juce::var& description, int index)
{
    if (const auto* drag = ownDrag(description))
        browser.reorderPresets(drag->getProperty(groupKey), indicesOf(*drag), index);
}

//==============================================================================
OldStylePresetsBrowser::OldStylePresetsBrowser(BasePluginOldStyle& pluginToUse)
    : plugin(pluginToUse)
{
    groupColumn = new GroupListColumn(*this);
    presetColumn = new PresetListColumn(*this);
    addColumn(groupColumn);
    addColumn(presetColumn);
    followCurrentPreset();
}

void OldStylePresetsBrowser::refresh()
{
    shownGroup = juce::jlimit(0, juce::jmax(0, plugin.getNumGroups() - 1), shownGroup);
    groupColumn->refresh();
    if (groupColumn->getSelection().isEmpty() || groupColumn->getSelection()[0] != shownGroup)
        groupColumn->selectOnly(shownGroup);
    presetColumn->setTitle("Presets of " + plugin.getGroupName(shownGroup));
    presetColumn->refresh();
    updateButtons();
}

void OldStylePresetsBrowser::updateButtons()
{
    const int groups = plugin.getNumGroups();
    // A new group goes behind the one selected, and never behind the last.
    groupColumn->getButton("Add Group")->setEnabled(shownGroup < groups - 1);
    groupColumn->getButton("Rem Group")->setEnabled(groups > 1 && plugin.getGroupCount(shownGroup) == 0);
    presetColumn->getButton("Paste")->setEnabled(plugin.isClipboardFull());
    presetColumn->getButton("Up")->setEnabled(plugin.getCurrentPreset() > 0);
    presetColumn->getButton("Down")->setEnabled(plugin.getCurrentPreset() < BasePluginOldStyle::numPresets - 1);
}

void OldStylePresetsBrowser::followCurrentPreset()
{
    const int current = plugin.getCurrentPreset();
    const int group = plugin.getGroupOfPreset(current);
    if (group >= 0)
        shownGroup = group;
    refresh();
    const int row = current - plugin.getGroupStart(shownGroup);
    presetColumn->selectOnly(row);
    presetColumn->scrollToShow(row);
    groupColumn->scrollToShow(shownGroup);
}

void OldStylePresetsBrowser::showGroup(int group)
{
    if (group == shownGroup)
        return;
    shownGroup = group;
    presetColumn->setSelection({});
    presetColumn->getViewport().setViewPosition(0, 0);
    refresh();
    // The group holding the current preset shows it selected.
    const int row = plugin.getCurrentPreset() - plugin.getGroupStart(shownGroup);
    if (plugin.getGroupOfPreset(plugin.getCurrentPreset()) == shownGroup)
    {
        presetColumn->selectOnly(row);
        presetColumn->scrollToShow(row);
    }
}

void OldStylePresetsBrowser::clickPreset(int number)
{
    if (number < 0 || number == plugin.getCurrentPreset())
        return;
    plugin.selectAndApplyPreset(number);
    refresh();
}

void OldStylePresetsBrowser::addGroup()
{
    const int before = plugin.getNumGroups();
    plugin.addGroup(shownGroup + 1);
    if (plugin.getNumGroups() > before)
        showGroup(shownGroup + 1);
    refresh();
}

void OldStylePresetsBrowser::removeGroup()
{
    const int before = plugin.getNumGroups();
    plugin.removeGroup(shownGroup);
    if (plugin.getNumGroups() < before)
        shownGroup = juce::jmax(0, shownGroup - 1);
    refresh();
}

void OldStylePresetsBrowser::runEvent(int uid)
{
    plugin.handleEvent(uid);
    if (uid == selectNextEvent || uid == selectPreviousEvent)
        followCurrentPreset();
    else
        refresh();
}

bool OldStylePresetsBrowser::movePresetsToGroup(int fromGroup, const juce::SparseSet<int>& indices, int toGroup)
{
    if (fromGroup == toGroup || indices.isEmpty())
        return false;

    const int before = plugin.getGroupCount(toGroup);
    plugin.movePresets(toGroup, fromGroup, indices);
    const bool moved = plugin.getGroupCount(toGroup) != before;
    if (moved && fromGroup == shownGroup)
        presetColumn->setSelection({});
    refresh();
    return moved;
}

bool OldStylePresetsBrowser::reorderPresets(int group, const juce::SparseSet<int>& indices, int boundary)
{
    const int count = plugin.getGroupCount(group);
    const int start = plugin.getGroupStart(group);
    if (start < 0 || indices.isEmpty() || boundary < 0 || boundary > count)
        return false;

    // The order wanted: the other rows before the boundary, the block, the
    // rest. Then each place is filled by one move from further down, which
    // keeps the order of everything not yet placed.
    juce::Array<int> wanted;
    for (int i = 0; i < boundary; ++i)
        if (!indices.contains(i))
            wanted.add(i);
    const int blockStart = wanted.size();
    for (int i = 0; i < count; ++i)
        if (indices.contains(i))
            wanted.add(i);
    const int blockEnd = wanted.size();
    for (int i = boundary; i < count; ++i)
        if (!indices.contains(i))
            wanted.add(i);

    juce::Array<int> order; // the original row now at each place
    for (int i = 0; i < count; ++i)
        order.add(i);

    bool moved = false;
    for (int place = 0; place < count; ++place)
    {
        const int from = order.indexOf(wanted[place]);
        if (from == place)
            continue;
        plugin.movePreset(group, group, start + from, start + place);
        order.move(from, place);
        moved = true;
    }

    if (group == shownGroup)
    {
        juce::SparseSet<int> block;
        block.addRange({ blockStart, blockEnd });
        presetColumn->setSelection(block);
    }
    refresh();
    return moved;
}

bool OldStylePresetsBrowser::moveGroupTo(int group, int boundary)
{
    const int to = boundary > group ? boundary - 1 : boundary;
    if (to == group || !juce::isPositiveAndBelow(to, plugin.getNumGroups()))
        return false;

    const bool wasShown = group == shownGroup;
    plugin.moveGroup(group, to);
    if (wasShown)
        shownGroup = to;
    else if (group < shownGroup && to >= shownGroup)
        --shownGroup;
    else if (group > shownGroup && to <= shownGroup)
        ++shownGroup;
    refresh();
    return true;
}
