#include "editor/BasePluginEditorOldStyle.h"

#include "parameters/ParameterIds.h"
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

    // The name parameter renames the current preset; the display then
    // shows it back as the plug-in has stored it.
    if (auto* name = plugin->getParameterManager().getParameter(ParameterIds::currentPresetName))
        name->setText(display.getText(), true);
}
