#pragma once

#include "engine/DrumMachineCore.h"
#include "parameters/InstrumentNames.h"
#include "plugin/BasePluginOldStyle.h"
#include "plugin/MidiQueue.h"
#include "sequencer/Clock.h"
#include "sequencer/DrumMachineSeq.h"
#include "sequencer/ShuffledClock.h"

#include <array>
#include <atomic>

// Everything common to the family's drum machines: the engine and the
// sequencer, the four clocks, block processing with sample-accurate MIDI and
// steps, the routing of instruments to outputs, the drum map, and the modes of
// the sequencer that the panel mirrors in state parameters.
//
// processBlock runs on the host's audio thread. Events, file work and the
// mirrors run on the message thread. The two sides share plain words (modes,
// run request, routing, drum map), each written whole and read afresh.
class DrumMachine : public BasePluginOldStyle
{
public:
    static constexpr int maxOutputs = 16;
    static constexpr int stereoOutputs = 0;
    static constexpr int monoOutputs = 1;

    static constexpr int byTransportChange = 0;
    static constexpr int byLowestCNoteOn = 1;

    // The output type a new instance takes, read from a user settings file
    // before the buses are declared; stereo if the file says nothing.
    static int readStoredOutputType(const juce::File& settingsFile);

    // outputCount and outputType fix the buses for the life of the instance.
    DrumMachine(const PluginPaths& paths, int outputCount, int outputType, const juce::String& shortName);
    ~DrumMachine() override;

    // juce::AudioProcessor
    void prepareToPlay(double sampleRate, int maximumExpectedSamplesPerBlock) override;
    void releaseResources() override;
    void processBlock(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midiMessages) override;
    using juce::AudioProcessor::processBlock;
    bool isBusesLayoutSupported(const BusesLayout& layouts) const override;

    // The chain's operations.
    void initialise() override;
    void loadUserSettings(const juce::XmlElement& xml) override;
    std::unique_ptr<juce::XmlElement> createUserSettings() override;
    void loadResourcesSettings(const juce::XmlElement& xml) override;
    std::unique_ptr<juce::XmlElement> createResourcesSettings() override;
    juce::String getParameterDisplayText(int id) const override;
    juce::String getHostParameterTextFor(int index, float normalisedValue) const override;
    bool isHostParameterToggle(int index) const override;
    void parameterChanged(Parameter& parameter) override;
    void handleEvent(int uid) override;
    // The state adds, around the base's elements: InternalSequencer,
    // AudioOutputSettings and PatternsState first, DrumMap last.
    std::unique_ptr<juce::XmlElement> createStateXml() override;
    void loadState(const juce::XmlElement& xml) override;
    std::unique_ptr<juce::XmlElement> createInternalSequencerState() const;
    void loadInternalSequencerState(const juce::XmlElement& xml);

    virtual int getExtraDrumMapExtensionCount() const { return 0; }
    virtual juce::String getExtraDrumMapExtension(int) const { return {}; }
    virtual int getOutputCount() const = 0;
    virtual std::unique_ptr<DrumMachineCore> createCore() { return {}; }
    virtual std::unique_ptr<DrumMachineSeq> createSequencer() { return {}; }
    virtual float getBaseVelocity() const { return 0.0f; }
    virtual float getStrongVelocity() const { return 0.0f; }
    virtual float getAccentVelocity() const { return 0.0f; }

    // Block processing.
    // Sounds a track: mute and solo, the engine, the activity lamp, MIDI out.
    // Audio thread.
    void triggerInstrument(int instrument, float velocity);
    // The note-offs of an instrument's generated notes, at the current sample. Audio thread.
    void sendNoteOffs(int instrument, juce::MidiBuffer& target);
    void sendAllNoteOffs(juce::MidiBuffer& target);

    // Audio outputs.
    int getOutputType() const { return outputType; }
    int getInstrumentOutput(int instrument) const;
    void setInstrumentOutput(int instrument, int output);
    int getTriggerOutput() const { return triggerOutput; }
    void setTriggerOutput(int output);
    void setTriggerOut(bool enabled, int source);
    // The defaults of the user settings: the type takes effect at the next
    // load, the numbers when a new instance starts.
    int getStoredOutputType() const { return storedOutputType; }
    void setStoredOutputType(int type) { storedOutputType = type == monoOutputs ? monoOutputs : stereoOutputs; }
    int getStoredInstrumentOutput(int instrument) const;
    void setStoredInstrumentOutput(int instrument, int output);
    // The numbers in use become the defaults.
    void storeCurrentOutputs();
    void loadAudioOutputSettings(const juce::XmlElement& xml, bool userSettings);
    std::unique_ptr<juce::XmlElement> createAudioOutputSettings(bool userSettings) const;

