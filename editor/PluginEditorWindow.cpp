#include "editor/PluginEditorWindow.h"

#include "editor/BasePluginEditor.h"
#include "plugin/BasePlugin.h"

PluginEditorWindow::PluginEditorWindow(BasePlugin& plugin, std::unique_ptr<BasePluginEditor> editorToShow)
    : juce::AudioProcessorEditor(plugin)
    , editor(std::move(editorToShow))
{
    setOpaque(true);
    addAndMakeVisible(*editor);
    setSize(editor->getWidth(), editor->getHeight());
    editor->setTopLeftPosition(0, 0);

    // The last step of opening runs with the window in place, so that a
    // panel that grows takes the window with it.
    editor->finishOpening();
}

PluginEditorWindow::~PluginEditorWindow()
{
    editor.reset();
}

void PluginEditorWindow::resized()
{
    editor->setTopLeftPosition(0, 0);
}
