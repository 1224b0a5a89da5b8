// The state parameters through which the front panel sees the sequencer's
// modes and the shown pattern. Each row is recomputed from the flags; a row
// whose value did not change notifies nobody.

#include "plugin/DrumMachine.h"

#include "parameters/ParameterIds.h"

using namespace ParameterIds;

bool DrumMachine::isRandomFilled() const
{
    return sequencer != nullptr && sequencer->randomActive;
}

void DrumMachine::refreshModeRows()
{
    const bool intSeq = internalSequencer;
    const bool editing = isEditing();
    const bool random = editing && randomizerOn;
    const bool filled = random && isRandomFilled();

    parameterManager.setBool(internalSequencerState, intSeq);
    parameterManager.setBool(internalSyncState, intSeq && internalSync);
    parameterManager.setBool(hostModeState, intSeq && hostMode);
    parameterManager.setBool(noteOffState, intSeq && noteOffMode);
    parameterManager.setBool(autoFollowState, editing && !lengthMode && (autoFollow || tapMode));
    parameterManager.setBool(randomizerState, random);
    parameterManager.setBool(randomizerActiveAndFilled, filled);
    parameterManager.setBool(randomizerActiveButNotFilled, random && !filled);
    parameterManager.setBool(lengthModeState, editing && lengthMode);
    parameterManager.setBool(tapModeState, editing && tapMode);
    parameterManager.setBool(flamModeState, editing && flamMode);
    updateClipboardState();
    parameterManager.setBool(patternNameEditionState, editing);
    parameterManager.setBool(patternTempoState, editing && internalSync);

    updateTrackRows();
    updatePatternDisplays();
    parameterManager.setBool(writeModeState, editing);
    parameterManager.setBool(writeModeActivity, intSeq && !hostMode);
}

void DrumMachine::updateClipboardState()
{
    parameterManager.setBool(clipboardTracksState, trackClipboardFull);
    parameterManager.setBool(clipboardPatternState, patternClipboardFull);
}

// Switching the internal sequencer on enters editing as write mode does, so
// the edited pattern catches up the same way.
void DrumMachine::updateInternalSequencerState() { updateWriteModeState(); }
void DrumMachine::updateInternalSyncState() { refreshModeRows(); }
void DrumMachine::updateNoteOffState() { refreshModeRows(); }
void DrumMachine::updateAutoFollowState() { refreshModeRows(); }
void DrumMachine::updateLengthModeState() { refreshModeRows(); }

void DrumMachine::updateHostModeState()
{
    updateWriteModeState();
}

void DrumMachine::updateWriteModeState()
{
    // The edited pattern first catches up with what plays.
    if (isEditing())
    {
        bool changed = false;
        if (hostMode)
            changed = sequencer->followHost();
        else if (nativeClock.running)
            changed = sequencer->followNative();
        else
            changed = sequencer->editStartPattern();

        if (changed)
            updatePatternDisplays();
    }

    refreshModeRows();
}

void DrumMachine::updateTrackRows()
{
    const bool editing = isEditing();
    const bool filled = editing && randomizerOn && isRandomFilled();

    for (int t = 0; t < trackCount; ++t)
    {
        parameterManager.setBool(randState + t, filled && sequencer->randomTracks[(size_t) t] != 0);
        parameterManager.setBool(selection + t, editing && !tapMode && selectedTracks[(size_t) t] != 0);
        parameterManager.setBool(randSelection + t, filled && selectedTrack == t);
    }
}

void DrumMachine::updateStepLengthLamps()
{
    int length = 0;
    if (internalSequencer)
        length = isEditing() ? sequencer->getEditedLength() : sequencer->getNativeLength();

    for (int step = 0; step < stepCount; ++step)
        parameterManager.setBool(stepLengthState + step, step < length);
}

void DrumMachine::updatePatternNumber()
{
    int number = 0;
    if (internalSequencer)
    {
        if (hostMode)
            number = sequencer->getEditedIndex() + 12;
        else if (writeMode)
            number = sequencer->getEditedIndex() + 1;
        else
            number = sequencer->getNativePattern() + 1;
    }
    parameterManager.setInt(patternNumber, number);
}

void DrumMachine::updateScaleRows()
{
    int scale = 0;
    if (internalSequencer)
        scale = isEditing() ? sequencer->getEditedScale() : sequencer->getNativeScale();

    parameterManager.setBool(patternScale6SpbState, scale == 6);
    parameterManager.setBool(patternScale3SpbState, scale == 3);
    parameterManager.setBool(patternScale8SpbState, scale == 8);
    parameterManager.setBool(patternScale4SpbState, scale == 4);
}

