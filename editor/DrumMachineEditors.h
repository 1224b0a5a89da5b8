#pragma once

#include "editor/BasePluginEditor.h"
#include "editor/GFXDisplay.h"

class BasePluginOldStyle;
class DrumMachine;
class OldStylePresetBrowserWindow;
class Quindrel;

// The editor of the family's plug-ins with presets: it adds the preset
// name display's listener, the preset browser with its event, and the
// options page of the presets. Message thread.
class BasePluginEditorOldStyle : public BasePluginEditor, public GFXDisplayListener
{
public:
    class PresetsSettingsComponent;

    explicit BasePluginEditorOldStyle(BasePluginOldStyle* plugin);
    ~BasePluginEditorOldStyle() override;

    void displayTextChanged(GFXDisplay&) override {}

    OldStylePresetBrowserWindow* getPresetBrowser() const { return presetBrowser.get(); }

protected:
    bool handleEditorEvent(GUIController* controller, int eventUid) override;

private:
    std::unique_ptr<OldStylePresetBrowserWindow> presetBrowser;
};

// The editor of the drum machines: it knows the panel's named controls, the
// instruments' lights and the pattern menus, and adds the options pages of
// the outputs, the sequencer, the patterns and the drum map. Message thread.
class DrumMachineEditor : public BasePluginEditorOldStyle
{
public:
    class OutputsSettingsComponent;
    class SequencerSettingsComponent;
    class PatternsSettingsComponent;
    class DrumMapSettingsComponent;

    explicit DrumMachineEditor(DrumMachine* plugin);

    DrumMachine* getDrumMachine() const { return drumMachine; }

protected:
    DrumMachine* const drumMachine;
};

// Quindrel's own panel. Message thread.
class QuindrelEditor : public DrumMachineEditor
{
public:
    explicit QuindrelEditor(Quindrel* plugin);
};
