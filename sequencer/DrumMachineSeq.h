#pragma once

#include "parameters/InstrumentNames.h"
#include "parameters/RelaxedAtomic.h"
#include "sequencer/RandomGenerator.h"

#include <juce_core/juce_core.h>

#include <array>
#include <atomic>
#include <deque>
#include <memory>

class DrumMachine;
class DrumMachineCore;
class Pattern;

// The sequencer of the drum-machine family. It holds no timing of its own:
// block processing ticks the clocks and calls the running operations on the
// audio thread at each step; the editing and file operations run on the message
// thread. This base gives neutral answers (nothing plays, lengths 16, tempo 120)
// so that a plug-in without patterns still runs; a concrete sequencer derives
// from it and holds the patterns.
class DrumMachineSeq
{
public:
    // Pattern types wherever a type is passed.
    static constexpr int nativeType = 0;
    static constexpr int hostType = 1;
    static constexpr int plainType = 2;

    static constexpr int numTracks = instrumentCount + 1; // the instruments and the accent track

    // What is loaded at start for each store.
    static constexpr int factoryPatterns = 0;
    static constexpr int clearPatterns = 1;
    static constexpr int userDefinedPatterns = 2;

    DrumMachineSeq(DrumMachine* owner, DrumMachineCore* engine);
    virtual ~DrumMachineSeq() = default;

    // Files (message thread).
    virtual bool hasHostPatterns() const { return false; }
    virtual int getPatternFileTypeCount(int /*type*/) const { return 0; }
    virtual juce::String getPatternFileType(int /*index*/, int /*type*/) const { return {}; }
    virtual juce::String getPatternFileExtension(int /*type*/) const { return {}; }
    virtual juce::String getPatternFileWildcards(int /*type*/) const { return {}; }
    virtual int getBankFileTypeCount(int /*type*/) const { return 0; }
    virtual juce::String getBankFileType(int /*index*/, int /*type*/) const { return {}; }
    virtual juce::String getBankFileExtension(int /*type*/) const { return {}; }
    virtual juce::String getBankFileWildcards(int /*type*/) const { return {}; }
    virtual bool isPatternElement(const juce::XmlElement& /*xml*/, int /*type*/) const { return false; }
    virtual void readPattern(const juce::XmlElement& /*xml*/, int /*index*/, int /*type*/) {}
    virtual std::unique_ptr<juce::XmlElement> writePattern(int /*index*/, int /*type*/) const { return {}; }
    virtual bool isBankElement(const juce::XmlElement& /*xml*/, int /*type*/) const { return false; }

    // Running (audio thread).
    virtual void startHostPattern(int /*index*/) {}
    virtual void startNative() {}
    virtual void stopHost() {}
    virtual void stopNative() {}
    virtual void playHostStep(bool /*late*/) {}
    virtual void playNativeStep(bool /*late*/) {}
    virtual void advanceHost() {}
    virtual bool advanceNative() { return false; }

    // What plays.
    virtual int getHostPattern() const { return 0; }
    virtual int getNativePattern() const { return 0; }
    virtual int getHostStep() const { return 0; }
    virtual int getNativeStep() const { return 0; }
    virtual int getHostLength() const { return 16; }
    virtual int getNativeLength() const { return 16; }
    virtual double getHostTempo() const { return 120.0; }
    virtual double getNativeTempo() const { return 120.0; }
    virtual double getHostShuffle() const { return 0.0; }
    virtual double getNativeShuffle() const { return 0.0; }
    virtual double getHostPulseWidth() const { return 0.0; }
    virtual double getNativePulseWidth() const { return 0.0; }
    virtual int getHostScale() const { return 4; }
    virtual int getNativeScale() const { return 4; }
    virtual juce::String getHostName() const { return {}; }
    virtual juce::String getNativeName() const { return {}; }
    virtual void markPosition() {}
    virtual bool positionChanged() const { return false; }
    virtual bool isPatternLit(int /*index*/) const { return false; }

    // Step values.
    virtual int getOffValue() const { return 0; }
    virtual int getOnValue() const { return 1; }
    virtual int getAccentValue() const { return 3; }
    virtual int getFlamValue() const { return 0; }

    // Editing (message thread).
    virtual int getPatternCount(int /*type*/) const { return 0; }
    virtual Pattern* getEditedPattern() { return nullptr; }
    virtual int getEditedIndex() const { return 0; }
    virtual void editNextPattern() {}
    virtual void editPreviousPattern() {}
    virtual juce::String getEditedName() const { return {}; }
    virtual void setEditedName(const juce::String& /*name*/) {}
    virtual int getEditedLength() const { return 16; }
    virtual void setEditedLength(int /*length*/) {}
    virtual double getEditedFlam() const { return 0.5; }
    virtual void setEditedFlam(double /*flam*/) {}
    virtual double getEditedShuffle() const { return 0.0; }
    virtual void setEditedShuffle(double /*shuffle*/) {}
    virtual double getEditedTempo() const { return 120.0; }
    virtual void setEditedTempo(double /*tempo*/) {}
    virtual int getEditedScale() const { return 4; }
    virtual void setEditedScale(int /*scale*/) {}
    virtual void shiftTrackLeft(int /*track*/, int /*count*/) {}
    virtual void shiftTrackRight(int /*track*/, int /*count*/) {}
    virtual int getStep(int /*track*/, int /*step*/) const { return 0; }
    virtual void setStep(int /*track*/, int /*step*/, int /*value*/) {}
    // Off, on, accented, off; on the accent track off, accented, off.
    virtual void toggleStep(int track, int step, bool flam);
    virtual int nextStepValue(int value, bool /*flam*/) const;
    virtual void clearTrack(int /*track*/) {}
    virtual void clearPattern() {}
    virtual void copyTrack(int /*track*/) {}
    virtual void copyPattern() {}
    virtual void pasteTrack(int /*from*/, int /*to*/) {}
    virtual void pastePattern() {}
    virtual bool isEditedHostPlaying() const { return false; }
    virtual bool isEditedNativePlaying() const { return false; }
    virtual bool followHost() { return false; }
    virtual bool followNative() { return false; }
    virtual bool editStartPattern() { return false; }
    virtual juce::String getPatternName(int /*index*/, int /*type*/) const { return {}; }
    virtual void setPatternName(int /*index*/, const juce::String& /*name*/, int /*type*/) {}

