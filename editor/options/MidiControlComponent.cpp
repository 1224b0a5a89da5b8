#include "editor/options/MidiControlComponent.h"

#include "editor/DefaultLookAndFeel.h"
#include "plugin/BasePluginOldStyle.h"

using namespace SettingsLayout;

namespace
{
constexpr int headerHeight = 24;
constexpr int listRowHeight = 20;
constexpr int sideWidth = 290;

// The header of the assignment table.
class ListHeader : public juce::Component
{
public:
    void paint(juce::Graphics& g) override
    {
        g.fillAll(juce::Colour(DefaultLookAndFeel::grey4));
        g.setColour(juce::Colour(DefaultLookAndFeel::grey3));
        g.fillRect(0, getHeight() - 1, getWidth(), 1);
        g.fillRect(MidiControlComponent::ListComponent::controllerColumnWidth, 0, 1, getHeight());

        g.setColour(juce::Colours::black);
        g.setFont(DefaultLookAndFeel::getPanelFont(14.0f, true));
        const auto width = MidiControlComponent::ListComponent::controllerColumnWidth;
        g.drawText("CC", 8, 0, width - 12, getHeight(), juce::Justification::centredLeft, true);
        g.drawText("Parameter", width + 8, 0, getWidth() - width - 12, getHeight(), juce::Justification::centredLeft, true);
    }
};

juce::String loadWildcardOf(BasePlugin& plugin)
{
    if (auto* oldStyle = dynamic_cast<BasePluginOldStyle*>(&plugin))
        return oldStyle->getMidiControlLoadWildcard();
    return MidiControl::getLoadWildcard(plugin.getPluginShortName(), {});
}
} // namespace

//==============================================================================
MidiControlComponent::ListComponent::ListComponent(MidiControl& midiControlToShow)
    : juce::ListBox("Assignments", nullptr)
    , midiControl(midiControlToShow)
{
    setModel(this);
    setRowHeight(listRowHeight);
    setHeaderComponent(std::make_unique<ListHeader>());
    setColour(juce::ListBox::backgroundColourId, juce::Colour(DefaultLookAndFeel::grey6).brighter(0.5f));
    setColour(juce::ListBox::outlineColourId, juce::Colour(DefaultLookAndFeel::grey4));
    setOutlineThickness(1);
    getHeaderComponent()->setSize(10, headerHeight);
}

void MidiControlComponent::ListComponent::refreshRows()
{
    const int selected = getSelectedController();

    rows.clearQuick();
    {
        const juce::ScopedLock sl(midiControl.getLock());
        for (const int controller : midiControl.getAssignedControllers())
            if (auto* parameter = midiControl.getAssignment(controller))
                rows.add({ controller, parameter->getName() });
    }

    // Putting the selection back is no choice of the user's.
    const juce::ScopedValueSetter<bool> quiet(refreshing, true);
    updateContent();
    deselectAllRows();
    selectController(selected);
    repaint();
}

int MidiControlComponent::ListComponent::getSelectedController() const
{
    return getController(getSelectedRow());
}

void MidiControlComponent::ListComponent::selectController(int controller)
{
    for (int row = 0; row < rows.size(); ++row)
        if (rows.getReference(row).controller == controller)
            selectRow(row);
}

void MidiControlComponent::ListComponent::paintListBoxItem(int row, juce::Graphics& g, int width, int height, bool selected)
{
    if (!juce::isPositiveAndBelow(row, rows.size()))
        return;

    if (selected)
        g.fillAll(juce::Colour(DefaultLookAndFeel::grey3));
    else if (row % 2 == 1)
        g.fillAll(juce::Colour(DefaultLookAndFeel::grey6).withAlpha(0.5f));

    g.setColour(selected ? juce::Colours::white : juce::Colours::black);
    g.setFont(DefaultLookAndFeel::getPanelFont(14.0f));
    g.drawText(juce::String(rows.getReference(row).controller), 8, 0, controllerColumnWidth - 12, height, juce::Justification::centredLeft, true);
    g.drawText(rows.getReference(row).name, controllerColumnWidth + 8, 0, width - controllerColumnWidth - 12, height, juce::Justification::centredLeft, true);
}

