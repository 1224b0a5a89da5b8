#pragma once

#include "editor/PseudoModalComponent.h"
#include "editor/browser/OldStylePresetsBrowser.h"
#include "editor/options/SettingsWidgets.h"
#include "plugin/BasePlugin.h"

class BasePluginOldStyle;

// "Preset Browser": the bank's groups and presets in columns, with the
// preset and bank files below them. It follows the current preset when the
// panel, MIDI or the host change it, and reads the bank again after a
// restored song. The file choosers are asynchronous. Message thread.
class OldStylePresetBrowserWindow : public WindowComponent, public Parameter::Listener, public BasePlugin::Listener
{
public:
    static constexpr int width = 640, height = 520;

    explicit OldStylePresetBrowserWindow(BasePluginOldStyle& plugin);
    ~OldStylePresetBrowserWindow() override;

    OldStylePresetsBrowser& getBrowser() { return browser; }
    juce::FileChooser* getFileChooser() const { return chooser.get(); }

    // What the choosers do with the chosen file, each followed by a refresh.
    // A saved name without an extension gets the file type's.
    bool loadPresetFile(const juce::File& file);
    bool savePresetFile(const juce::File& file);
    bool loadBankFile(const juce::File& file);
    bool saveBankFile(const juce::File& file);

    // Parameter::Listener: the current preset's number and name.
    void parameterChanged(Parameter& parameter) override;
    // BasePlugin::Listener
    void pluginStateRestored(BasePlugin&) override;

    void showStateChanged() override;
    void paint(juce::Graphics& g) override;
    void resized() override;

private:
    enum class FileAction
    {
        loadPreset,
        savePreset,
        loadBank,
        saveBank
    };

    void openChooser(FileAction action);

    BasePluginOldStyle& plugin;
    OldStylePresetsBrowser browser;
    TextButtonEx presetLoad{ "Load", "Load preset" };
    TextButtonEx presetSave{ "Save", "Save current preset" };
    TextButtonEx bankLoad{ "Load", "Load preset bank" };
    TextButtonEx bankSave{ "Save", "Save current preset bank" };
    std::unique_ptr<juce::FileChooser> chooser;
};