void DrumMachine::updateStepLights()
{
    if (sequencer == nullptr)
        return;

    const bool editing = isEditing();
    std::array<float, stepCount> lights{};

    if (editing && lengthMode)
    {
        lights.fill(1.0f);
    }
    else if (editing && randomizerOn && isRandomFilled())
    {
        if (juce::isPositiveAndBelow(selectedTrack, trackCount))
        {
            const int length = sequencer->getEditedLength();
            for (int step = 0; step < length && step < stepCount; ++step)
            {
                const int value = sequencer->getRandomizedStep(selectedTrack, step);
                lights[(size_t) step] = (value & 2) != 0 ? 1.0f : (value & 1) != 0 ? 0.5f
                                                                                   : 0.0f;
            }
        }
    }
    else if (editing)
    {
        const int length = sequencer->getEditedLength();
        for (int step = 0; step < length && step < stepCount; ++step)
        {
            int common = -1;
            bool same = true;
            for (int t = 0; t < trackCount && same; ++t)
            {
                if (selectedTracks[(size_t) t] == 0)
                    continue;
                const int code = sequencer->getStep(t, step) & 3;
                if (common < 0)
                    common = code;
                else if (common != code)
                    same = false;
            }

            if (same && common >= 0)
                lights[(size_t) step] = (common & 2) != 0 ? 1.0f : (common & 1) != 0 ? 0.5f
                                                                                     : 0.0f;
        }
    }
    else if (internalSequencer)
    {
        // The row of steps chooses patterns in native play mode.
        for (int step = 0; step < stepCount; ++step)
            if (sequencer->isPatternChosen(step))
                lights[(size_t) step] = 1.0f;
    }

    for (int step = 0; step < stepCount; ++step)
        parameterManager.setValue(stepState + step, lights[(size_t) step]);

    updateStepBlinking();
}

void DrumMachine::updateStepBlinking()
{
    const bool editing = isEditing();

    for (int step = 0; step < stepCount; ++step)
    {
        bool blink = false;
        if (!internalSequencer)
            blink = false;
        else if (editing && lengthMode)
            blink = true;
        else if (!writeMode && !hostMode)
            blink = sequencer->isPatternLit(step);

        parameterManager.setBool(stepBlinking + step, blink);
    }
}

void DrumMachine::updatePatternDisplays()
{
    if (sequencer == nullptr)
        return;

    updateStepLights();
    updateStepLengthLamps();
    updatePatternNumber();
    updatePatternSettingsRows();
    updateScaleRows();
    updateNativeModeReadyState();
}

void DrumMachine::updateNativeModeReadyState()
{
    parameterManager.setBool(nativeModeReadyState, internalSequencer && !writeMode && !hostMode && !nativeClock.running);
}

int DrumMachine::getDisplayStep() const
{
    // Length mode lights the steps as a ruler; a position over it would lie.
    if (sequencer == nullptr || !internalSequencer || (isEditing() && lengthMode))
        return -1;

    if (hostMode)
        return hostClock.running && sequencer->isEditedHostPlaying() ? sequencer->getHostStep() : -1;

    if (!nativeClock.running || (writeMode && !sequencer->isEditedNativePlaying()))
        return -1;
    return sequencer->getNativeStep();
}

//==============================================================================
void DrumMachine::setInternalSequencer(bool shouldBeOn)
{
    if (internalSequencer.exchange(shouldBeOn) != shouldBeOn)
        noteOffsRequested = true;

    updateInternalSequencerState();
}

void DrumMachine::setHostMode(bool shouldBeOn)
{
    if (hostMode.exchange(shouldBeOn) != shouldBeOn && patternClipboardFull)
    {
        // A host pattern is never pasted onto a native one.
        patternClipboardFull = false;
        trackClipboardFull = false;
    }

    updateHostModeState();
}

void DrumMachine::setWriteMode(bool shouldBeOn)
{
    writeMode = shouldBeOn;
    updateWriteModeState();
}

void DrumMachine::selectTrack(int track)
{
    if (!juce::isPositiveAndBelow(track, trackCount))
        return;

    selectedTracks.fill(0);
    selectedTracks[(size_t) track] = 1;
    parameterManager.setInt(instrumentSelection, track);
    parameterManager.setInt(instrumentSelectionWithAccentFirst, track == accentTrack ? 0 : track + 1);
    updateTrackRows();
    updateStepLights();
}