void MidiControlComponent::ListComponent::selectedRowsChanged(int)
{
    if (!refreshing && onSelectionChanged != nullptr)
        onSelectionChanged();
}

//==============================================================================
MidiControlComponent::MidiControlComponent(BasePlugin& pluginToUse)
    : plugin(pluginToUse)
    , midiControl(pluginToUse.getMidiControl())
    , loadWildcard(loadWildcardOf(pluginToUse))
    , extension(MidiControl::getMapExtension(pluginToUse.getPluginShortName()))
    , list(midiControl)
    , learnNote("With learn on, move a control of the panel and a controller, in either order.", true)
    , defaultMapBox("Default map", loadWildcard, "Default Map")
    , defaultMapNote("The map that a new instance of the plug-in starts with.", true)
    , clearAlert("Clear All", "Do you really want to clear all assignations?", this)
{
    clearAlert.addButton("Yes", clearAnswerYes);
    clearAlert.addButton("No", clearAnswerNo);
    // Hidden here until its first showing takes it to the panel's cover; its
    // name is not the button's.
    clearAlert.setName("Clear All question");
    addChildComponent(clearAlert);

    list.onSelectionChanged = [this]
    {
        updateButtons();
        // In learn mode a row picks its assignment, as touching its control would.
        const int controller = list.getSelectedController();
        const juce::ScopedLock sl(midiControl.getLock());
        if (controller >= 0 && midiControl.isLearnMode() && midiControl.getLearnController() != controller)
            midiControl.selectAssignment(controller);
    };
    addAndMakeVisible(list);

    for (auto* button : { &deleteButton, &clearButton, &loadButton, &saveButton })
    {
        button->onClick = [this, button]
        { buttonClicked(button); };
        addAndMakeVisible(*button);
    }

    learnBox.addListener(this);
    addAndMakeVisible(learnBox);
    addAndMakeVisible(learnNote);
    defaultMapBox.addListener(this);
    addAndMakeVisible(defaultMapBox);
    addAndMakeVisible(defaultMapNote);

    midiControl.addListener(this);
    refresh();
}

MidiControlComponent::~MidiControlComponent()
{
    midiControl.removeListener(this);
}

juce::String MidiControlComponent::getFileWildcard() const
{
    return loadWildcard;
}

juce::String MidiControlComponent::getFileExtension() const
{
    return extension;
}

void MidiControlComponent::refresh()
{
    list.refreshRows();
    bool learning = false, loadAtStart = false;
    juce::String mapFile;
    {
        const juce::ScopedLock sl(midiControl.getLock());
        learning = midiControl.isLearnMode();
        loadAtStart = midiControl.getLoadDefaultMap();
        mapFile = midiControl.getDefaultMapFile();
    }
    learnBox.setChecked(learning, false);
    defaultMapBox.setResource(loadAtStart, mapFile);
    updateButtons();
}

void MidiControlComponent::updateButtons()
{
    deleteButton.setEnabled(list.getSelectedController() >= 0);
    clearButton.setEnabled(list.getNumAssignments() > 0);
}

//==============================================================================
void MidiControlComponent::buttonClicked(juce::Button* button)
{
    if (button == &deleteButton)
    {
        const int controller = list.getSelectedController();
        if (controller >= 0)
            midiControl.removeAssignment(controller);
    }
    else if (button == &clearButton)
    {
        clearAlert.show(this, PseudoModalComponent::centred, {});
    }
    else if (button == &loadButton)
    {
        openChooser(false);
    }
    else if (button == &saveButton)
    {
        openChooser(true);
    }
}

void MidiControlComponent::alertWindowClosed(K44::AlertWindow&, int result)
{
    if (result == clearAnswerYes)
        midiControl.clear(true);
}

void MidiControlComponent::checkBoxChanged(CheckBox& box)
{
    if (&box != &learnBox)
        return;
    const juce::ScopedLock sl(midiControl.getLock());
    midiControl.setLearnMode(learnBox.isChecked());
}

