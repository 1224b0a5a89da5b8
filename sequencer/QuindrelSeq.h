#pragma once

#include "sequencer/DrumMachineSeq.h"
#include "sequencer/Pattern.h"

#include <array>

// The sequencer of Quindrel: 96 host patterns, one-bar loops started by MIDI
// keys 12 to 107, and 16 native patterns (12 basic, 4 intro or fill-in) with
// two variations of two parts each, run in the manner of a hardware rhythm
// machine with automatic fill-ins and alternating variations.
//
// The running operations (start, stop, advance, play, recordStep) run on the
// audio thread and touch only fixed-size arrays. The panel operations, the
// editing accessors and all file work run on the message thread; they write
// single words and pattern bytes that the audio thread picks up at its next
// step, with no lock.
class QuindrelSeq : public DrumMachineSeq
{
public:
    static constexpr int hostPatternCount = 96;
    static constexpr int nativePatternCount = 16;
    static constexpr int basicPatternCount = 12; // native 0 to 11; 12 to 15 are intro or fill-in

    static constexpr int startWithBasic = 0;
    static constexpr int startWithFillIn = 1;

    static constexpr int variationA = 0;
    static constexpr int variationB = 1;
    static constexpr int variationAB = 2;

    // The positions of the "Auto Fill In" switch and what they mean.
    static constexpr std::array<int, 6> autoFillByPosition{ 0, 16, 12, 8, 4, 2 };
    // The positions of the "Basic Variation Mode" switch: A, AB, B.
    static constexpr std::array<int, 3> basicVariationByPosition{ variationA, variationAB, variationB };

    QuindrelSeq(DrumMachine* owner, DrumMachineCore* engine);

    // Files (message thread); the forms are in QuindrelSeqFiles.cpp.
    bool hasHostPatterns() const override { return true; }
    int getPatternFileTypeCount(int type) const override;
    juce::String getPatternFileType(int index, int type) const override;
    juce::String getPatternFileExtension(int type) const override;
    juce::String getPatternFileWildcards(int type) const override;
    int getBankFileTypeCount(int type) const override;
    juce::String getBankFileType(int index, int type) const override;
    juce::String getBankFileExtension(int type) const override;
    juce::String getBankFileWildcards(int type) const override;
    bool isPatternElement(const juce::XmlElement& xml, int type) const override;
    void readPattern(const juce::XmlElement& xml, int index, int type) override;
    std::unique_ptr<juce::XmlElement> writePattern(int index, int type) const override;
    bool isBankElement(const juce::XmlElement& xml, int type) const override;
    void readEditionState(const juce::XmlElement& xml) override;
    std::unique_ptr<juce::XmlElement> writeEditionState() const override;
    void loadAtStart() override;

    // Running (audio thread).
    void startHostPattern(int index) override;
    void startNative() override;
    void stopHost() override;
    void stopNative() override;
    void playHostStep(bool late) override;
    void playNativeStep(bool late) override;
    void advanceHost() override;
    bool advanceNative() override;
    void recordStep(int track, int value, int type) override;

    // What plays (audio thread and message thread).
    int getHostPattern() const override { return hostPattern; }
    int getNativePattern() const override { return nativePattern; }
    int getHostStep() const override { return hostStep; }
    int getNativeStep() const override { return nativeStep; }
    int getHostLength() const override { return playingHost().getLength(); }
    int getNativeLength() const override { return playingPart().getLength(); }
    double getHostTempo() const override { return playingHost().getTempo(); }
    double getNativeTempo() const override { return playingVariation().getTempo(); }
    double getHostShuffle() const override { return playingHost().getShuffle(); }
    double getNativeShuffle() const override { return playingVariation().getShuffle(); }
    int getHostScale() const override { return playingHost().getScale(); }
    int getNativeScale() const override { return playingPart().getScale(); }
    juce::String getHostName() const override { return playingHost().getName(); }
    juce::String getNativeName() const override { return nativePatterns[(size_t) nativePattern].getName(); }
    void markPosition() override;
    bool positionChanged() const override;
    bool isPatternLit(int index) const override;
    bool isPatternChosen(int index) const override;
    int getNativeVariation() const { return nativeVariation; }
    int getNativePart() const { return nativePart; }

