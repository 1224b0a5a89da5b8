#pragma once

#include "parameters/OldParameterNames.h"
#include "plugin/DrumMachine.h"

class QuindrelSeq;

// The concrete instrument: its engine, its sequencer, its identity and file
// names, and the events and parameters only it knows.
class Quindrel : public DrumMachine
{
public:
    static constexpr int outputCount = 12;

    // The output type comes from the user settings unless one is given.
    explicit Quindrel(const PluginPaths& paths, std::optional<int> outputType = std::nullopt);
    ~Quindrel() override;

    // Builds and starts an instance as the plug-in entry point does: construct,
    // initialise, and let every parameter notify once so that engine and
    // sequencer agree with the parameters. Tests start their subclasses the same way.
    template <typename PluginClass = Quindrel>
    static std::unique_ptr<PluginClass> createInstance(const PluginPaths& paths, std::optional<int> outputType = std::nullopt)
    {
        auto plugin = std::make_unique<PluginClass>(paths, outputType);
        plugin->initialise();
        plugin->getParameterManager().sendAllChanges();
        return plugin;
    }

    juce::String getPluginName() const override { return "Quindrel"; }
    juce::String getPluginShortName() const override { return "QD"; }
    int getNumHostParameters() const override { return 111; }
    int getOutputCount() const override { return outputCount; }
    std::unique_ptr<DrumMachineCore> createCore() override;
    std::unique_ptr<DrumMachineSeq> createSequencer() override;
    float getBaseVelocity() const override { return 0.3779527559055118f; }
    float getStrongVelocity() const override { return 0.377f; }
    float getAccentVelocity() const override { return 0.623f; }
    bool canLoadState(const juce::XmlElement& xml) const override;
    // The state adds QDState first; the older root "QuindrelBank" is read too.
    std::unique_ptr<juce::XmlElement> createStateXml() override;
    void loadState(const juce::XmlElement& xml) override;
    void handleEvent(int uid) override;
    void updatePatternDisplays() override;
    std::unique_ptr<BasePluginEditor> createPluginEditor() override;

    QuindrelSeq* getQuindrelSeq() const;

    // Takes "Auto Fill In" and the two variation modes to the sequencer.
    void parameterChanged(Parameter& parameter) override;

    // SoftwareDesignation
    juce::String getProductName() const override { return getPluginName(); }
    juce::String getCodeName() const override { return "Copper Quail"; }
    juce::String getVersion() const override { return "1.5.1"; }
    juce::String getHomePage() const override { return "https://quindrel.audio"; }
    juce::String getYear() const override { return "2007"; }
    juce::String getBuildDate() const override { return "2012-02-09"; }
    juce::String getEdition() const override { return {}; }
    juce::String getBuildNumber() const override { return juce::String(442) + "." + juce::String(1304); }
    juce::String getPatchLevel() const override { return "0"; }

    // Presets: the older extensions and the older forms, whose parameters
    // bear short names ("BD Level"); "changing" is no option here.
    bool hasPresetChangingOption() const override { return false; }
    int getNumOldPresetExtensions() const override { return 1; }
    juce::String getOldPresetExtension(int index) const override { return index == 0 ? ".qdp" : ""; }
    int getNumOldBankExtensions() const override { return 1; }
    juce::String getOldBankExtension(int index) const override { return index == 0 ? ".qdb" : ""; }
    int getNumOldMidiControlExtensions() const override { return 1; }
    juce::String getOldMidiControlExtension(int index) const override { return index == 0 ? ".qcc" : ""; }
    void loadNotPresetXml(const juce::XmlElement& xml) override;
    bool isPresetXml(const juce::XmlElement& xml) const override;
    void loadPreset(const juce::XmlElement& xml, Preset& preset) override;
    bool isPresetBankXml(const juce::XmlElement& xml) const override;
    void loadBankXml(const juce::XmlElement& xml) override;

    // Reads a control map of the older form, whose rows name parameters by
    // their older short names.
    void loadMidiMap(const juce::XmlElement& xml);

    // The table of older short parameter names, for the older file readers.
    const OldParameterNames& getOldParameterNames() const { return *oldNames; }

private:
    void loadQDState(const juce::XmlElement& xml);
    void loadOldState(const juce::XmlElement& xml);
    juce::String translateOldName(const juce::String& shortName) const;

    std::unique_ptr<OldParameterNames> oldNames;
    bool goingAway = false;
};
