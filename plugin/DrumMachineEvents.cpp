// The commands of the panel's buttons, by uid: mute and solo, track selection,
// the sequencer's modes, start and stop, taps, the step buttons and the edit
// panel's commands while editing. Message thread. What needs the audio thread's timing goes through
// runRequest and the sequencer's tap fields.

#include "plugin/DrumMachine.h"

#include "parameters/ParameterIds.h"

namespace Uid
{
constexpr int toggleMute = 0, inverseMute = 17, toggleSolo = 34, inverseSolo = 51;
constexpr int select = 68, toggleSelection = 86;
constexpr int toggleInternalSequencer = 3000, toggleInternalSync = 3001, toggleHostMode = 3002,
              toggleNoteOffMode = 3003, togglePatternWriteMode = 3004, toggleAutoFollowMode = 3005,
              toggleRandomizer = 3006, toggleLengthMode = 3007, toggleTapMode = 3008, toggleFlamMode = 3009;
constexpr int startStop = 3010, start = 3011, stop = 3012, tap = 3013, tapAccented = 3014;
constexpr int shiftLeft = 3015, shiftRight = 3016, shiftLeftAll = 3017, shiftRightAll = 3018;
constexpr int previous = 3019, next = 3020, accept = 3021, undo = 3022;
constexpr int copyTracks = 3023, copyPattern = 3024, paste = 3025, clear = 3026, clearAll = 3027;
constexpr int pressStep = 3030;
constexpr int selectScale6 = 3062, selectScale3 = 3063, selectScale8 = 3064, selectScale4 = 3065;
} // namespace Uid

void DrumMachine::setMuteOrSolo(int firstId, int instrument, bool inverse)
{
    const bool on = parameterManager.getBool(firstId + instrument);

    if (!inverse)
    {
        parameterManager.setBool(firstId + instrument, !on);
        return;
    }

    // This one alone on, or this one alone off; the others are set first.
    for (int i = 0; i < instrumentCount; ++i)
        if (i != instrument)
            parameterManager.setBool(firstId + i, on);
    parameterManager.setBool(firstId + instrument, !on);
}

