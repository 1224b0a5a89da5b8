#include "sequencer/QuindrelSeq.h"

#include "plugin/DrumMachine.h"

QuindrelSeq::QuindrelSeq(DrumMachine* owner, DrumMachineCore* engine)
    : DrumMachineSeq(owner, engine)
{
}

//==============================================================================
void QuindrelSeq::startHostPattern(int index)
{
    hostPlaying = true;
    if (juce::isPositiveAndBelow(index, hostPatternCount))
    {
        hostStep = 0;
        hostPattern = index;
    }
}

void QuindrelSeq::startNative()
{
    nativePlaying = true;
    nativeStep = 0;
    nativePart = 0;
    // AB always starts on A.
    basicVariation = basicVariationMode == variationB ? variationB : variationA;

    if (startType == startWithBasic)
    {
        passCount = 0;
        nativeVariation = basicVariation;
    }
    else
    {
        // An intro: its pass is not counted, and in manual mode nothing counts
        // afterwards either, so AB does not alternate in such a run.
        passCount = -1;
        nativeVariation = fillVariationMode == variationB ? variationB : variationA;
    }
}

void QuindrelSeq::stopHost()
{
    hostPlaying = false;
}

void QuindrelSeq::stopNative()
{
    nativePlaying = false;
    // A run stopped within a fill-in, or with a change still queued, starts
    // again on what the panel shows as selected.
    nativePattern = getStartPattern();
}

void QuindrelSeq::playHostStep(bool late)
{
    if (tapDeferred && tapType == hostType)
    {
        applyTap(false, true, true);
        tapDeferred = false;
    }

    playStep(hostPatterns[(size_t) hostPattern], hostStep, late);
}

void QuindrelSeq::playNativeStep(bool late)
{
    if (tapDeferred && tapType == nativeType)
    {
        applyTap(false, true, false);
        tapDeferred = false;
    }

    playStep(playingPart(), nativeStep, late);
}

void QuindrelSeq::playStep(const Pattern& pattern, int step, bool late)
{
    if (plugin == nullptr)
        return;

    const float base = plugin->getBaseVelocity();
    const float strong = plugin->getStrongVelocity();
    const float boost = plugin->getAccentVelocity() * (float) plugin->getAccentLevel();

    // The accent track fires on the late call too: the engine sees it twice a step.
    const bool accented = !isMaskedByRandomizer(&pattern, accentTrack, step) && (pattern.getStep(accentTrack, step) & 1) != 0;
    if (accented)
        plugin->triggerInstrument(accentTrack, base + strong + boost);

    if (late)
        return;

    for (int track = 0; track < accentTrack; ++track)
    {
        if (isMaskedByRandomizer(&pattern, track, step))
            continue;

        const int value = pattern.getStep(track, step);
        if ((value & 1) != 0)
            plugin->triggerInstrument(track, base + ((value & 2) != 0 ? strong : 0.0f) + (accented ? boost : 0.0f));
    }
}

void QuindrelSeq::advanceHost()
{
    if (!juce::isPositiveAndBelow(hostPattern, hostPatternCount))
        return;

    if (++hostStep >= playingHost().getLength())
        hostStep = 0;
}

bool QuindrelSeq::advanceNative()
{
    if (++nativeStep < playingPart().getLength())
        return false;

    nativeStep = 0;
    if (nativePart != 1 && playingVariation().getPart(1).getLength() != 0)
    {
        nativePart = 1;
        return false;
    }

    // The pass is over: what comes next was chosen at any time before.
    if (passCount != -1)
        basicVariation = basicVariationMode == variationAB ? 1 - basicVariation : basicVariationMode.load();

    nativePart = 0;

    auto playFill = [this](bool fill)
    {
        nativePattern = fill ? fillPattern.load() : basicPattern.load();
        nativeVariation = fill ? fillVariationMode.load() : basicVariation.load();
    };

    if (autoFill == 0)
    {
        playFill(fillRequested);
        fillRequested = false;
        return true;
    }

    ++passCount;
    playFill(passCount == autoFill - 1);
    // At or past the count, so that a smaller count set during a run still wraps.
    if (passCount >= autoFill)
        passCount = 0;
    return true;
}

void QuindrelSeq::recordStep(int track, int value, int type)
{
    if (type == hostType)
        hostPatterns[(size_t) hostPattern].setStep(track, hostStep, value);
    else
        nativePatterns[(size_t) nativePattern].getVariation(nativeVariation).getPart(nativePart).setStep(track, nativeStep, value);
}

