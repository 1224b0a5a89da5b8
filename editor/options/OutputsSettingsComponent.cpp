#include "editor/options/DrumMachineSettingsPages.h"

#include "plugin/DrumMachine.h"

using namespace SettingsLayout;

namespace
{
constexpr int assignsWidth = 400;
constexpr int sourceWidth = 180, outputCaptionWidth = 62, outputBoxWidth = 64;
constexpr int rowPitch = rowHeight + 1;
} // namespace

DrumMachineEditor::OutputsSettingsComponent::OutputsSettingsComponent(BasePluginEditor&, DrumMachine& pluginToUse)
    : plugin(pluginToUse)
{
    addAndMakeVisible(assigns);
    for (int i = 0; i < instrumentCount; ++i)
    {
        auto* source = sourceLabels.add(new SettingsLabel("Source: " + juce::String(instrumentNames[i])));
        auto* caption = outputLabels.add(new SettingsLabel("Output: "));
        auto* box = outputBoxes.add(new ComboBoxEx(juce::String(instrumentNames[i]) + " Output"));
        for (int output = 1; output <= plugin.getOutputCount(); ++output)
            box->addItem(juce::String(output), output);
        box->addListener(this);
        addAndMakeVisible(source);
        addAndMakeVisible(caption);
        addAndMakeVisible(box);
    }
    setFromCurrent.onClick = [this]
    {
        plugin.storeCurrentOutputs();
        refresh();
    };
    addAndMakeVisible(setFromCurrent);

    outputType.addListener(this);
    addAndMakeVisible(outputType);
    addAndMakeVisible(typeNote);

    addAndMakeVisible(trigger);
    triggerBox.addItem(" - None - ", noTriggerOutput);
    for (int output = 1; output <= plugin.getOutputCount(); ++output)
        triggerBox.addItem(juce::String(output), output);
    triggerBox.addListener(this);
    for (int i = 0; i < instrumentCount; ++i)
        triggerSourceBox.addItem(instrumentNames[i], i + 1);
    triggerSourceBox.addListener(this);
    for (juce::Component* child : { (juce::Component*) &triggerOutputLabel, (juce::Component*) &triggerSourceLabel,
                                    (juce::Component*) &triggerBox, (juce::Component*) &triggerSourceBox, (juce::Component*) &triggerNote })
        addAndMakeVisible(child);

    refresh();
}

DrumMachineEditor::OutputsSettingsComponent::~OutputsSettingsComponent()
{
    for (auto* box : outputBoxes)
        box->removeListener(this);
    triggerBox.removeListener(this);
    triggerSourceBox.removeListener(this);
    outputType.removeListener(this);
}

void DrumMachineEditor::OutputsSettingsComponent::refresh()
{
    for (int i = 0; i < instrumentCount; ++i)
        outputBoxes[i]->setSelectedId(plugin.getStoredInstrumentOutput(i), false);
    outputType.setSelectedIndex(plugin.getStoredOutputType() == DrumMachine::monoOutputs ? 1 : 0, false);

    const auto* core = plugin.getCore();
    const bool enabled = core != nullptr && core->isTriggerOutEnabled();
    triggerBox.setSelectedId(enabled ? plugin.getTriggerOutput() : noTriggerOutput, false);
    triggerSourceBox.setSelectedId(core != nullptr ? core->triggerOutSource + 1 : 0, false);
    triggerSourceBox.setEnabled(enabled);
}

void DrumMachineEditor::OutputsSettingsComponent::comboBoxExChanged(ComboBoxEx& box)
{
    const int index = outputBoxes.indexOf(&box);
    if (index >= 0)
    {
        plugin.setStoredInstrumentOutput(index, box.getSelectedId());
        return;
    }

    auto* core = plugin.getCore();
    if (core == nullptr)
        return;
    const int source = triggerSourceBox.getSelectedId() > 0 ? triggerSourceBox.getSelectedId() - 1 : core->triggerOutSource;
    if (&box == &triggerBox)
    {
        const int output = triggerBox.getSelectedId();
        if (output != noTriggerOutput && output > 0)
            plugin.setTriggerOutput(output);
        plugin.setTriggerOut(output != noTriggerOutput && output > 0, source);
    }
    else if (&box == &triggerSourceBox)
    {
        plugin.setTriggerOut(core->isTriggerOutEnabled(), source);
    }
    refresh();
}

void DrumMachineEditor::OutputsSettingsComponent::radioButtonsChanged(RadioButtons& buttons, int index)
{
    if (&buttons == &outputType)
        plugin.setStoredOutputType(index == 1 ? DrumMachine::monoOutputs : DrumMachine::stereoOutputs);
}

void DrumMachineEditor::OutputsSettingsComponent::resized()
{
    auto area = getLocalBounds().reduced(2 * margin);

    const int rowsHeight = instrumentCount * rowPitch + 2 * gap + buttonHeight;
    assigns.setBounds(area.removeFromLeft(assignsWidth).removeFromTop(PanelComponent::heightFor(rowsHeight)));
    auto rows = assigns.getContentArea() + assigns.getPosition();
    for (int i = 0; i < instrumentCount; ++i)
    {
        auto row = rows.removeFromTop(rowPitch).withHeight(rowHeight);
        sourceLabels[i]->setBounds(row.removeFromLeft(sourceWidth));
        outputLabels[i]->setBounds(row.removeFromLeft(outputCaptionWidth));
        outputBoxes[i]->setBounds(row.removeFromLeft(outputBoxWidth));
    }
    rows.removeFromTop(2 * gap);
    setFromCurrent.setBounds(rows.removeFromTop(buttonHeight).withWidth(240));

    area.removeFromLeft(2 * margin);
    outputType.setBounds(area.removeFromTop(outputType.getPreferredHeight()));
    area.removeFromTop(gap);
    typeNote.setBounds(area.removeFromTop(40).withTrimmedLeft(margin));
    area.removeFromTop(2 * margin);

    trigger.setBounds(area.removeFromTop(PanelComponent::heightFor(2 * rowHeight + 2 * gap + 40)));
    auto inside = trigger.getContentArea() + trigger.getPosition();
    auto row = inside.removeFromTop(rowHeight);
    triggerOutputLabel.setBounds(row.removeFromLeft(outputCaptionWidth));
    triggerBox.setBounds(row.removeFromLeft(110));
    inside.removeFromTop(gap);
    row = inside.removeFromTop(rowHeight);
    triggerSourceLabel.setBounds(row.removeFromLeft(outputCaptionWidth));
    triggerSourceBox.setBounds(row.removeFromLeft(160));
    inside.removeFromTop(gap);
    triggerNote.setBounds(inside);
}