    // Editing (message thread): the edited pattern is the host pattern in
    // host mode, otherwise one part of a native pattern.
    int getPatternCount(int type) const override { return type == hostType ? hostPatternCount : nativePatternCount; }
    Pattern* getEditedPattern() override { return &editedPattern(); }
    int getEditedIndex() const override { return editingHost() ? editedHostPattern : editedNativePattern; }
    void editNextPattern() override;
    void editPreviousPattern() override;
    juce::String getEditedName() const override;
    void setEditedName(const juce::String& name) override;
    int getEditedLength() const override { return editedPattern().getLength(); }
    void setEditedLength(int length) override { editedPattern().setLength(length); }
    double getEditedShuffle() const override;
    void setEditedShuffle(double shuffle) override;
    double getEditedTempo() const override;
    void setEditedTempo(double tempo) override;
    int getEditedScale() const override { return editedPattern().getScale(); }
    void setEditedScale(int scale) override { editedPattern().setScale(scale); }
    int getStep(int track, int step) const override { return editedPattern().getStep(track, step); }
    void setStep(int track, int step, int value) override { editedPattern().setStep(track, step, value); }
    // One step inside the edited pattern's length; track -1 shifts all 18.
    // The count is not used: a press shifts by one.
    void shiftTrackLeft(int track, int count) override;
    void shiftTrackRight(int track, int count) override;
    void clearTrack(int track) override;
    void clearPattern() override { editedPattern().clearSteps(); }
    void copyTrack(int track) override { trackClipboard.copyTrackFrom(editedPattern(), track, track); }
    void copyPattern() override;
    void pasteTrack(int from, int to) override { editedPattern().copyTrackFrom(trackClipboard, from, to); }
    void pastePattern() override;
    bool isEditedHostPlaying() const override;
    bool isEditedNativePlaying() const override;
    bool followHost() override;
    bool followNative() override;
    bool editStartPattern() override;
    juce::String getPatternName(int index, int type) const override;
    void setPatternName(int index, const juce::String& name, int type) override;

    // The randomizer's writes (message thread): the backup taken on entry,
    // a track restored from it, and single steps written byte by byte.
    void backupForRandom(Pattern* pattern) override;
    void restoreTrack(Pattern* pattern, int track) override;
    void clearStepIn(Pattern* pattern, int track, int step) override;
    void setStepIn(Pattern* pattern, int track, int step) override;
    void setAccentedStepIn(Pattern* pattern, int track, int step) override;

    int getEditedHostPattern() const { return editedHostPattern; }
    int getEditedNativePattern() const { return editedNativePattern; }
    int getEditedVariation() const { return editedVariation; }
    int getEditedPart() const { return editedPart; }
    void setEditedHostPattern(int index) { editedHostPattern = juce::jlimit(0, hostPatternCount - 1, index); }
    void setEditedNativePattern(int index) { editedNativePattern = juce::jlimit(0, nativePatternCount - 1, index); }
    void setEditedVariation(int variation) { editedVariation = juce::jlimit(0, 1, variation); }
    void setEditedPart(int part) { editedPart = juce::jlimit(0, 1, part); }

    // The stores, for the file forms and for tests.
    Pattern& getHostPatternAt(int index) { return hostPatterns[(size_t) juce::jlimit(0, hostPatternCount - 1, index)]; }
    NativePattern& getNativePatternAt(int index) { return nativePatterns[(size_t) juce::jlimit(0, nativePatternCount - 1, index)]; }

