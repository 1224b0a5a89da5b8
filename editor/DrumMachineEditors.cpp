#include "editor/DrumMachineEditors.h"

#include "plugin/Quindrel.h"

BasePluginEditorOldStyle::BasePluginEditorOldStyle(BasePlugin* pluginToUse)
    : BasePluginEditor(pluginToUse)
{
}

DrumMachineEditor::DrumMachineEditor(DrumMachine* pluginToUse)
    : BasePluginEditorOldStyle(pluginToUse)
    , drumMachine(pluginToUse)
{
}

QuindrelEditor::QuindrelEditor(Quindrel* pluginToUse)
    : DrumMachineEditor(pluginToUse)
{
}