void MidiControlComponent::defaultResourceChanged(DefaultResourceCheckBox& box)
{
    if (&box != &defaultMapBox)
        return;
    const juce::ScopedLock sl(midiControl.getLock());
    midiControl.setDefaultMapFile(box.getPath());
    midiControl.setLoadDefaultMap(box.isChecked());
}

void MidiControlComponent::midiMapChanged(MidiControl&)
{
    list.refreshRows();
    updateButtons();
}

void MidiControlComponent::midiLearnChanged(MidiControl&)
{
    // A song restored on a host's thread may end learn there.
    if (!juce::MessageManager::existsAndIsCurrentThread())
    {
        juce::MessageManager::callAsync([safe = juce::Component::SafePointer<MidiControlComponent>(this)]
                                        {
                                            if (safe != nullptr)
                                                safe->midiLearnChanged(safe->midiControl); });
        return;
    }

    bool learning = false;
    {
        const juce::ScopedLock sl(midiControl.getLock());
        learning = midiControl.isLearnMode();
    }
    learnBox.setChecked(learning, false);
}

//==============================================================================
juce::File MidiControlComponent::getStartFolder() const
{
    if (auto* oldStyle = dynamic_cast<BasePluginOldStyle*>(&plugin))
        return oldStyle->getLastDirectory();
    return lastFolder.isDirectory() ? lastFolder : juce::File::getSpecialLocation(juce::File::userHomeDirectory);
}

void MidiControlComponent::rememberFolder(const juce::File& file)
{
    if (auto* oldStyle = dynamic_cast<BasePluginOldStyle*>(&plugin))
        oldStyle->setLastDirectory(file.getParentDirectory());
    lastFolder = file.getParentDirectory();
}

bool MidiControlComponent::loadMap(const juce::File& file)
{
    if (file == juce::File())
        return false;
    rememberFolder(file);
    return midiControl.loadFromFile(file);
}

bool MidiControlComponent::saveMap(const juce::File& file)
{
    if (file == juce::File())
        return false;
    const auto target = withDefaultExtension(file, extension);
    rememberFolder(target);
    return midiControl.saveToFile(target);
}

void MidiControlComponent::openChooser(bool save)
{
    if (save)
        FileChoosers::launch(chooser, *this, FileChoosers::Mode::save, "Save Midi Control file as", getStartFolder(), "*" + extension,
                             [this](const juce::File& file)
                             { saveMap(file); });
    else
        FileChoosers::launch(chooser, *this, FileChoosers::Mode::load, "Open Midi Control file", getStartFolder(), loadWildcard,
                             [this](const juce::File& file)
                             { loadMap(file); });
}

//==============================================================================
void MidiControlComponent::paint(juce::Graphics&)
{
}

void MidiControlComponent::resized()
{
    auto area = getLocalBounds().reduced(margin);
    auto side = area.removeFromRight(sideWidth);
    area.removeFromRight(margin * 2);
    list.setBounds(area);

    const auto buttonRow = [&side]
    {
        auto row = side.removeFromTop(buttonHeight);
        side.removeFromTop(gap);
        return row;
    };
    auto row = buttonRow();
    deleteButton.setBounds(row.removeFromLeft((row.getWidth() - gap) / 2));
    clearButton.setBounds(row.withTrimmedLeft(gap));
    row = buttonRow();
    loadButton.setBounds(row.removeFromLeft((row.getWidth() - gap) / 2));
    saveButton.setBounds(row.withTrimmedLeft(gap));

    side.removeFromTop(margin * 2);
    learnBox.setBounds(side.removeFromTop(rowHeight));
    learnNote.setBounds(side.removeFromTop(40).withTrimmedLeft(22));

    side.removeFromTop(margin * 2);
    defaultMapBox.setBounds(side.removeFromTop(DefaultResourceCheckBox::getPreferredHeight()));
    defaultMapNote.setBounds(side.removeFromTop(40).withTrimmedLeft(22));
}
