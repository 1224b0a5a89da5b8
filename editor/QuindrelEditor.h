#pragma once

#include "editor/DrumMachineEditor.h"

class Quindrel;

// Quindrel's own panel: how the state parameters of its sequencer set up the
// other controls (enabled, shown, blinking, the pattern number's reading) and
// which hints they leave on the status bar. Message thread.
class QuindrelEditor : public DrumMachineEditor
{
public:
    static constexpr int hintPriority = 4;
    static constexpr int hintMs = 3000;
    static constexpr int nameBlinkMs = 200;

    explicit QuindrelEditor(Quindrel* plugin);

    void parameterChanged(Parameter& parameter) override;

private:
    // The rows of one track: its level knob or, while the randomizer holds
    // the track, its threshold knob in the same place.
    void showRandomizedTrack(int track, bool randomized);
    void showHint(const juce::String& text, bool timed);
};
