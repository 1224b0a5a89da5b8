#pragma once

#include "plugin/BasePlugin.h"
#include "presets/PresetBank.h"

#include <atomic>

// The family's frame with presets: one bank of 128 presets cut into groups,
// the current preset with its two parameters ("Current Preset Number", "Current
// Preset Name"), the clipboard, the preset and bank files with their older
// forms, and the files beside the plug-in (the recently used folder, the
// resource settings of the user settings file).
//
// Message thread, but for a program change, which selects and applies a preset
// on the audio thread (selectAndApplyPreset), and the queries, which any thread
// may call. The bank guards itself (PresetBank). The preset listeners, like a
// parameter's, are added only while the editor is built.
class BasePluginOldStyle : public BasePlugin
{
public:
    // Told after a preset has been applied, on the thread that applied it: the
    // audio thread for a program change.
    class PresetListener
    {
    public:
        virtual ~PresetListener() = default;
        virtual void presetLoaded() {}
    };

    static constexpr int numPresets = PresetBank::numPresets;

    // presetStoring
    static constexpr int automatic = 0;
    static constexpr int onDemand = 1;
    // presetChanging
    static constexpr int normal = 0;
    static constexpr int silent = 1;
    // presetsResourceKind
    static constexpr int factoryPresets = 0;
    static constexpr int clearPresets = 1;
    static constexpr int userDefinedPresets = 2;

    BasePluginOldStyle(const BusesProperties& buses, const PluginPaths& paths);

    void initialise() override;
    void loadUserSettings(const juce::XmlElement& xml) override;
    std::unique_ptr<juce::XmlElement> createUserSettings() override;
    // The state's ParametersState, PresetsState and MidiCCMap.
    std::unique_ptr<juce::XmlElement> createStateXml() override;
    void loadState(const juce::XmlElement& xml) override;
    void loadCurrentProgramXml(const juce::XmlElement& xml) override;
    std::unique_ptr<juce::XmlElement> createCurrentProgramXml() override;
    void handleEvent(int uid) override;
    // Renames the current preset on a change of "Current Preset Name", and with
    // automatic storing writes a changed sound parameter into the current preset.
    void parameterChanged(Parameter& parameter) override;

    // The operations this class adds to the chain, in their order.
    virtual void loadResourcesSettings(const juce::XmlElement& xml);
    virtual std::unique_ptr<juce::XmlElement> createResourcesSettings();
    virtual bool hasDefaultPresetOption() const { return false; }
    virtual bool hasPresetStoringOption() const { return true; }
    virtual bool hasPresetChangingOption() const { return true; }
    virtual int getNumOldPresetExtensions() const { return 0; }
    virtual juce::String getOldPresetExtension(int) const { return {}; }
    virtual int getNumOldBankExtensions() const { return 0; }
    virtual juce::String getOldBankExtension(int) const { return {}; }
    virtual bool isNotPresetXml(const juce::XmlElement& xml) const;
    virtual void loadNotPresetXml(const juce::XmlElement& xml);
    virtual std::unique_ptr<juce::XmlElement> createNotPresetXml();
    virtual bool isPresetXml(const juce::XmlElement& xml) const;
    virtual void loadPresetAt(const juce::XmlElement& xml, int number);
    virtual void loadPreset(const juce::XmlElement& xml, Preset& preset);
    virtual std::unique_ptr<juce::XmlElement> createPresetXmlAt(int number);
    virtual std::unique_ptr<juce::XmlElement> createPresetXml(const Preset& preset);
    virtual bool isPresetGroupXml(const juce::XmlElement& xml) const;
    virtual bool isPresetBankXml(const juce::XmlElement& xml) const;
    virtual void loadBankXml(const juce::XmlElement& xml);
    virtual std::unique_ptr<juce::XmlElement> createBankXml();
    virtual int getNumOldMidiControlExtensions() const { return 0; }
    virtual juce::String getOldMidiControlExtension(int) const { return {}; }

    // Queries, from any thread.
    int getCurrentPreset() const { return (int) currentPreset.load(); }
    juce::String getPresetName(int number) const { return bank.getPresetName(number); }
    juce::String getGroupName(int group) const { return bank.getGroupName(group); }
    int getNumGroups() const { return bank.getNumGroups(); }
    int getGroupOfPreset(int number) const { return bank.getGroupOfPreset(number); }
    int getGroupStart(int group) const { return bank.getGroupStart(group); }
    int getGroupCount(int group) const { return bank.getGroupCount(group); }
    int getGroupLast(int group) const { return bank.getGroupLast(group); }
    int getPresetNumber(int group, int indexInGroup) const { return bank.getPresetNumber(group, indexInGroup); }
    juce::String getBankName() const { return bank.getName(); }
    // A copy of a preset's values, for those who compare sounds.
    float getPresetValue(int number, int index) const;

