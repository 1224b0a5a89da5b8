#include "editor/options/DrumMachineSettingsPages.h"

#include "plugin/DrumMachine.h"

using namespace SettingsLayout;

namespace
{
const juce::StringArray patternChoices{ "Factory patterns", "Clear patterns", "User defined" };

juce::String bankWildcard(DrumMachine& plugin, int type)
{
    auto* sequencer = plugin.getSequencer();
    return sequencer != nullptr ? sequencer->getBankFileWildcards(type) : juce::String("*");
}
} // namespace

DrumMachineEditor::PatternsSettingsComponent::PatternsSettingsComponent(BasePluginEditor& editorToTell, DrumMachine& pluginToUse)
    : editor(editorToTell)
    , plugin(pluginToUse)
    , hostPatterns("Default host patterns", patternChoices, bankWildcard(pluginToUse, DrumMachineSeq::hostType), "Default Host Patterns")
    , nativePatterns("Default native patterns", patternChoices, bankWildcard(pluginToUse, DrumMachineSeq::nativeType), "Default Native Patterns")
{
    addAndMakeVisible(frame);
    for (auto* buttons : { &hostPatterns, &nativePatterns })
    {
        buttons->addResourceListener(this);
        addAndMakeVisible(buttons);
    }
    refresh();
}

DrumMachineEditor::PatternsSettingsComponent::~PatternsSettingsComponent()
{
    hostPatterns.removeResourceListener(this);
    nativePatterns.removeResourceListener(this);
}

void DrumMachineEditor::PatternsSettingsComponent::refresh()
{
    if (auto* sequencer = plugin.getSequencer())
    {
        hostPatterns.setResource(sequencer->hostResourceKind, sequencer->hostResourceFile);
        nativePatterns.setResource(sequencer->nativeResourceKind, sequencer->nativeResourceFile);
    }
}

void DrumMachineEditor::PatternsSettingsComponent::defaultResourcesChanged(DefaultResourcesRadioButtons& buttons)
{
    auto* sequencer = plugin.getSequencer();
    if (sequencer == nullptr)
        return;

    if (&buttons == &hostPatterns)
    {
        sequencer->hostResourceKind = buttons.getSelectedIndex();
        sequencer->hostResourceFile = buttons.getPath();
    }
    else
    {
        sequencer->nativeResourceKind = buttons.getSelectedIndex();
        sequencer->nativeResourceFile = buttons.getPath();
    }
    editor.showDefaultResourceHint(buttons.getHintName());
}

void DrumMachineEditor::PatternsSettingsComponent::resized()
{
    auto area = getLocalBounds().reduced(2 * margin);
    const int inner = hostPatterns.getPreferredHeight();
    frame.setBounds(area.removeFromTop(PanelComponent::heightFor(inner + margin)));

    auto inside = (frame.getContentArea() + frame.getPosition()).withTrimmedTop(margin / 2);
    const int width = (inside.getWidth() - 2 * margin) / 2;
    hostPatterns.setBounds(inside.removeFromLeft(width).withHeight(inner));
    inside.removeFromLeft(2 * margin);
    nativePatterns.setBounds(inside.withHeight(inner));
}