    // The drum map.
    void resetDrumMap();
    void loadDrumMap(const juce::XmlElement& xml);
    bool isDrumMapXml(const juce::XmlElement& xml) const;
    void loadDrumMapFromResource(const juce::String& text);
    void loadDrumMapFromFile();
    std::unique_ptr<juce::XmlElement> createDrumMapXml() const;
    bool saveDrumMap(const juce::File& file) const;
    juce::String getDrumMapExtension() const;
    juce::String getDrumMapWildcard() const;
    juce::String getInstrumentName(int index) const;
    juce::String getMidiKeyName(int key) const;
    int getKeyInstrument(int key) const;
    const juce::String& getDrumMapName() const { return drumMapName; }
    // Loads a map file as the current map; a file that holds no map changes nothing.
    bool loadDrumMapFile(const juce::File& file);
    // The map a new instance starts with: 0 the factory map, 1 a user's file.
    int getDrumMapSource() const { return drumMapSource; }
    const juce::String& getDrumMapFile() const { return drumMapFile; }
    void setDrumMapSource(int source, const juce::String& file);

    DrumMachineCore* getCore() const { return core.get(); }
    DrumMachineSeq* getSequencer() const { return sequencer.get(); }
    double getAccentLevel() const { return accentLevel; }

    // Taken by the panel's timer: whether a track fired, or MIDI arrived, since the last look.
    bool takeActivity(int track) { return activityFlags[(size_t) track].exchange(0) != 0; }
    bool takeMidiActivity() { return midiActivity.exchange(0) != 0; }

    // Mode flags, read by block processing, set by events and settings.
    RelaxedAtomic<bool> internalSequencer{ true }, internalSync{ true }, hostMode{ false }, noteOffMode{ false };
    RelaxedAtomic<int> hostPlayDetection{ byTransportChange };
    RelaxedAtomic<bool> writeMode{ false }, autoFollow{ false }, randomizerOn{ false }, lengthMode{ false }, tapMode{ false }, flamMode{ false };
    // The defaults a new instance takes, from the user settings.
    bool defaultInternalSequencer = true, defaultInternalSync = true, defaultHostMode = false, defaultNoteOffMode = false;

    // Start and stop requests of the panel, served at the next block: 0 none, 1 start, 2 stop.
    std::atomic<int> runRequest{ 0 };
    int getRunState() const { return runState; }

    // The four clocks, in the order they are built.
    ShuffledClock hostClock{ "hostClock" };
    ShuffledClock nativeClock{ "nativeClock" };
    Clock nativeGateClock;
    Clock hostGateClock;

    // Editing selection of the sequencer's tracks (the step lights read it on
    // the audio thread too), and the clipboard flags.
    std::array<RelaxedAtomic<juce::uint8>, trackCount> selectedTracks{};
    RelaxedAtomic<int> selectedTrack{ 0 };
    bool trackClipboardFull = false;
    bool patternClipboardFull = false;
    std::array<juce::uint8, trackCount> clipboardTracks{};
    int clipboardTrackCount = 0;

    // The panel's view of the modes: state parameters recomputed from the
    // flags (message thread, or the audio thread for the pattern displays).
    bool isEditing() const { return internalSequencer && (writeMode || hostMode); }
    bool isRandomFilled() const;
    virtual void updateInternalSequencerState();
    virtual void updateInternalSyncState();
    virtual void updateHostModeState();
    virtual void updateNoteOffState();
    virtual void updateWriteModeState();
    virtual void updateAutoFollowState();
    virtual void updateLengthModeState();
    virtual void updateStepLights();
    virtual void updatePatternDisplays();
    // The rows of the shown pattern's name, flam, shuffle and tempo. They are
    // set on the message thread only: from any other, this hands them to it.
    void updatePatternSettingsRows();
    void updateStepBlinking();
    // "Native Mode Ready State": the sequencer on, in native play mode, stopped.
    void updateNativeModeReadyState();
    // The step the panel's running light shows, or -1: the step of the clock
    // that the mode follows while it runs and plays what is edited. Message thread.
    int getDisplayStep() const;
    void updateStepLengthLamps();
    void updatePatternNumber();
    void updateScaleRows();
    void updateTrackRows();

