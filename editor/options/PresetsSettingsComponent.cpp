#include "editor/options/PresetsSettingsComponent.h"

#include "plugin/BasePluginOldStyle.h"

using namespace SettingsLayout;

namespace
{
constexpr int columnWidth = 360;
} // namespace

BasePluginEditorOldStyle::PresetsSettingsComponent::PresetsSettingsComponent(BasePluginEditor& editorToTell, BasePluginOldStyle& pluginToUse)
    : editor(editorToTell)
    , plugin(pluginToUse)
    , storing("Preset storing", { "Automatic", "On demand" })
    , storingNote("Automatic: every change of a sound goes into the current preset at once. "
                  "On demand: the preset keeps its sound until it is stored (Ctrl + click on the browse button).",
                  true)
    , changing("Changing type", { "Normal", "Silent" })
    , defaultPresets("Default presets", { "Factory presets", "Clear presets", "User defined" }, pluginToUse.getBankLoadWildcard(), "Default Presets")
    , defaultNote("The bank that a new instance of the plug-in starts with.", true)
{
    storing.addListener(this);
    changing.addListener(this);
    defaultPresets.addResourceListener(this);
    changing.setEnabled(plugin.hasPresetChangingOption());

    for (juce::Component* child : { (juce::Component*) &storing, (juce::Component*) &storingNote, (juce::Component*) &changing,
                                    (juce::Component*) &defaultPresets, (juce::Component*) &defaultNote })
        addAndMakeVisible(child);

    refresh();
}

BasePluginEditorOldStyle::PresetsSettingsComponent::~PresetsSettingsComponent()
{
    storing.removeListener(this);
    changing.removeListener(this);
    defaultPresets.removeResourceListener(this);
}

void BasePluginEditorOldStyle::PresetsSettingsComponent::refresh()
{
    storing.setSelectedIndex(plugin.getPresetStoring() == BasePluginOldStyle::automatic ? 0 : 1, false);
    changing.setSelectedIndex(plugin.getPresetChanging() == BasePluginOldStyle::silent ? 1 : 0, false);
    defaultPresets.setResource(plugin.getPresetsResourceKind(), plugin.getPresetsResourceFile());
}

void BasePluginEditorOldStyle::PresetsSettingsComponent::radioButtonsChanged(RadioButtons& buttons, int index)
{
    if (&buttons == &storing)
        plugin.setPresetStoring(index == 0 ? BasePluginOldStyle::automatic : BasePluginOldStyle::onDemand);
    else if (&buttons == &changing && plugin.hasPresetChangingOption())
        plugin.setPresetChanging(index == 1 ? BasePluginOldStyle::silent : BasePluginOldStyle::normal);
}

void BasePluginEditorOldStyle::PresetsSettingsComponent::defaultResourcesChanged(DefaultResourcesRadioButtons& buttons)
{
    plugin.setPresetsResource(buttons.getSelectedIndex(), buttons.getPath());
    editor.showDefaultResourceHint(buttons.getHintName());
}

void BasePluginEditorOldStyle::PresetsSettingsComponent::resized()
{
    auto area = getLocalBounds().reduced(2 * margin);
    auto left = area.removeFromLeft(columnWidth);
    area.removeFromLeft(2 * margin);
    auto right = area;

    storing.setBounds(left.removeFromTop(storing.getPreferredHeight()));
    left.removeFromTop(gap);
    storingNote.setBounds(left.removeFromTop(56).withTrimmedLeft(margin));
    left.removeFromTop(2 * margin);
    changing.setBounds(left.removeFromTop(changing.getPreferredHeight()));

    defaultPresets.setBounds(right.removeFromTop(defaultPresets.getPreferredHeight()));
    right.removeFromTop(gap);
    defaultNote.setBounds(right.removeFromTop(40).withTrimmedLeft(margin));
}
