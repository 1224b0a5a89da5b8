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

    // Reads a control map of the older form, whose rows name parameters by
    // their older short names.
    void loadMidiMap(const juce::XmlElement& xml);

    // The table of older short parameter names, for the older file readers.
    const OldParameterNames& getOldParameterNames() const { return *oldNames; }

private:
    std::unique_ptr<OldParameterNames> oldNames;
    bool goingAway = false;
};