//==============================================================================
void QuindrelSeq::markPosition()
{
    markedPattern = nativePattern;
    markedVariation = nativeVariation;
    markedPart = nativePart;
    markedPlaying = nativePlaying ? 1 : 0;
}

bool QuindrelSeq::positionChanged() const
{
    return markedPattern != nativePattern || markedVariation != nativeVariation || markedPart != nativePart || markedPlaying != (nativePlaying ? 1 : 0);
}

bool QuindrelSeq::isPatternLit(int index) const
{
    // In a run the basic pattern's button blinks while a change to it is queued.
    if (nativePlaying)
        return index == basicPattern && index < basicPatternCount && nativePattern != basicPattern;

    return index == getStartPattern();
}

bool QuindrelSeq::isPatternChosen(int index) const
{
    return index == basicPattern || index == fillPattern || index == nativePattern;
}

//==============================================================================
bool QuindrelSeq::editingHost() const
{
    return plugin != nullptr && plugin->hostMode;
}

Variation& QuindrelSeq::editedNativeVariation()
{
    return nativePatterns[(size_t) editedNativePattern].getVariation(editedVariation);
}

const Variation& QuindrelSeq::editedNativeVariation() const
{
    return nativePatterns[(size_t) editedNativePattern].getVariation(editedVariation);
}

Pattern& QuindrelSeq::editedPattern()
{
    return editingHost() ? hostPatterns[(size_t) editedHostPattern] : editedNativeVariation().getPart(editedPart);
}

const Pattern& QuindrelSeq::editedPattern() const
{
    return editingHost() ? hostPatterns[(size_t) editedHostPattern] : editedNativeVariation().getPart(editedPart);
}

void QuindrelSeq::editNextPattern()
{
    if (editingHost())
        setEditedHostPattern(editedHostPattern + 1);
    else
        setEditedNativePattern(editedNativePattern + 1);
}

void QuindrelSeq::editPreviousPattern()
{
    if (editingHost())
        setEditedHostPattern(editedHostPattern - 1);
    else
        setEditedNativePattern(editedNativePattern - 1);
}

juce::String QuindrelSeq::getEditedName() const
{
    return editingHost() ? hostPatterns[(size_t) editedHostPattern].getName() : nativePatterns[(size_t) editedNativePattern].getName();
}

void QuindrelSeq::setEditedName(const juce::String& name)
{
    if (editingHost())
        hostPatterns[(size_t) editedHostPattern].setName(name);
    else
        nativePatterns[(size_t) editedNativePattern].setName(name);
}

double QuindrelSeq::getEditedShuffle() const
{
    return editingHost() ? editedPattern().getShuffle() : editedNativeVariation().getShuffle();
}

void QuindrelSeq::setEditedShuffle(double shuffle)
{
    if (editingHost())
        editedPattern().setShuffle(shuffle);
    else
        editedNativeVariation().setShuffle(shuffle);
}

double QuindrelSeq::getEditedTempo() const
{
    return editingHost() ? editedPattern().getTempo() : editedNativeVariation().getTempo();
}

void QuindrelSeq::setEditedTempo(double tempo)
{
    if (editingHost())
        editedPattern().setTempo(tempo);
    else
        editedNativeVariation().setTempo(tempo);
}

void QuindrelSeq::shiftTrackLeft(int track, int)
{
    shiftTrack(track, true);
}

void QuindrelSeq::shiftTrackRight(int track, int)
{
    shiftTrack(track, false);
}

void QuindrelSeq::shiftTrack(int track, bool left)
{
    auto& pattern = editedPattern();
    if (track != -1)
    {
        pattern.rotateTrack(track, left);
        return;
    }
    for (int t = 0; t < numTracks; ++t)
        pattern.rotateTrack(t, left);
}

void QuindrelSeq::clearTrack(int track)
{
    if (track >= numTracks)
        editedPattern().clearSteps();
    else
        editedPattern().clearTrack(track);
}

void QuindrelSeq::copyPattern()
{
    if (editingHost())
        patternClipboard.copyFrom(editedPattern());
    else
        nativeClipboard.copyFrom(nativePatterns[(size_t) editedNativePattern]);
}

void QuindrelSeq::pastePattern()
{
    if (editingHost())
        editedPattern().copyFrom(patternClipboard);
    else
        nativePatterns[(size_t) editedNativePattern].copyFrom(nativeClipboard);
}

