#pragma once

#include "editor/BasePluginEditor.h"
#include "editor/GFXDisplay.h"

class DrumMachine;
class Quindrel;

// The editor of the family's plug-ins with presets: it adds the preset
// name display's listener and the preset browser's event. Message thread.
class BasePluginEditorOldStyle : public BasePluginEditor, public GFXDisplayListener
{
public:
    explicit BasePluginEditorOldStyle(BasePlugin* plugin);

    void displayTextChanged(GFXDisplay&) override {}
};

// The editor of the drum machines: it knows the panel's named controls, the
// instruments' lights and the pattern menus. Message thread.
class DrumMachineEditor : public BasePluginEditorOldStyle
{
public:
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
