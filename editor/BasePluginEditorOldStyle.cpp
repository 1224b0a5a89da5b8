#include "editor/BasePluginEditorOldStyle.h"

#include "plugin/BasePluginOldStyle.h"

BasePluginEditorOldStyle::BasePluginEditorOldStyle(BasePluginOldStyle* pluginToUse)
    : BasePluginEditor(pluginToUse)
    , oldStylePlugin(pluginToUse)
{
    presetNameDisplay = dynamic_cast<GFXDisplay*>(findControl("PresetNameDisplay"));
    if (presetNameDisplay != nullptr)
        presetNameDisplay->addDisplayListener(this);
}

BasePluginEditorOldStyle::~BasePluginEditorOldStyle()
{
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