bool QuindrelSeq::isEditedHostPlaying() const
{
    return hostPlaying && editedHostPattern == hostPattern;
}

bool QuindrelSeq::isEditedNativePlaying() const
{
    return nativePlaying && editedNativePattern == nativePattern && editedVariation == nativeVariation && editedPart == nativePart;
}

bool QuindrelSeq::followHost()
{
    if (editedHostPattern == hostPattern)
        return false;

    setEditedHostPattern(hostPattern);
    return true;
}

bool QuindrelSeq::followNative()
{
    if (editedNativePattern == nativePattern && editedVariation == nativeVariation && editedPart == nativePart)
        return false;

    setEditedNativePattern(nativePattern);
    setEditedVariation(nativeVariation);
    setEditedPart(nativePart);
    return true;
}

bool QuindrelSeq::editStartPattern()
{
    const int pattern = juce::jlimit(0, nativePatternCount - 1, getStartPattern());
    const int variation = basicVariationMode == variationB ? variationB : variationA;

    if (editedNativePattern == pattern && editedVariation == variation && editedPart == 0)
        return false;

    editedNativePattern = pattern;
    editedVariation = variation;
    editedPart = 0;
    return true;
}

juce::String QuindrelSeq::getPatternName(int index, int type) const
{
    if (type == hostType)
        return juce::isPositiveAndBelow(index, hostPatternCount) ? hostPatterns[(size_t) index].getName() : juce::String();

    return juce::isPositiveAndBelow(index, nativePatternCount) ? nativePatterns[(size_t) index].getName() : juce::String();
}

void QuindrelSeq::setPatternName(int index, const juce::String& name, int type)
{
    if (type == hostType)
    {
        if (juce::isPositiveAndBelow(index, hostPatternCount))
            hostPatterns[(size_t) index].setName(name);
    }
    else if (juce::isPositiveAndBelow(index, nativePatternCount))
    {
        nativePatterns[(size_t) index].setName(name);
    }
}

//==============================================================================
void QuindrelSeq::backupForRandom(Pattern* pattern)
{
    if (pattern != nullptr)
        randomBackup = *pattern;
}

void QuindrelSeq::restoreTrack(Pattern* pattern, int track)
{
    if (pattern != nullptr)
        pattern->copyTrackFrom(randomBackup, track, track);
}

void QuindrelSeq::clearStepIn(Pattern* pattern, int track, int step)
{
    if (pattern != nullptr)
        pattern->setRawStep(track, step, false, false);
}

void QuindrelSeq::setStepIn(Pattern* pattern, int track, int step)
{
    // Plain on even on the accent track, which plays the same.
    if (pattern != nullptr)
        pattern->setRawStep(track, step, true, false);
}

void QuindrelSeq::setAccentedStepIn(Pattern* pattern, int track, int step)
{
    if (pattern != nullptr)
        pattern->setRawStep(track, step, true, true);
}

//==============================================================================
void QuindrelSeq::placeStartPattern()
{
    nativePattern = getStartPattern();
    editStartPattern();
}

void QuindrelSeq::choosePattern(int index)
{
    if (index < basicPatternCount)
        setBasicPattern(index);
    else
        setFillPattern(index);

    if (plugin != nullptr)
        plugin->updatePatternDisplays();
}

void QuindrelSeq::setBasicPattern(int index)
{
    if (!juce::isPositiveAndBelow(index, basicPatternCount))
        return;

    basicPattern = index;
    if (!nativePlaying)
        placeStartPattern();
}

void QuindrelSeq::setFillPattern(int index)
{
    if (index < basicPatternCount || index >= nativePatternCount)
        return;

    fillPattern = index;
    if (!nativePlaying)
        placeStartPattern();
}

void QuindrelSeq::setStartType(int type)
{
    if (type != startWithBasic && type != startWithFillIn)
        return;

    startType = type;
    if (!nativePlaying)
        placeStartPattern();
}

void QuindrelSeq::introOrFillIn()
{
    const bool running = plugin != nullptr ? plugin->nativeClock.running : nativePlaying;
    if (running)
    {
        requestFillIn();
        return;
    }

    toggleStartType();
    if (plugin != nullptr)
        plugin->updatePatternDisplays();
}

void QuindrelSeq::setAutoFill(int passes)
{
    const bool valid = std::find(autoFillByPosition.begin(), autoFillByPosition.end(), passes) != autoFillByPosition.end();
    autoFill = valid ? passes : 0;
}
