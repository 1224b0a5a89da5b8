#include "editor/QuindrelEditor.h"

#include "editor/GFXAnimation.h"
#include "editor/GFXKnob.h"
#include "editor/GFXMultiStateButton.h"
#include "editor/NumericDisplay.h"
#include "editor/PatternNumberDisplay.h"
#include "parameters/ParameterIds.h"
#include "plugin/Quindrel.h"

namespace
{
const char* const randomizerFilledHint = "Tune the amount of randomised tracks with Level knobs. You may random once again with Prev/Next or Accept/Undo the result.";
const char* const randomizerEmptyHint = "Choose tracks to be randomised. Then you can random a sequence using Prev/Next buttons.";
const char* const lengthHint = "Set pattern length using step buttons.";
const char* const lengthWithClearHint = "Set pattern length using step buttons (or clear).";

void enable(juce::Component* component, bool on)
{
    if (component != nullptr)
        component->setEnabled(on);
}

void blink(BlinkingComponent* control, bool on, int intervalMs = 0)
{
    if (control != nullptr)
        control->setBlinking(on, intervalMs);
}
} // namespace

QuindrelEditor::QuindrelEditor(Quindrel* pluginToUse)
    : DrumMachineEditor(pluginToUse)
{
}

void QuindrelEditor::showHint(const juce::String& text, bool timed)
{
    if (timed)
        getStatusBar()->setTimedMessage(text, hintPriority, hintMs);
    else
        getStatusBar()->setMessage(text, hintPriority);
}

void QuindrelEditor::showRandomizedTrack(int track, bool randomized)
{
    if (auto* knob = levelKnobs[(size_t) track])
        knob->setVisible(!randomized);
    if (auto* knob = randThresholdKnobs[(size_t) track])
        knob->setVisible(randomized);
    blink(levelModeLeds[(size_t) track], randomized);
}

void QuindrelEditor::parameterChanged(Parameter& parameter)
{
    using namespace ParameterIds;
    const int id = parameter.getId();
    const bool on = parameter.getBool();

    if (id >= randState && id < randState + trackCount)
    {
        showRandomizedTrack(id - randState, on);
        return;
    }
    if (id >= randSelection && id < randSelection + trackCount)
    {
        blink(selectButtons[(size_t) (id - randSelection)], on);
        return;
    }
    if (id >= stepBlinking && id < stepBlinking + stepCount)
    {
        blink(stepButtons[(size_t) (id - stepBlinking)], on);
        return;
    }

    switch (id)
    {
        case internalSequencerState:
            enable(patternNumberDisplay, on);
            enable(patternNameDisplay, on);
            break;
        case internalSyncState:
            enable(tempoDisplay, on);
            break;
        case hostModeState:
            if (patternNumberDisplay != nullptr)
                patternNumberDisplay->setMode(on ? PatternNumberDisplay::noteMode : PatternNumberDisplay::numericMode);
            break;
        case writeModeState:
            enable(shuffleKnob, on);
            break;
        case randomizerState:
            blink(randModeButton, on);
            if (!on)
                getStatusBar()->clear(hintPriority);
            break;
        case randomizerActiveAndFilled:
            if (on)
                showHint(randomizerFilledHint, false);
            break;
        case randomizerActiveButNotFilled:
            if (on)
                showHint(randomizerEmptyHint, false);
            break;
        case lengthModeState:
            blink(lengthButton, on);
            if (on)
                showHint(lengthHint, true);
            break;
        case nativeModeReadyState:
            blink(patternNameDisplay, on, nameBlinkMs);
            break;
        case clipboardTracksState:
            if (on)
                showHint("Tracks have been copied to clipboard.", true);
            break;
        case clipboardPatternState:
            if (on)
                showHint("Pattern has been copied to clipboard.", true);
            break;
        case patternNameEditionState:
            if (patternNameDisplay != nullptr)
                patternNameDisplay->setEditable(on);
            break;
        case patternTempoState:
            if (tempoDisplay != nullptr)
                tempoDisplay->setControlEnabled(on);
            enable(tempoKnob, on);
            break;
        case lengthModeStateWithoutClear:
            if (on)
                showHint(lengthHint, true);
            break;
        case lengthModeStateWithClear:
            if (on)
                showHint(lengthWithClearHint, true);
            break;
        default:
            DrumMachineEditor::parameterChanged(parameter);
            break;
    }
}