void DrumMachine::handleEvent(int uid)
{
    const bool intSeq = internalSequencer;
    const bool editing = isEditing();
    // The randomizer counts only while editing; it blocks the commands that
    // would change the pattern under it.
    const bool random = editing && randomizerOn;
    const bool randomFilled = random && isRandomFilled();
    const bool clipboardFull = trackClipboardFull || patternClipboardFull;

    if (uid >= Uid::toggleMute && uid < Uid::toggleMute + instrumentCount)
        setMuteOrSolo(ParameterIds::mute, uid - Uid::toggleMute, false);
    else if (uid >= Uid::inverseMute && uid < Uid::inverseMute + instrumentCount)
        setMuteOrSolo(ParameterIds::mute, uid - Uid::inverseMute, true);
    else if (uid >= Uid::toggleSolo && uid < Uid::toggleSolo + instrumentCount)
        setMuteOrSolo(ParameterIds::solo, uid - Uid::toggleSolo, false);
    else if (uid >= Uid::inverseSolo && uid < Uid::inverseSolo + instrumentCount)
        setMuteOrSolo(ParameterIds::solo, uid - Uid::inverseSolo, true);
    else if (uid >= Uid::select && uid < Uid::select + trackCount)
    {
        if (editing)
            chooseTrack(uid - Uid::select);
    }
    else if (uid >= Uid::toggleSelection && uid < Uid::toggleSelection + trackCount)
    {
        if (editing)
            toggleTrackSelection(uid - Uid::toggleSelection);
    }
    else if (uid == Uid::toggleInternalSequencer)
        setInternalSequencer(!internalSequencer);
    else if (uid == Uid::toggleInternalSync && intSeq)
    {
        internalSync = !internalSync;
        updateInternalSyncState();
    }
    else if (uid == Uid::toggleHostMode && intSeq)
        setHostMode(!hostMode);
    else if (uid == Uid::toggleNoteOffMode && intSeq)
    {
        noteOffMode = !noteOffMode;
        updateNoteOffState();
    }
    else if (uid == Uid::togglePatternWriteMode && intSeq && !hostMode)
        setWriteMode(!writeMode);
    else if (uid == Uid::toggleAutoFollowMode && editing && !lengthMode && !tapMode)
    {
        autoFollow = !autoFollow;
        updateAutoFollowState();
    }
    else if (uid == Uid::toggleRandomizer && editing)
        setRandomizer(!randomizerOn);
    else if (uid == Uid::toggleLengthMode && editing)
    {
        if (!lengthMode)
        {
            setRandomizer(false);
            tapMode = false;
        }
        lengthMode = !lengthMode;
        updateLengthModeState();
    }
    else if (uid == Uid::toggleTapMode && editing)
    {
        if (!tapMode)
        {
            lengthMode = false;
            setRandomizer(false);
        }
        tapMode = !tapMode;
        updateLengthModeState();
    }
    else if (uid == Uid::toggleFlamMode && editing && !randomFilled)
    {
        flamMode = !flamMode;
        refreshModeRows();
    }
    else if (uid == Uid::startStop && intSeq)
        runRequest = runState == 1 ? 2 : 1;
    else if (uid == Uid::start && intSeq)
        runRequest = 1;
    else if (uid == Uid::stop && intSeq)
        runRequest = 2;
    else if ((uid == Uid::tap || uid == Uid::tapAccented) && editing && !randomizerOn)
        requestTap(uid == Uid::tapAccented);
    else if (uid >= Uid::shiftLeft && uid <= Uid::shiftRightAll && editing && !random)
        shiftTracks(uid == Uid::shiftLeft || uid == Uid::shiftLeftAll, uid >= Uid::shiftLeftAll);
    else if ((uid == Uid::previous || uid == Uid::next) && random)
    {
        if (uid == Uid::next)
            newRandomResult();
        else
            previousRandomResult();
    }
    else if ((uid == Uid::previous || uid == Uid::next) && editing)
    {
        // While the edited pattern follows what plays, it cannot be moved by hand.
        if (!lengthMode && (autoFollow || tapMode))
            return;
        if (uid == Uid::next)
            sequencer->editNextPattern();
        else
            sequencer->editPreviousPattern();
        updatePatternDisplays();
    }
    else if (uid == Uid::accept && randomFilled)
    {
        acceptRandomResult();
        refreshModeRows();
    }
    else if (uid == Uid::undo && randomFilled)
    {
        cancelRandomResult();
        refreshModeRows();
    }
    else if (uid == Uid::undo && editing && clipboardFull)
        emptyClipboard();
    else if (uid == Uid::copyTracks && editing && !randomizerOn)
        copyTracks();
    else if (uid == Uid::copyPattern && editing && !randomizerOn)
        copyPattern();
    else if (uid == Uid::paste && clipboardFull && editing && !randomizerOn)
        paste();
    else if (uid == Uid::clear && editing && !randomizerOn && !lengthMode)
        clearTracksOrClipboard();
    else if (uid == Uid::clearAll && editing && !lengthMode)
    {
        sequencer->clearPattern();
        updateStepLights();
    }
    else if (uid >= Uid::pressStep && uid < Uid::pressStep + 16 && intSeq && editing)
        pressStepWhileEditing(uid - Uid::pressStep);
    else if (uid >= Uid::selectScale6 && uid <= Uid::selectScale4 && editing)
    {
        static constexpr int scales[] = { 6, 3, 8, 4 };
        sequencer->setEditedScale(scales[uid - Uid::selectScale6]);
        updateScaleRows();
    }
    else
        BasePluginOldStyle::handleEvent(uid);
}

//==============================================================================
void DrumMachine::chooseTrack(int track)
{
    if (!juce::isPositiveAndBelow(track, trackCount))
        return;

    if (hasRandomResult() && sequencer->randomTracks[(size_t) track] != 0)
    {
        selectedTrack = track;
        updateTrackRows();
        updateStepLights();
        return;
    }
    selectTrack(track);
}

void DrumMachine::toggleTrackSelection(int track)
{
    if (!juce::isPositiveAndBelow(track, trackCount))
        return;

    if (hasRandomResult() && sequencer->randomTracks[(size_t) track] != 0)
    {
        selectedTrack = track;
    }
    else
    {
        const auto count = std::count(selectedTracks.begin(), selectedTracks.end(), (juce::uint8) 1);
        // The last selected track stays selected.
        if (selectedTracks[(size_t) track] != 0 && count <= 1)
            return;
        selectedTracks[(size_t) track] = selectedTracks[(size_t) track] != 0 ? 0 : 1;
    }
    updateTrackRows();
    updateStepLights();
}