    // Edition state in the plug-in's state.
    virtual void readEditionState(const juce::XmlElement& /*xml*/) {}
    virtual std::unique_ptr<juce::XmlElement> writeEditionState() const { return {}; }

    // Banks and files, built on the pattern operations above (message thread,
    // or the host's thread for the state). Readers take what they know and
    // leave the rest; nothing reports a failure.
    //
    // A bank of a type: its patterns in slot order; a short bank leaves the
    // later slots as they are, a long one is cut.
    void readBank(const juce::XmlElement& xml, int type);
    std::unique_ptr<juce::XmlElement> writeBank(int type) const;
    // Both banks in the plug-in's state, or one untyped bank without host patterns.
    void readPatternsState(const juce::XmlElement& xml);
    std::unique_ptr<juce::XmlElement> writePatternsState() const;
    // A single pattern goes to or comes from the edited slot of its type.
    bool loadPatternFile(const juce::File& file, int type);
    bool savePatternFile(const juce::File& file, int type) const;
    bool loadBankFile(const juce::File& file, int type);
    bool saveBankFile(const juce::File& file, int type) const;

    // Low-level writes of the randomizer.
    virtual void backupForRandom(Pattern* /*pattern*/) {}
    virtual void restoreTrack(Pattern* /*pattern*/, int /*track*/) {}
    virtual void clearStepIn(Pattern* /*pattern*/, int /*track*/, int /*step*/) {}
    virtual void setStepIn(Pattern* /*pattern*/, int /*track*/, int /*step*/) {}
    virtual void setAccentedStepIn(Pattern* /*pattern*/, int /*track*/, int /*step*/) {}
    virtual void setFlamStepIn(Pattern* /*pattern*/, int /*track*/, int /*step*/) {}

    // Whether step button `index` shows a chosen pattern in native play mode:
    // the basic pattern, the fill pattern or the one that plays.
    virtual bool isPatternChosen(int /*index*/) const { return false; }

    // The value of a step of the edited pattern as the randomizer's mask lets it play.
    virtual int getRandomizedStep(int track, int step) const;

    // Fills the stores at start-up from the factory banks, empty patterns or
    // user files, as the resource settings say (message thread).
    virtual void loadAtStart() {}

    // Writes a tapped value into the playing pattern at its current step (audio thread).
    virtual void recordStep(int /*track*/, int /*value*/, int /*type*/) {}

    // Sounds and/or records the tracks of the tap taken, then clears it (audio thread).
    void applyTap(bool play, bool write, bool host);

    // What is loaded at start, from the user settings.
    int hostResourceKind = factoryPatterns;
    int nativeResourceKind = factoryPatterns;
    int patternsResourceKind = factoryPatterns;
    juce::String hostResourceFile, nativeResourceFile, patternsResourceFile;

    // Written by the audio thread, read by the panel.
    RelaxedAtomic<bool> hostPlaying{ false };
    RelaxedAtomic<bool> nativePlaying{ false };

    // The randomizer's draws and the seeds of its earlier results (message thread).
    RandomGenerator randomGenerator;
    std::deque<juce::uint32> seedHistory;
    std::deque<juce::uint32> stepRanks;

    // The randomizer's mask, written on the message thread and read by the
    // step players: relaxed atomics, each word read afresh. A step played
    // while a result is being drawn may sound once unmasked.
    std::atomic<Pattern*> randomPattern{ nullptr };
    std::atomic<bool> randomActive{ false };
    std::array<std::atomic<juce::uint8>, numTracks> randomTracks{};
    std::array<std::atomic<float>, numTracks> randomThresholds;
    std::array<std::array<std::atomic<float>, 16>, numTracks> randomLevels;

    // No result: no track under the mask, every level -1.
    void resetRandomizer();

    // A tap crosses from the message thread: the panel writes every track's
    // value, then raises tapRequested; the audio thread takes the flag and the
    // values together (takeTapRequest), so a tap requested while another is
    // being handled waits for the next sample instead of being lost.
    std::array<std::atomic<int>, numTracks> tapValues{};
    std::atomic<bool> tapRequested{ false };
    // Audio thread only: the tap taken, and whether it waits for the next step.
    std::array<int, numTracks> pendingTapValues{};
    bool tapDeferred = false;
    int tapType = nativeType;

    // Audio thread, every sample: takes a requested tap into pendingTapValues,
    // if there is one. A plain load until a tap waits.
    bool takeTapRequest() { return tapRequested.load(std::memory_order_relaxed) && takeTapValues(); }

    DrumMachine* plugin = nullptr;
    DrumMachineCore* core = nullptr;
    int trackCount = numTracks;
    juce::uint32 seedCurrent = 0;

protected:
    // The slot a single pattern of this type is loaded into or saved from.
    virtual int editedIndexOf(int /*type*/) const { return 0; }

    bool takeTapValues();

    // The randomizer's mask for one step: true if the track is hidden there.
    bool isMaskedByRandomizer(const Pattern* pattern, int track, int step) const;
};
