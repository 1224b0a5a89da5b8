#pragma once

#include "editor/BasePluginEditor.h"
#include "editor/GFXDisplay.h"

class BasePluginOldStyle;

// The editor of the family's plug-ins with presets: the preset name display,
// whose edited text renames the current preset, and the preset browser's
// event. Message thread.
class BasePluginEditorOldStyle : public BasePluginEditor, public GFXDisplayListener
{
public:
    explicit BasePluginEditorOldStyle(BasePluginOldStyle* plugin);
    ~BasePluginEditorOldStyle() override;

    void displayTextChanged(GFXDisplay& display) override;

    GFXDisplay* getPresetNameDisplay() const { return presetNameDisplay; }

protected:
    BasePluginOldStyle* const oldStylePlugin;
    GFXDisplay* presetNameDisplay = nullptr;
};
