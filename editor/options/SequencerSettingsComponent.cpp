#include "editor/options/DrumMachineSettingsPages.h"

#include "parameters/ParameterIds.h"
#include "plugin/DrumMachine.h"

using namespace SettingsLayout;

namespace
{
constexpr int columnWidth = 340;
const char* const modeTexts[] = { "Use internal sequencer", "Use internal clock", "Host Mode", "Note Off Mode" };
// The panel's switch of each mode, and the parameter that mirrors it.
constexpr int toggleEvents[] = { 3000, 3001, 3002, 3003 };
constexpr int stateParameters[] = { ParameterIds::internalSequencerState, ParameterIds::internalSyncState,
                                    ParameterIds::hostModeState, ParameterIds::noteOffState };
} // namespace

DrumMachineEditor::SequencerSettingsComponent::SequencerSettingsComponent(DrumMachine& pluginToUse)
    : plugin(pluginToUse)
{
    addAndMakeVisible(current);
    addAndMakeVisible(defaults);
    for (int mode = 0; mode < modeCount; ++mode)
    {
        for (auto* boxes : { &currentBoxes, &defaultBoxes })
        {
            auto* box = boxes->add(new CheckBox(modeTexts[mode]));
            box->addListener(this);
            addAndMakeVisible(box);
        }
        plugin.getParameterManager().addAsyncListener(stateParameters[mode], this);
    }
    addAndMakeVisible(defaultsNote);

    detection.addListener(this);
    addAndMakeVisible(detection);
    addAndMakeVisible(detectionNote);

    refresh();
}

DrumMachineEditor::SequencerSettingsComponent::~SequencerSettingsComponent()
{
    for (int mode = 0; mode < modeCount; ++mode)
        plugin.getParameterManager().removeAsyncListener(stateParameters[mode], this);
}

bool DrumMachineEditor::SequencerSettingsComponent::getMode(int mode) const
{
    switch (mode)
    {
        case 0:
            return plugin.internalSequencer;
        case 1:
            return plugin.internalSync;
        case 2:
            return plugin.hostMode;
        default:
            return plugin.noteOffMode;
    }
}

bool& DrumMachineEditor::SequencerSettingsComponent::getDefaultMode(int mode)
{
    switch (mode)
    {
        case 0:
            return plugin.defaultInternalSequencer;
        case 1:
            return plugin.defaultInternalSync;
        case 2:
            return plugin.defaultHostMode;
        default:
            return plugin.defaultNoteOffMode;
    }
}

void DrumMachineEditor::SequencerSettingsComponent::refresh()
{
    for (int mode = 0; mode < modeCount; ++mode)
    {
        currentBoxes[mode]->setChecked(getMode(mode), false);
        defaultBoxes[mode]->setChecked(getDefaultMode(mode), false);
    }
    // As on the panel, the other modes switch only with the internal sequencer on.
    for (int mode = 1; mode < modeCount; ++mode)
        currentBoxes[mode]->setEnabled(plugin.internalSequencer);
    detection.setSelectedIndex(plugin.hostPlayDetection == DrumMachine::byLowestCNoteOn ? 1 : 0, false);
}

void DrumMachineEditor::SequencerSettingsComponent::checkBoxChanged(CheckBox& box)
{
    if (const int mode = currentBoxes.indexOf(&box); mode >= 0)
    {
        // The panel's own switch, so that every side effect is the same;
        // a switch the plug-in refuses leaves the box as the mode stands.
        if (box.isChecked() != getMode(mode))
            plugin.handleEvent(toggleEvents[mode]);
        refresh();
    }
    else if (const int defaultMode = defaultBoxes.indexOf(&box); defaultMode >= 0)
    {
        getDefaultMode(defaultMode) = box.isChecked();
    }
}

void DrumMachineEditor::SequencerSettingsComponent::radioButtonsChanged(RadioButtons& buttons, int index)
{
    if (&buttons == &detection)
        plugin.hostPlayDetection = index == 1 ? DrumMachine::byLowestCNoteOn : DrumMachine::byTransportChange;
}

void DrumMachineEditor::SequencerSettingsComponent::parameterChanged(Parameter&)
{
    refresh();
}

void DrumMachineEditor::SequencerSettingsComponent::resized()
{
    auto area = getLocalBounds().reduced(2 * margin);
    auto left = area.removeFromLeft(columnWidth);
    area.removeFromLeft(2 * margin);

    const int boxesHeight = modeCount * (rowHeight + 2);
    current.setBounds(left.removeFromTop(PanelComponent::heightFor(boxesHeight)));
    left.removeFromTop(2 * margin);
    defaults.setBounds(left.removeFromTop(PanelComponent::heightFor(boxesHeight)));
    left.removeFromTop(gap);
    defaultsNote.setBounds(left.removeFromTop(40).withTrimmedLeft(margin));

    auto currentArea = current.getContentArea() + current.getPosition();
    auto defaultArea = defaults.getContentArea() + defaults.getPosition();
    for (int mode = 0; mode < modeCount; ++mode)
    {
        currentBoxes[mode]->setBounds(currentArea.removeFromTop(rowHeight + 2).withHeight(rowHeight));
        defaultBoxes[mode]->setBounds(defaultArea.removeFromTop(rowHeight + 2).withHeight(rowHeight));
    }

    detection.setBounds(area.removeFromTop(detection.getPreferredHeight()));
    area.removeFromTop(gap);
    detectionNote.setBounds(area.removeFromTop(56).withTrimmedLeft(margin));
}
