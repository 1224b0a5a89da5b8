#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <memory>

class BasePlugin;
class BasePluginEditor;

// What the host gets from createEditor: a window that holds the panel and
// takes its size whenever the panel changes size. The panel is deleted with
// it, when the host closes the window. Message thread.
class PluginEditorWindow : public juce::AudioProcessorEditor
{
public:
    PluginEditorWindow(BasePlugin& plugin, std::unique_ptr<BasePluginEditor> editor);
    ~PluginEditorWindow() override;

    BasePluginEditor& getEditor() { return *editor; }

    void paint(juce::Graphics&) override {}
    void resized() override;

private:
    std::unique_ptr<BasePluginEditor> editor;
};