    // The randomizer (message thread). On, it takes the edited pattern under
    // its mask and keeps a backup of it; off, it cancels a result.
    void setRandomizer(bool shouldBeOn);
    // A result from a new seed drawn from the generator, or from the seed
    // before the present one; each first accepts a result at hand.
    void newRandomResult();
    void previousRandomResult();
    // Fills the selected tracks of the pattern under the randomizer: every
    // step on, about half accented, each with its own level for the mask.
    void randomize();
    // Writes the mask into the pattern (steps at or above their track's
    // threshold are cleared), or puts the tracks back as they were on entry.
    void acceptRandomResult();
    void cancelRandomResult();
    // Whether the randomizer shows a result: editing, on, and filled.
    bool hasRandomResult() const { return isEditing() && randomizerOn && isRandomFilled(); }
    // A tap of the selected tracks, played and recorded by the next block.
    void requestTap(bool accented);
    // A press of step button `step` (0 to 15) while editing.
    void pressStepWhileEditing(int step);

    // Mode switches with their side effects, as the panel's switches do them.
    void setInternalSequencer(bool shouldBeOn);
    void setHostMode(bool shouldBeOn);
    void setWriteMode(bool shouldBeOn);
    // Makes t the one selected track, with the selection parameters.
    void selectTrack(int track);
    // "Select" and "Toggle ... Selection" of a track: with a randomizer
    // result and a track of it, only the shown track changes.
    void chooseTrack(int track);
    void toggleTrackSelection(int track);

    // The edit panel's commands on the edited pattern (message thread).
    void shiftTracks(bool left, bool allTracks);
    void copyTracks();
    void copyPattern();
    void paste();
    // Empties a full clipboard, or else clears the selected tracks.
    void clearTracksOrClipboard();
    void emptyClipboard();

    // Served by the next block: the note-offs of a sequencer just switched.
    // The block sends them rather than the thread that switched, which may not
    // touch the audio thread's buffers.
    std::atomic<bool> noteOffsRequested{ false };

protected:
    std::unique_ptr<DrumMachineCore> core;
    std::unique_ptr<DrumMachineSeq> sequencer;

    const int numInstruments = instrumentCount;
    const int numTracks = trackCount;

private:
    static BusesProperties makeBuses(int outputCount, int outputType, const juce::String& shortName);
    void startNativeSequence();
    void takePatternTiming(ShuffledClock& clock, bool host, bool intSync);
    void handleController(const juce::MidiMessage& message);
    void handleProgramChange(int program);
    void refreshModeRows();
    void updateClipboardState();
    void drawRandomResult();
    void setMuteOrSolo(int firstId, int instrument, bool inverse);
    void copyTempoAndScale(const Clock& from, Clock& to);
    void handleMidiEvent(const juce::MidiMessage& message);
    void flushPending();
    void renderOneFrame(int index);
    void prepareOutputChannels(juce::AudioBuffer<float>& buffer);
    void setInstrumentFlag(std::atomic<juce::uint32>& flags, int instrument, bool on);
    void updateEnabled();
    void readDrumMapVersion(const juce::XmlElement& xml, const char* keyAttribute);

    // Block processing.
    MidiQueue midiQueue;
    juce::MidiBuffer midiOut;
    juce::MidiBuffer noteOffsOut; // go out whether or not the sequencer is on
    int sampleInBlock = 0;
    int pendingSamples = 0;
    int renderedSamples = 0;
    std::array<double, instrumentCount> renderBuffer{};
    double sampleRate = 0.0;
    bool wasPlaying = false;
    bool lowestCStarted = false;
    int heldPatternNotes = 0;
    RelaxedAtomic<int> runState{ 0 }; // read by the Start/Stop event
    std::array<std::atomic<int>, trackCount> activityFlags{};
    std::atomic<int> midiActivity{ 0 };
    RelaxedAtomic<double> accentLevel{ 0.0 };
    std::array<juce::uint8, instrumentCount> heldOutNotes{};

    // Mute and solo, and what they leave enabled, as one bit an instrument.
    // Any thread may change mute and solo (automation, MIDI, the panel);
    // triggers read enabled with one load, so they see it whole.
    static constexpr juce::uint32 allInstruments = (1u << instrumentCount) - 1;
    std::atomic<juce::uint32> muted{ 0 }, soloed{ 0 }, enabled{ allInstruments };

    // Outputs: where each output's left and right channel start in this
    // block's buffer, or null where the host gave none.
    const int outputCount;
    int storedOutputType = stereoOutputs;
    int outputType = stereoOutputs;
    std::array<std::atomic<int>, instrumentCount> instrumentOutput;
    std::array<int, instrumentCount> storedInstrumentOutput;
    std::atomic<int> triggerOutput;
    std::array<std::array<float*, 2>, maxOutputs> outputPointers{};

    // The drum map.
    std::array<std::atomic<int>, 128> keyToInstrument;
    juce::String drumMapName;
    int drumMapSource = 0;
    juce::String drumMapFile;

    const juce::String outputShortName;

    RealtimeAsyncCallback patternSettingsUpdate{ [this]
                                                 { updatePatternSettingsRows(); } };
};
