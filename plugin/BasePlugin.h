#pragma once

#include "parameters/EventMap.h"
#include "parameters/MidiControl.h"
#include "parameters/ParameterManager.h"
#include "plugin/SoftwareDesignation.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <array>
#include <atomic>
#include <optional>

class BasePluginEditor;
class HostParameter;

// Where an instance finds its own files. The plug-in entry point fills it from
// the loaded module; tests and tools set their own before initialise, so that
// they never touch a user's real files. An empty settingsFile means: start
// from the built-in defaults and write nothing back.
struct PluginPaths
{
    juce::File pluginFile;
    juce::File settingsFile;
    // False to read the settings file but never write it back.
    bool writeSettings = true;

    // The loaded module (VST3 or LV2 binary, or the executable), and the user
    // settings file: "<name>.ini" in the user's configuration folder under the
    // plug-in's name ($XDG_CONFIG_HOME or ~/.config, then Quindrel), shared by
    // every format and never inside a bundle. A build tool that loads the
    // plug-in only to describe it (JUCE's LV2 manifest helper) gets no settings
    // file: it takes the defaults and writes nothing.
    static PluginPaths forLoadedModule(const juce::String& pluginName);
    static PluginPaths forModule(const juce::String& pluginName, const juce::File& module,
                                 const juce::File& hostExecutable, const juce::File& userDataDirectory);
};

// The frame of every plug-in of this family on top of juce::AudioProcessor:
// parameters, named events, host parameters, user settings and the state
// handed to the host. Construction and initialise run on the message thread;
// the host-parameter calls come from any thread.
class BasePlugin : public juce::AudioProcessor,
                   public juce::AsyncUpdater,
                   public Parameter::Listener,
                   public SoftwareDesignation
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void pluginStateRestored(BasePlugin&) {}
        virtual void pluginStateSaved(BasePlugin&) {}
    };

    static constexpr int maxHostParameters = 128;

    BasePlugin(const BusesProperties& buses, const PluginPaths& paths);
    ~BasePlugin() override;

    // juce::AudioProcessor
    const juce::String getName() const override { return getPluginName(); }
    double getTailLengthSeconds() const override { return 0.0; }
    bool acceptsMidi() const override { return true; }
    bool producesMidi() const override { return true; }
    void reset() override {}
    juce::AudioProcessorEditor* createEditor() override;
    bool hasEditor() const override { return true; }
    int getNumPrograms() override { return 1; } // the host sees no programs of ours
    int getCurrentProgram() override { return 0; }
    void setCurrentProgram(int) override {}
    const juce::String getProgramName(int) override { return {}; }
    void changeProgramName(int, const juce::String&) override {}
    void getStateInformation(juce::MemoryBlock& destData) override;
    void setStateInformation(const void* data, int sizeInBytes) override;
    void getCurrentProgramStateInformation(juce::MemoryBlock& destData) override;
    void setCurrentProgramStateInformation(const void* data, int sizeInBytes) override;

    // juce::AsyncUpdater: delivers the state listeners' calls on the message thread.
    void handleAsyncUpdate() override;

    // Parameter::Listener, registered on every parameter: tells the host of
    // a change that did not come from the host.
    void parameterChanged(Parameter& parameter) override;
    void parameterGestureBegin(Parameter& parameter) override;
    void parameterGestureEnd(Parameter& parameter) override;

    // The chain's own operations.
    virtual void initialise();
    virtual juce::String getPluginName() const { return "BasePlugin"; }
    virtual juce::String getPluginShortName() const { return "XX"; }
    virtual bool canLoadState(const juce::XmlElement& xml) const;
    virtual void loadState(const juce::XmlElement& xml);
    virtual std::unique_ptr<juce::XmlElement> createStateXml();
    virtual void loadCurrentProgramXml(const juce::XmlElement&) {}
    virtual std::unique_ptr<juce::XmlElement> createCurrentProgramXml() { return {}; }
    virtual bool canLoadUserSettings(const juce::XmlElement& xml) const;
    virtual void loadUserSettings(const juce::XmlElement&) {}
    virtual std::unique_ptr<juce::XmlElement> createUserSettings() { return {}; }
    virtual int getNumHostParameters() const { return maxHostParameters; }
    virtual juce::String getParameterDisplayText(int id) const;
    virtual void handleEvent(int /*uid*/) {}
    virtual bool useDebugParameters() const { return false; }
    virtual void afterInitialise() {}
    // The panel that createEditor puts in the host's window.
    virtual std::unique_ptr<BasePluginEditor> createPluginEditor();

    // What the host sees of a host parameter (index = id). These carry the
    // behaviour of the host's get/set/text/name calls; HostParameter forwards
    // to them.
    float getHostParameterValue(int index) const;
    void setHostParameterValue(int index, float value);
    juce::String getHostParameterText(int index) const;
    juce::String getHostParameterName(int index) const;
    bool isHostParameterAutomatable(int index) const { return index < getNumHostParameters(); }
    // The text the host shows for a host parameter at a given normalised value.
    virtual juce::String getHostParameterTextFor(int index, float normalisedValue) const;
    // Whether the host should show the parameter as an on/off switch.
    virtual bool isHostParameterToggle(int /*index*/) const { return false; }

    // Embedded data by "name.type".
    std::optional<juce::MemoryBlock> loadResourceData(const juce::String& nameAndType) const;
    juce::String loadResourceText(const juce::String& nameAndType) const;
    bool loadResourceImage(const juce::String& nameAndType, juce::Image& image) const;

    ParameterManager& getParameterManager() { return parameterManager; }
    const ParameterManager& getParameterManager() const { return parameterManager; }
    EventMap& getEvents() { return events; }
    MidiControl& getMidiControl() { return *midiControl; }

    const juce::File& getPluginFile() const { return pluginFile; }
    const juce::File& getPluginDirectory() const { return pluginDirectory; }
    const juce::File& getSettingsFile() const { return settingsFile; }
    bool writesSettings() const { return writeSettings; }

    using juce::AudioProcessor::addListener;
    using juce::AudioProcessor::removeListener;
    void addListener(Listener* listener) { listeners.add(listener); }
    void removeListener(Listener* listener) { listeners.remove(listener); }

    // SoftwareDesignation: the parts that come from the running program.
    juce::String getPluginPath() const override { return pluginFile.getFullPathName(); }
    juce::String getFormatName() const override;
    juce::String getArchitecture() const override;

protected:
    // Reads the user settings file, if there is one, into loadUserSettings.
    void readUserSettingsFile();
    // Writes createUserSettings into the user settings file, if there is one.
    void writeUserSettingsFile();

    // Fills the host map with id = index and creates the host's parameter objects.
    void createHostParameters();

    juce::File pluginFile, pluginDirectory, settingsFile;
    bool writeSettings = true;
    ParameterManager parameterManager;
    std::unique_ptr<MidiControl> midiControl;
    EventMap events;

private:
    HostParameter* getHostParameterObject(int index) const;
    Parameter* getHostParameterTarget(int index) const;
    int getHostIndexOf(int id) const;

    juce::Array<Parameter*> hostParameters;
    juce::CriticalSection hostParametersLock;
    juce::HashMap<int, int> hostIndexOfParameter;
    juce::CriticalSection hostIndexLock;
    std::array<std::atomic<float>, maxHostParameters> hostParameterValues;
    std::array<std::atomic<juce::int32>, maxHostParameters> ignoreParameterEcho;
    std::atomic<juce::int32> stateRestoredPending{ 0 }, stateSavedPending{ 0 };
    juce::ListenerList<Listener> listeners;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(BasePlugin)
};
