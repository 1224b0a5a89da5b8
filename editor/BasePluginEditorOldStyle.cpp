#include "editor/BasePluginEditorOldStyle.h"

#include "editor/browser/OldStylePresetBrowserWindow.h"
#include "editor/options/PresetsSettingsComponent.h"
#include "plugin/BasePluginOldStyle.h"

BasePluginEditorOldStyle::BasePluginEditorOldStyle(BasePluginOldStyle* pluginToUse)
    : BasePluginEditor(pluginToUse)
    , oldStylePlugin(pluginToUse)
{
    presetNameDisplay = dynamic_cast<GFXDisplay*>(findControl("PresetNameDisplay"));
    if (presetNameDisplay != nullptr)
        presetNameDisplay->addDisplayListener(this);

    getOptionsWindow()->addPage("Presets", new PresetsSettingsComponent(*this, *pluginToUse), true);
    presetBrowser = std::make_unique<OldStylePresetBrowserWindow>(*pluginToUse);
    addChildComponent(*presetBrowser);
}

BasePluginEditorOldStyle::~BasePluginEditorOldStyle()
{
    presetBrowser.reset();
    if (presetNameDisplay != nullptr)
        presetNameDisplay->removeDisplayListener(this);
}

void BasePluginEditorOldStyle::displayTextChanged(GFXDisplay& display)
{
    if (&display != presetNameDisplay)
        return;

    // The display then shows the name back as the bank has stored it.
    oldStylePlugin->renamePreset(oldStylePlugin->getCurrentPreset(), display.getText());
}

bool BasePluginEditorOldStyle::handleEditorEvent(GUIController* controller, int eventUid)
{
    if (eventUid == browsePresetsEvent)
    {
        presetBrowser->showCentred();
        return true;
    }
    return BasePluginEditor::handleEditorEvent(controller, eventUid);
}
