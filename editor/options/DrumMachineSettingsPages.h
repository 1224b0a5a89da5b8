#pragma once

#include "editor/DrumMachineEditor.h"
#include "editor/PopupMenuEx.h"
#include "editor/options/SettingsWidgets.h"
#include "parameters/InstrumentNames.h"

#include <array>

// The drum machine's pages of the options window. Each shows the plug-in's
// values when its tab or the window comes into view and writes a change at
// once; none keeps a copy of a setting beyond its widgets. Message thread.

// "Outputs": the output each instrument of a new instance goes to, the type
// of outputs the next load declares, and the output of the trigger pulse
// with the instrument that drives it.
class DrumMachineEditor::OutputsSettingsComponent : public juce::Component,
                                                    public ComboBoxEx::Listener,
                                                    public RadioButtons::Listener,
                                                    public OptionsPage
{
public:
    // The trigger's menu: an output's number, or none.
    static constexpr int noTriggerOutput = 100;

    OutputsSettingsComponent(BasePluginEditor& editor, DrumMachine& plugin);
    ~OutputsSettingsComponent() override;

    ComboBoxEx& getOutputBox(int instrument) { return *outputBoxes[instrument]; }
    ComboBoxEx& getTriggerBox() { return triggerBox; }
    ComboBoxEx& getTriggerSourceBox() { return triggerSourceBox; }
    RadioButtons& getOutputType() { return outputType; }
    TextButtonEx& getSetFromCurrentButton() { return setFromCurrent; }

    void refresh() override;
    void comboBoxExChanged(ComboBoxEx& box) override;
    void radioButtonsChanged(RadioButtons& buttons, int index) override;
    void resized() override;

private:
    DrumMachine& plugin;
    PanelComponent assigns{ "Default outputs assigns" };
    juce::OwnedArray<SettingsLabel> sourceLabels, outputLabels;
    juce::OwnedArray<ComboBoxEx> outputBoxes;
    TextButtonEx setFromCurrent{ "Set from current assignations", "The outputs in use become the defaults" };
    RadioButtons outputType{ "Default outputs type", { "Stereo", "Mono" } };
    SettingsLabel typeNote{ "Outputs type is affected when plug-in is inserted.", true };
    PanelComponent trigger{ "Trigger output" };
    SettingsLabel triggerOutputLabel{ "Output:" }, triggerSourceLabel{ "Source:" };
    ComboBoxEx triggerBox{ "TriggerOutput" };
    ComboBoxEx triggerSourceBox{ "TriggerSource" };
    SettingsLabel triggerNote{ "A short pulse each time the source instrument sounds, to drive a sampler or an effect in step.", true };
};

// "Sequencer": the modes in use, which act as the panel's buttons do and
// follow them, the modes a new instance starts with, and how the host's
// playing is detected.
class DrumMachineEditor::SequencerSettingsComponent : public juce::Component,
                                                      public CheckBox::Listener,
                                                      public RadioButtons::Listener,
                                                      public Parameter::Listener,
                                                      public OptionsPage
{
public:
    static constexpr int modeCount = 4;

    explicit SequencerSettingsComponent(DrumMachine& plugin);
    ~SequencerSettingsComponent() override;

    CheckBox& getCurrentBox(int mode) { return *currentBoxes[mode]; }
    CheckBox& getDefaultBox(int mode) { return *defaultBoxes[mode]; }
    RadioButtons& getDetection() { return detection; }

    void refresh() override;
    void checkBoxChanged(CheckBox& box) override;
    void radioButtonsChanged(RadioButtons& buttons, int index) override;
    // The mode's state parameters, whoever changed them.
    void parameterChanged(Parameter& parameter) override;
    void resized() override;

private:
    bool getMode(int mode) const;
    bool& getDefaultMode(int mode);

    DrumMachine& plugin;
    PanelComponent current{ "Current settings" };
    PanelComponent defaults{ "Default settings" };
    juce::OwnedArray<CheckBox> currentBoxes, defaultBoxes;
    SettingsLabel defaultsNote{ "The modes that a new instance of the plug-in starts with.", true };
    RadioButtons detection{ "Host play detection", { "By transport change", "By lowest C note" } };
    SettingsLabel detectionNote{ "What starts the native patterns in time with the host: its transport, "
                                 "or a note on the lowest C (MIDI note 0).",
                                 true };
};

// "Patterns": the host and native pattern banks a new instance loads.
class DrumMachineEditor::PatternsSettingsComponent : public juce::Component,
                                                     public DefaultResourcesRadioButtons::Listener,
                                                     public OptionsPage
{
public:
    PatternsSettingsComponent(BasePluginEditor& editor, DrumMachine& plugin);
    ~PatternsSettingsComponent() override;

    DefaultResourcesRadioButtons& getHostPatterns() { return hostPatterns; }
    DefaultResourcesRadioButtons& getNativePatterns() { return nativePatterns; }

    void refresh() override;
    void defaultResourcesChanged(DefaultResourcesRadioButtons& buttons) override;
    void resized() override;

private:
    BasePluginEditor& editor;
    DrumMachine& plugin;
    PanelComponent frame{ "Default patterns" };
    DefaultResourcesRadioButtons hostPatterns, nativePatterns;
};

// "Drum map": the map in use, loaded and saved through files, and the map a
// new instance starts with.
class DrumMachineEditor::DrumMapSettingsComponent : public juce::Component,
                                                    public DefaultResourcesRadioButtons::Listener,
                                                    public OptionsPage,
                                                    private juce::ListBoxModel
{
public:
    DrumMapSettingsComponent(BasePluginEditor& editor, DrumMachine& plugin);
    ~DrumMapSettingsComponent() override;

    juce::ListBox& getTable() { return table; }
    // The keys of an instrument as the table shows them.
    juce::String getKeysText(int instrument) const;
    DefaultResourcesRadioButtons& getDefaultMap() { return defaultMap; }

    // What the choosers do with the chosen file; a saved name without an
    // extension gets the map's. Each remembers the folder.
    bool loadMap(const juce::File& file);
    bool saveMap(const juce::File& file);
    juce::FileChooser* getFileChooser() const { return chooser.get(); }

    void refresh() override;
    void defaultResourcesChanged(DefaultResourcesRadioButtons& buttons) override;
    void paint(juce::Graphics& g) override;
    void resized() override;

private:
    int getNumRows() override { return instrumentCount; }
    void paintListBoxItem(int row, juce::Graphics& g, int width, int height, bool selected) override;
    void openChooser(bool save);

    BasePluginEditor& editor;
    DrumMachine& plugin;
    PanelComponent currentMap{ "Current drum map" };
    juce::ListBox table{ "DrumMap", nullptr };
    TextButtonEx loadButton{ "Load", "Load drum map" };
    TextButtonEx saveButton{ "Save", "Save drum map" };
    DefaultResourcesRadioButtons defaultMap;
    std::unique_ptr<juce::FileChooser> chooser;
};
