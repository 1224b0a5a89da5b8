#include "editor/DrumMachineEditors.h"

#include "editor/browser/OldStylePresetBrowserWindow.h"
#include "editor/options/DrumMachineSettingsPages.h"
#include "editor/options/PresetsSettingsComponent.h"
#include "plugin/Quindrel.h"

BasePluginEditorOldStyle::BasePluginEditorOldStyle(BasePluginOldStyle* pluginToUse)
    : BasePluginEditor(pluginToUse)
{
    getOptionsWindow()->addPage("Presets", new PresetsSettingsComponent(*this, *pluginToUse), true);

    presetBrowser = std::make_unique<OldStylePresetBrowserWindow>(*pluginToUse);
    addChildComponent(*presetBrowser);
}

BasePluginEditorOldStyle::~BasePluginEditorOldStyle()
{
    presetBrowser.reset();
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

DrumMachineEditor::DrumMachineEditor(DrumMachine* pluginToUse)
    : BasePluginEditorOldStyle(pluginToUse)
    , drumMachine(pluginToUse)
{
    auto* options = getOptionsWindow();
    options->addPage("Outputs", new OutputsSettingsComponent(*this, *pluginToUse), true);
    options->addPage("Sequencer", new SequencerSettingsComponent(*pluginToUse), true);
    options->addPage("Patterns", new PatternsSettingsComponent(*this, *pluginToUse), true);
    options->addPage("Drum map", new DrumMapSettingsComponent(*this, *pluginToUse), true);
    options->getTabs().setCurrentTabIndex(0);
}

QuindrelEditor::QuindrelEditor(Quindrel* pluginToUse)
    : DrumMachineEditor(pluginToUse)
{
}