void DrumMachine::shiftTracks(bool left, bool allTracks)
{
    constexpr int oneStep = 1;
    if (allTracks)
    {
        left ? sequencer->shiftTrackLeft(-1, oneStep) : sequencer->shiftTrackRight(-1, oneStep);
    }
    else
    {
        for (int t = 0; t < trackCount; ++t)
            if (selectedTracks[(size_t) t] != 0)
                left ? sequencer->shiftTrackLeft(t, oneStep) : sequencer->shiftTrackRight(t, oneStep);
    }
    updateStepLights();
}

void DrumMachine::copyTracks()
{
    patternClipboardFull = false;
    clipboardTrackCount = 0;
    for (int t = 0; t < trackCount; ++t)
    {
        clipboardTracks[(size_t) t] = selectedTracks[(size_t) t];
        if (selectedTracks[(size_t) t] == 0)
            continue;
        sequencer->copyTrack(t);
        ++clipboardTrackCount;
    }
    trackClipboardFull = clipboardTrackCount > 0;
    updateClipboardState();
}

void DrumMachine::copyPattern()
{
    sequencer->copyPattern();
    patternClipboardFull = true;
    trackClipboardFull = false;
    updateClipboardState();
}

void DrumMachine::paste()
{
    if (patternClipboardFull)
    {
        sequencer->pastePattern();
        updatePatternDisplays();
        return;
    }
    if (!trackClipboardFull)
        return;

    // One copied track goes onto every selected track; several go each onto itself.
    if (clipboardTrackCount == 1)
    {
        const auto from = (int) std::distance(clipboardTracks.begin(), std::find(clipboardTracks.begin(), clipboardTracks.end(), (juce::uint8) 1));
        for (int t = 0; t < trackCount; ++t)
            if (selectedTracks[(size_t) t] != 0)
                sequencer->pasteTrack(from, t);
    }
    else
    {
        for (int t = 0; t < trackCount; ++t)
            if (clipboardTracks[(size_t) t] != 0)
                sequencer->pasteTrack(t, t);
    }
    updateStepLights();
}

void DrumMachine::clearTracksOrClipboard()
{
    if (trackClipboardFull || patternClipboardFull)
    {
        emptyClipboard();
        return;
    }
    for (int t = 0; t < trackCount; ++t)
        if (selectedTracks[(size_t) t] != 0)
            sequencer->clearTrack(t);
    updateStepLights();
}

void DrumMachine::emptyClipboard()
{
    trackClipboardFull = false;
    patternClipboardFull = false;
    updateClipboardState();
}

void DrumMachine::requestTap(bool accented)
{
    const int value = flamMode ? sequencer->getFlamValue() : accented ? sequencer->getAccentValue()
                                                                      : sequencer->getOnValue();

    for (int t = 0; t < trackCount; ++t)
        sequencer->tapValues[(size_t) t] = selectedTracks[(size_t) t] != 0 ? value : 0;

    // Written after the values: the audio thread reads the flag first.
    sequencer->tapRequested = true;
}

void DrumMachine::pressStepWhileEditing(int step)
{
    if (lengthMode)
    {
        sequencer->setEditedLength(step + 1);
        updatePatternDisplays();
        return;
    }

    // A press beyond the length does nothing; the step keeps its content.
    if (step >= sequencer->getEditedLength())
        return;

    std::vector<int> tracks;
    for (int t = 0; t < trackCount; ++t)
        if (selectedTracks[(size_t) t] != 0)
            tracks.push_back(t);

    if (tracks.size() <= 1)
    {
        sequencer->toggleStep(tracks.empty() ? selectedTrack.load() : tracks.front(), step, flamMode);
    }
    else
    {
        // A mixed step first becomes plain on everywhere.
        int value = sequencer->getStep(tracks.front(), step);
        for (const int t : tracks)
            if (sequencer->getStep(t, step) != value)
                value = sequencer->getOffValue();

        const int next = sequencer->nextStepValue(value, flamMode);
        for (const int t : tracks)
            sequencer->setStep(t, step, next);
    }
    updateStepLights();
}
