#include "editor/options/DrumMachineSettingsPages.h"

#include "editor/DefaultLookAndFeel.h"
#include "plugin/DrumMachine.h"

using namespace SettingsLayout;

namespace
{
constexpr int currentWidth = 420;
constexpr int tableRowHeight = 20;
constexpr int instrumentColumnWidth = 130;
constexpr int nameRowHeight = 24;
constexpr int fileButtonWidth = 80;
} // namespace

DrumMachineEditor::DrumMapSettingsComponent::DrumMapSettingsComponent(BasePluginEditor& editorToTell, DrumMachine& pluginToUse)
    : editor(editorToTell)
    , plugin(pluginToUse)
    , defaultMap("Default drum map", { "Factory map", "User defined" }, pluginToUse.getDrumMapWildcard(), "Default Drum Map")
{
    addAndMakeVisible(currentMap);

    table.setModel(this);
    table.setRowHeight(tableRowHeight);
    table.setColour(juce::ListBox::backgroundColourId, juce::Colour(DefaultLookAndFeel::grey6).brighter(0.5f));
    table.setColour(juce::ListBox::outlineColourId, juce::Colour(DefaultLookAndFeel::grey4));
    table.setOutlineThickness(1);
    addAndMakeVisible(table);

    loadButton.setName("Load drum map");
    saveButton.setName("Save drum map");
    loadButton.onClick = [this]
    { openChooser(false); };
    saveButton.onClick = [this]
    { openChooser(true); };
    addAndMakeVisible(loadButton);
    addAndMakeVisible(saveButton);

    defaultMap.addResourceListener(this);
    addAndMakeVisible(defaultMap);
    refresh();
}

DrumMachineEditor::DrumMapSettingsComponent::~DrumMapSettingsComponent()
{
    defaultMap.removeResourceListener(this);
    table.setModel(nullptr);
}

juce::String DrumMachineEditor::DrumMapSettingsComponent::getKeysText(int instrument) const
{
    juce::StringArray keys;
    for (int key = 0; key < 128; ++key)
        if (plugin.getKeyInstrument(key) == instrument)
            keys.add(juce::String(key) + " (" + juce::MidiMessage::getMidiNoteName(key, true, true, 3) + ")");
    return keys.isEmpty() ? juce::String("---") : keys.joinIntoString(", ");
}

void DrumMachineEditor::DrumMapSettingsComponent::paintListBoxItem(int row, juce::Graphics& g, int width, int height, bool)
{
    if (row % 2 == 1)
        g.fillAll(juce::Colour(DefaultLookAndFeel::grey6).withAlpha(0.5f));
    g.setColour(juce::Colours::black);
    g.setFont(DefaultLookAndFeel::getPanelFont(14.0f, true));
    g.drawText(instrumentNames[row], 8, 0, instrumentColumnWidth - 12, height, juce::Justification::centredLeft, true);
    g.setFont(DefaultLookAndFeel::getPanelFont(14.0f));
    g.drawText(getKeysText(row), instrumentColumnWidth, 0, width - instrumentColumnWidth - 6, height, juce::Justification::centredLeft, true);
}

void DrumMachineEditor::DrumMapSettingsComponent::refresh()
{
    table.updateContent();
    table.repaint();
    defaultMap.setResource(plugin.getDrumMapSource(), plugin.getDrumMapFile());
    repaint();
}

void DrumMachineEditor::DrumMapSettingsComponent::defaultResourcesChanged(DefaultResourcesRadioButtons& buttons)
{
    plugin.setDrumMapSource(buttons.getSelectedIndex(), buttons.getPath());
    editor.showDefaultResourceHint(buttons.getHintName());
}

bool DrumMachineEditor::DrumMapSettingsComponent::loadMap(const juce::File& file)
{
    if (file == juce::File())
        return false;
    plugin.setLastDirectory(file.getParentDirectory());
    const bool loaded = plugin.loadDrumMapFile(file);
    refresh();
    return loaded;
}

bool DrumMachineEditor::DrumMapSettingsComponent::saveMap(const juce::File& file)
{
    if (file == juce::File())
        return false;
    const auto target = withDefaultExtension(file, plugin.getDrumMapExtension());
    plugin.setLastDirectory(target.getParentDirectory());
    return plugin.saveDrumMap(target);
}

void DrumMachineEditor::DrumMapSettingsComponent::openChooser(bool save)
{
    const auto start = plugin.getLastDirectory();
    if (save)
        FileChoosers::launch(chooser, *this, FileChoosers::Mode::save, "Save drum map", start, "*" + plugin.getDrumMapExtension(),
                             [this](const juce::File& file)
                             { saveMap(file); });
    else
        FileChoosers::launch(chooser, *this, FileChoosers::Mode::load, "Load drum map", start, plugin.getDrumMapWildcard(),
                             [this](const juce::File& file)
                             { loadMap(file); });
}

void DrumMachineEditor::DrumMapSettingsComponent::paint(juce::Graphics& g)
{
    const auto name = plugin.getDrumMapName();
    const auto area = (currentMap.getContentArea() + currentMap.getPosition()).removeFromTop(nameRowHeight);
    g.setColour(juce::Colour(DefaultLookAndFeel::grey1));
    g.setFont(DefaultLookAndFeel::getPanelFont(14.0f, true));
    g.drawText("Name:", area.withWidth(60), juce::Justification::centredLeft, false);
    g.setColour(juce::Colours::black);
    g.setFont(DefaultLookAndFeel::getPanelFont(14.0f));
    g.drawText(name.isNotEmpty() ? name : juce::String("(no name)"), area.withTrimmedLeft(60), juce::Justification::centredLeft, true);
}

void DrumMachineEditor::DrumMapSettingsComponent::resized()
{
    auto area = getLocalBounds().reduced(2 * margin);
    const int tableHeight = instrumentCount * tableRowHeight + 2;
    currentMap.setBounds(area.removeFromLeft(currentWidth).removeFromTop(PanelComponent::heightFor(nameRowHeight + tableHeight + 2 * gap + buttonHeight)));

    auto inside = currentMap.getContentArea() + currentMap.getPosition();
    inside.removeFromTop(nameRowHeight);
    table.setBounds(inside.removeFromTop(tableHeight));
    inside.removeFromTop(2 * gap);
    auto buttons = inside.removeFromTop(buttonHeight);
    loadButton.setBounds(buttons.removeFromLeft(fileButtonWidth));
    buttons.removeFromLeft(gap);
    saveButton.setBounds(buttons.removeFromLeft(fileButtonWidth));

    area.removeFromLeft(2 * margin);
    defaultMap.setBounds(area.removeFromTop(defaultMap.getPreferredHeight()));
}