    // Panel operations of native mode (message thread). Each writes single
    // words that the next step or block picks up.
    //
    // Step buttons 1 to 16, as index 0 to 15: 0 to 11 choose the basic
    // pattern, 12 to 15 the intro or fill-in pattern; the displays follow.
    void choosePattern(int index);
    // Only 0 to 11, and only 12 to 15, are taken; other values are ignored.
    // While no run goes, the choice becomes the pattern to start with.
    void setBasicPattern(int index);
    void setFillPattern(int index);
    // Whether a run begins with the basic pattern or the intro.
    void setStartType(int type);
    void toggleStartType() { setStartType(startType == startWithBasic ? startWithFillIn : startWithBasic); }
    // A fill-in at the end of the current pass, in manual mode.
    void requestFillIn() { fillRequested = true; }
    // "Tap/IntroSet/FillInTrigger/Accept" once the randomizer and editing
    // have declined it: while stopped it toggles the intro, while running it
    // asks for a fill-in.
    void introOrFillIn();

    // 0 for manual, else 2, 4, 8, 12 or 16 passes; other values mean manual.
    void setAutoFill(int passes);
    // 0 A, 1 B, 2 AB for the basic pattern; 0 A, 1 B for the intro and fill-in.
    void setBasicVariationMode(int mode) { basicVariationMode = juce::jlimit(0, 2, mode); }
    void setFillVariationMode(int mode) { fillVariationMode = juce::jlimit(0, 1, mode); }

    int getBasicPattern() const { return basicPattern; }
    int getFillPattern() const { return fillPattern; }
    int getStartType() const { return startType; }
    int getBasicVariation() const { return basicVariation; }
    bool isFillRequested() const { return fillRequested; }
    int getAutoFill() const { return autoFill; }
    int getPassCount() const { return passCount; }
    int getBasicVariationMode() const { return basicVariationMode; }
    int getFillVariationMode() const { return fillVariationMode; }

protected:
    int editedIndexOf(int type) const override { return type == hostType ? editedHostPattern : editedNativePattern; }

private:
    bool editingHost() const;
    Pattern& editedPattern();
    const Pattern& editedPattern() const;
    Variation& editedNativeVariation();
    const Variation& editedNativeVariation() const;
    void shiftTrack(int track, bool left);

    const Pattern& playingHost() const { return hostPatterns[(size_t) hostPattern]; }
    const Variation& playingVariation() const { return nativePatterns[(size_t) nativePattern].getVariation(nativeVariation); }
    const Pattern& playingPart() const { return playingVariation().getPart(nativePart); }

    // Plays one step of a pattern: the accent track on both calls, the
    // instruments on the first. Audio thread.
    void playStep(const Pattern& pattern, int step, bool late);
    // Sets the pattern that a run will start with, while no run goes.
    void placeStartPattern();
    int getStartPattern() const { return startType == startWithBasic ? basicPattern : fillPattern; }

    // The store.
    Pattern randomBackup;
    Pattern trackClipboard;
    Pattern patternClipboard;
    NativePattern nativeClipboard;
    std::array<Pattern, hostPatternCount> hostPatterns;
    std::array<NativePattern, nativePatternCount> nativePatterns;

    // Play state. The mark belongs to the audio thread; the other fields are
    // written by one thread and read by the other (or, like the edited
    // pattern, written by both), each a word of its own.
    int markedPattern = 0, markedVariation = 0, markedPart = 0, markedPlaying = 0;
    RelaxedAtomic<int> editedHostPattern{ 0 };
    RelaxedAtomic<int> hostPattern{ 0 };
    RelaxedAtomic<int> hostStep{ 0 };
    RelaxedAtomic<int> nativePattern{ 0 };
    RelaxedAtomic<int> nativeVariation{ 0 };
    RelaxedAtomic<int> nativePart{ 0 };
    RelaxedAtomic<int> nativeStep{ 0 };
    RelaxedAtomic<int> editedNativePattern{ 0 }, editedVariation{ 0 }, editedPart{ 0 };
    RelaxedAtomic<int> basicPattern{ 0 };
    RelaxedAtomic<int> basicVariation{ 0 };
    RelaxedAtomic<int> fillPattern{ basicPatternCount };
    RelaxedAtomic<int> startType{ startWithBasic };
    RelaxedAtomic<bool> fillRequested{ false };
    RelaxedAtomic<int> autoFill{ 0 };
    RelaxedAtomic<int> passCount{ 0 };
    RelaxedAtomic<int> basicVariationMode{ variationA };
    RelaxedAtomic<int> fillVariationMode{ variationA };
};
