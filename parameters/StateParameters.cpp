#include "parameters/StateParameters.h"

#include "parameters/ParameterIds.h"
#include "parameters/ParameterManager.h"
#include "parameters/ParameterTypes.h"

#include <iterator>

namespace
{
// Lamps read "on" and "off", like the table's "state" rows.
void addLamp(ParameterManager& manager, int id, const juce::String& name)
{
    manager.addParameter(new BoolParameter(id, name, false, BoolParameter::onOff));
}

juce::String stepName(int step, const char* suffix)
{
    return "Step " + juce::String(step + 1).paddedLeft('0', 2) + " " + suffix;
}
} // namespace

void addStateParameters(ParameterManager& manager)
{
    using namespace ParameterIds;

    static constexpr const char* lamps[] = {
        "Internal Sequencer State", "Internal Sync State", "Host Mode State", "Note Off State",
        "Play State", "Write Mode State", "Write Mode Activity", "Auto Follow State",
        "Randomizer State", "Randomizer Active And Filled", "Randomizer Active But Not Filled",
        "Length Mode State", "Tap Mode State", "Flam Mode State", "Native Mode Ready State"
    };

    for (int i = 0; i < (int) std::size(lamps); ++i)
        addLamp(manager, internalSequencerState + i, lamps[i]);

    manager.addParameter(new IntParameter(instrumentSelection, "Instrument Selection", 0, 17, 0));
    // Track 0 with the accent first is 1, so the pair starts out agreeing.
    manager.addParameter(new IntParameter(instrumentSelectionWithAccentFirst, "Instrument Selection With Accent First", 0, 17, 1));
    addLamp(manager, clipboardTracksState, "Clipboard Tracks State");
    addLamp(manager, clipboardPatternState, "Clipboard Pattern State");
    addLamp(manager, patternScale6SpbState, "Pattern Scale 6 SPB State");
    addLamp(manager, patternScale3SpbState, "Pattern Scale 3 SPB State");
    addLamp(manager, patternScale8SpbState, "Pattern Scale 8 SPB State");
    addLamp(manager, patternScale4SpbState, "Pattern Scale 4 SPB State");
    manager.addParameter(new IntParameter(patternNumber, "Pattern Number", 0, 127, 0));
    manager.addParameter(new StringParameter(patternName, "Pattern Name", {}));
    addLamp(manager, patternNameEditionState, "Pattern Name Edition State");
    addLamp(manager, patternTempoState, "Pattern Tempo State");
    manager.addParameter(new FloatParameter(patternTempo, "Pattern Tempo", 30.0f, 300.0f, 120.0f));
    manager.addParameter(new FloatParameter(patternShuffle, "Pattern Shuffle", 0.0f, 0.8f, 0.0f));
    manager.addParameter(new FloatParameter(patternFlam, "Pattern Flam", 0.0f, 0.383f, 0.121f));

    for (int step = 0; step < stepCount; ++step)
        addLamp(manager, stepLengthState + step, stepName(step, "Length State"));

    for (int step = 0; step < stepCount; ++step)
        manager.addParameter(new FloatParameter(stepState + step, stepName(step, "State"), 0.0f, 1.0f, 0.0f));

    for (int step = 0; step < stepCount; ++step)
        addLamp(manager, stepBlinking + step, stepName(step, "Blinking"));
}

void addPresetParameters(ParameterManager& manager)
{
    manager.addParameter(new IntParameter(ParameterIds::currentPresetNumber, "Current Preset Number", 0, 127, 0));
    manager.addParameter(new StringParameter(ParameterIds::currentPresetName, "Current Preset Name", {}));
}
