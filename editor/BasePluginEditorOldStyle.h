#pragma once

#include "editor/BasePluginEditor.h"
#include "editor/GFXDisplay.h"

class BasePluginOldStyle;
class OldStylePresetBrowserWindow;

// The editor of the family's plug-ins with presets: the preset name display,
// whose edited text renames the current preset, the preset browser with its
// event, and the options page of the presets. Message thread.
class BasePluginEditorOldStyle : public BasePluginEditor, public GFXDisplayListener
{
public:
    class PresetsSettingsComponent;

    explicit BasePluginEditorOldStyle(BasePluginOldStyle* plugin);
    ~BasePluginEditorOldStyle() override;

    void displayTextChanged(GFXDisplay& display) override;

    GFXDisplay* getPresetNameDisplay() const { return presetNameDisplay; }
    OldStylePresetBrowserWindow* getPresetBrowser() const { return presetBrowser.get(); }

protected:
    bool handleEditorEvent(GUIController* controller, int eventUid) override;

    BasePluginOldStyle* const oldStylePlugin;
    GFXDisplay* presetNameDisplay = nullptr;

private:
    std::unique_ptr<OldStylePresetBrowserWindow> presetBrowser;
};