    // Selects without applying: the parameters keep their values.
    void selectPreset(int number, bool notify);
    void selectNextPreset();
    void selectPreviousPreset();
    // A program change, or a click on a preset: select it, then change to it.
    // Allocates nothing; audio thread for a program change.
    void selectAndApplyPreset(int number);
    // Sets the 58 sound parameters from the current preset, then the preset's
    // number and name parameters, then tells the preset listeners.
    void applyCurrentPreset();

    void renamePreset(int number, const juce::String& name);
    void renameGroup(int group, const juce::String& name) { bank.renameGroup(group, name); }
    void storeCurrentPreset();
    void setPresetStoring(int kind);
    int getPresetStoring() const { return presetStoring; }
    void setPresetChanging(int kind) { presetChanging = kind == silent ? silent : normal; }
    int getPresetChanging() const { return presetChanging; }
    void copyCurrentPreset();
    void pasteCopiedPreset();
    bool isClipboardFull() const { return clipboardFull; }

    // Moves keep the same sound selected, apply nothing and tell no listener.
    void movePreset(int fromGroup, int toGroup, int from, int to);
    void movePresets(int toGroup, int fromGroup, const juce::SparseSet<int>& selection);
    void moveGroup(int from, int to);
    void addGroup(int position) { bank.addGroup(position); }
    void removeGroup(int group) { bank.removeGroup(group); }
    void clearBank();

    // Files. A file that is unreadable, holds no XML or is of another kind
    // changes nothing; the loads say whether they took the file, the saves
    // whether the file was written. Each remembers the file's folder.
    bool loadPresetFile(const juce::File& file, int number);
    bool savePresetFile(const juce::File& file);
    bool loadBankFile(const juce::File& file);
    bool saveBankFile(const juce::File& file);
    // ".qdprs" and ".qdprsb" from the short name; the choosers' wildcards.
    juce::String getPresetExtension() const;
    juce::String getBankExtension() const;
    juce::String getPresetLoadWildcard() const;
    juce::String getBankLoadWildcard() const;
    juce::String getMidiControlLoadWildcard() const;

    int getPresetsResourceKind() const { return presetsResourceKind; }
    const juce::String& getPresetsResourceFile() const { return presetsResourceFile; }
    void setPresetsResource(int kind, const juce::String& file);

    const juce::File& getLastDirectory() const { return lastDirectory; }
    // Only an existing folder is taken.
    void setLastDirectory(const juce::File& directory);

    void addPresetListener(PresetListener* listener) { presetListeners.addIfNotAlreadyThere(listener); }
    void removePresetListener(PresetListener* listener) { presetListeners.removeFirstMatchingValue(listener); }
    // Called instead of applying a preset when changes are silent.
    void setSilentChangeListener(PresetListener* listener) { silentChangeListener = listener; }

protected:
    // Reads the parameters named by the `param` children of xml into a preset,
    // each name passed through translateName first.
    void readPresetParams(const juce::XmlElement& xml, Preset& preset, const std::function<juce::String(const juce::String&)>& translateName);
    // Sets every parameter named by the `param` children, with notification.
    void readNotPresetParams(const juce::XmlElement& xml, const std::function<juce::String(const juce::String&)>& translateName);

    // Start-up of the presets: the default preset, the bank by the user's
    // choice, the current preset applied, and the parameters outside presets sent again.
    void loadPresetsAtStart();

    juce::File lastDirectory;

private:
    void changeToCurrentPreset();
    void remember(const juce::File& file);
    int currentPresetNumberAfterMove(const Preset* remembered);

    // Read by a program change and by knobs that MIDI moves, on the audio thread.
    std::atomic<int> presetStoring{ onDemand };
    std::atomic<int> presetChanging{ normal };
    int presetsResourceKind = factoryPresets;
    juce::String presetsResourceFile;
    std::atomic<juce::uint32> currentPreset{ 0 };
    const int numPresetParameters = Preset::count;
    const int numNotPresetParameters = 53;
    std::array<Parameter*, Preset::count> presetParameters{};
    Parameter* presetNumberParameter = nullptr;
    Parameter* presetNameParameter = nullptr;
    PresetBank bank;
    Preset defaultPreset;
    Preset clipboardPreset;
    bool clipboardFull = false;
    PresetListener* silentChangeListener = nullptr;
    juce::Array<PresetListener*> presetListeners;
};
