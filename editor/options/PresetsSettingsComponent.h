#pragma once

#include "editor/BasePluginEditorOldStyle.h"
#include "editor/options/SettingsWidgets.h"

// The "Presets" page: how the current preset keeps changes, how presets
// change (disabled where the plug-in has no such option), and the bank a new
// instance starts with. A change is written to the plug-in at once.
// Message thread.
class BasePluginEditorOldStyle::PresetsSettingsComponent : public juce::Component,
                                                           public RadioButtons::Listener,
                                                           public DefaultResourcesRadioButtons::Listener,
                                                           public OptionsPage
{
public:
    PresetsSettingsComponent(BasePluginEditor& editor, BasePluginOldStyle& plugin);
    ~PresetsSettingsComponent() override;

    RadioButtons& getStoring() { return storing; }
    RadioButtons& getChanging() { return changing; }
    DefaultResourcesRadioButtons& getDefaultPresets() { return defaultPresets; }

    void refresh() override;
    void radioButtonsChanged(RadioButtons& buttons, int index) override;
    void defaultResourcesChanged(DefaultResourcesRadioButtons& buttons) override;
    void resized() override;

private:
    BasePluginEditor& editor;
    BasePluginOldStyle& plugin;
    RadioButtons storing;
    SettingsLabel storingNote;
    RadioButtons changing;
    DefaultResourcesRadioButtons defaultPresets;
    SettingsLabel defaultNote;
};
