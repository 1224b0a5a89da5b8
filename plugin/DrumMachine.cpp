#include "plugin/DrumMachine.h"

#include "parameters/ParameterIds.h"
#include "parameters/StateParameters.h"

#include <cmath>

namespace
{
// Half a percent rounds away from zero: 0.125 reads "13%". The value is taken
// as the float the host and the panel hold, so that 0.1 of 0.8 is 0.125 too.
juce::String percentText(float normalised)
{
    return juce::String(std::lround((double) normalised * 100.0)) + "%";
}

const char* const sequencerEvents[] = {
    "Toggle Internal Sequencer", "Toggle Internal Sync", "Toggle Host Mode", "Toggle Note Off Mode",
    "Toggle Pattern Write Mode", "Toggle Auto Follow Mode", "Toggle Randomizer", "Toggle Length Mode",
    "Toggle Tap Mode", "Toggle Flam Mode", "Start/Stop", "Start", "Stop", "Tap", "Tap Accented",
    "Shift Left", "Shift Right", "Shift Left All Tracks", "Shift Right All Tracks", "Prev", "Next",
    "Accept", "Undo", "Copy Tracks", "Copy Pattern", "Paste", "Clear", "Clear All Instruments",
    "Load Patterns", "Save Patterns"
};
} // namespace

juce::AudioProcessor::BusesProperties DrumMachine::makeBuses(int outputCount, int outputType, const juce::String& shortName)
{
    // Each output is a bus named after the plug-in, "QD1" to "QD12".
    BusesProperties buses;
    const auto layout = outputType == monoOutputs ? juce::AudioChannelSet::mono() : juce::AudioChannelSet::stereo();
    for (int i = 0; i < outputCount; ++i)
        buses.addBus(false, shortName + juce::String(i + 1), layout, true);

    return buses;
}

DrumMachine::DrumMachine(const PluginPaths& paths, int outputCountToUse, int outputTypeToUse, const juce::String& shortName)
    : BasePluginOldStyle(makeBuses(outputCountToUse, outputTypeToUse, shortName), paths)
    , outputCount(juce::jlimit(1, maxOutputs, outputCountToUse))
    , storedOutputType(outputTypeToUse)
    , outputType(outputTypeToUse)
    , outputShortName(shortName)
{
    for (auto& entry : keyToInstrument)
        entry = -1;
    for (auto& output : instrumentOutput)
        output = 1;
    for (auto& output : storedInstrumentOutput)
        output = 1;

    triggerOutput = outputCount;
}

DrumMachine::~DrumMachine()
{
    // The sequencer plays through the engine, so it goes first.
    sequencer.reset();
    core.reset();
}

//==============================================================================
void DrumMachine::initialise()
{
    addStateParameters(parameterManager);

    for (int i = 0; i < (int) std::size(sequencerEvents); ++i)
        events.add(3000 + i, sequencerEvents[i]);
    for (int i = 0; i < 16; ++i)
    {
        const auto number = juce::String(i + 1).paddedLeft('0', 2);
        events.add(3030 + i, "Press Step " + number);
        events.add(3046 + i, "Press Step " + number + " With Ctrl");
    }
    events.add(3062, "Select Scale 6 SPB");
    events.add(3063, "Select Scale 3 SPB");
    events.add(3064, "Select Scale 8 SPB");
    events.add(3065, "Select Scale 4 SPB");

    core = createCore();
    if (core == nullptr)
        core = std::make_unique<DrumMachineCore>();

    sequencer = createSequencer();
    if (sequencer == nullptr)
        sequencer = std::make_unique<DrumMachineSeq>(this, core.get());

    for (int i = 0; i < numInstruments; ++i)
        setInstrumentOutput(i, 1);
    triggerOutput = getOutputCount();
    storedInstrumentOutput.fill(1);

    selectTrack(0);
    updatePatternNumber();

    BasePluginOldStyle::initialise();

    setInternalSequencer(defaultInternalSequencer);
    internalSync = defaultInternalSync;
    updateInternalSyncState();
    setHostMode(defaultHostMode);
    noteOffMode = defaultNoteOffMode;
    updateNoteOffState();

    // The output type was fixed when the buses were declared; the numbers
    // start from the stored defaults.
    for (int i = 0; i < numInstruments; ++i)
        setInstrumentOutput(i, storedInstrumentOutput[(size_t) i]);

    if (drumMapSource == 0)
        loadDrumMapFromResource(loadResourceText("default." + getDrumMapExtension().substring(1).toUpperCase()));
    else
        loadDrumMapFromFile();

    sequencer->loadAtStart();

    updatePatternDisplays();
    afterInitialise();
}

//==============================================================================
void DrumMachine::parameterChanged(Parameter& parameter)
{
    const int id = parameter.getId();

    if (core != nullptr)
        core->setParameter(id, (float) parameter.getNormalised());

    if (id == 17)
    {
        accentLevel = parameter.getValue();
    }
    else if (id >= ParameterIds::mute && id < ParameterIds::mute + instrumentCount)
    {
        setInstrumentFlag(muted, id - ParameterIds::mute, parameter.getBool());
    }
    else if (id >= ParameterIds::solo && id < ParameterIds::solo + instrumentCount)
    {
        setInstrumentFlag(soloed, id - ParameterIds::solo, parameter.getBool());
    }
    else if (id >= ParameterIds::randThreshold && id < ParameterIds::randThreshold + trackCount)
    {
        if (sequencer != nullptr)
            sequencer->randomThresholds[(size_t) (id - ParameterIds::randThreshold)] = (float) parameter.getNormalised();
        updateStepLights();
    }
    else if (id >= ParameterIds::outputNumber && id < ParameterIds::outputNumber + instrumentCount)
    {
        instrumentOutput[(size_t) (id - ParameterIds::outputNumber)] = parameter.getInt();
    }
    else if (id == ParameterIds::instrumentSelection)
    {
        // As the "Select" events: with a randomizer result only the shown track moves.
        chooseTrack(parameter.getInt());
    }
    else if (id == ParameterIds::instrumentSelectionWithAccentFirst)
    {
        const int value = parameter.getInt();
        chooseTrack(value == 0 ? accentTrack : value - 1);
    }
    else if (sequencer != nullptr && isEditing())
    {
        // A change made from outside (the panel, MIDI) goes into the edited
        // pattern, and the row then shows what the pattern kept. The displays'
        // own refreshes never come here (they only show), and a notification
        // that repeats what the pattern holds, as at start-up, writes nothing:
        // a float row would round the pattern's double.
        const auto differs = [&parameter](double kept)
        { return (float) kept != (float) parameter.getValue(); };

        if (id == ParameterIds::patternName)
        {
            // Names are set from the panel; no other thread reads or writes one.
            if (juce::MessageManager::existsAndIsCurrentThread() && parameter.getText() != sequencer->getEditedName())
            {
                sequencer->setEditedName(parameter.getText());
                parameterManager.showText(ParameterIds::patternName, sequencer->getEditedName());
            }
        }
        else if (id == ParameterIds::patternTempo && internalSync && differs(sequencer->getEditedTempo()))
        {
            sequencer->setEditedTempo(parameter.getValue());
            parameterManager.showValue(ParameterIds::patternTempo, (float) sequencer->getEditedTempo());
        }
        else if (id == ParameterIds::patternShuffle && differs(sequencer->getEditedShuffle()))
        {
            sequencer->setEditedShuffle(parameter.getValue());
            parameterManager.showValue(ParameterIds::patternShuffle, (float) sequencer->getEditedShuffle());
        }
        else if (id == ParameterIds::patternFlam && differs(sequencer->getEditedFlam()))
        {
            sequencer->setEditedFlam(parameter.getValue());
            parameterManager.showValue(ParameterIds::patternFlam, (float) sequencer->getEditedFlam());
        }
    }

    BasePluginOldStyle::parameterChanged(parameter);
}

void DrumMachine::updatePatternSettingsRows()
{
    if (sequencer == nullptr)
        return;

    // The audio thread never copies a name (the panel may be replacing it), and
    // these rows must show the pattern that the panel edits now.
    if (!juce::MessageManager::existsAndIsCurrentThread())
    {
        patternSettingsUpdate.triggerAsyncUpdateFromAnyThread();
        return;
    }

    using namespace ParameterIds;
    const bool intSeq = internalSequencer;
    const bool editing = isEditing();
    parameterManager.showText(patternName, !intSeq ? juce::String() : editing ? sequencer->getEditedName()
                                                                              : sequencer->getNativeName());
    parameterManager.showValue(patternFlam, (float) sequencer->getEditedFlam());
    parameterManager.showValue(patternShuffle, (float) sequencer->getEditedShuffle());
    parameterManager.showValue(patternTempo, (float) (!intSeq ? 0.0 : editing ? sequencer->getEditedTempo()
                                                                              : sequencer->getNativeTempo()));
}

void DrumMachine::setInstrumentFlag(std::atomic<juce::uint32>& flags, int instrument, bool on)
{
    const auto bit = 1u << instrument;
    if (on)
        flags.fetch_or(bit);
    else
        flags.fetch_and(~bit);
    updateEnabled();
}

void DrumMachine::updateEnabled()
{
    // With a solo active, only the soloed instruments sound, mutes or not.
    // Two threads may recompute at once: each stores the whole mask from one
    // reading of the flags, and goes round again if they changed meanwhile,
    // so that the last store always reflects the last change.
    for (;;)
    {
        const auto m = muted.load(), s = soloed.load();
        enabled.store(s != 0 ? s : allInstruments & ~m);
        if (muted.load() == m && soloed.load() == s)
            return;
    }
}

//==============================================================================
juce::String DrumMachine::getParameterDisplayText(int id) const
{
    const auto* parameter = parameterManager.getParameter(id);
    if (parameter == nullptr)
        return {};

    if (id == ParameterIds::patternTempo)
        return juce::String(parameter->getValue());

    if (id == ParameterIds::patternShuffle || id == ParameterIds::patternFlam)
        return percentText((float) parameter->getNormalised());

    if (id <= ParameterIds::lastHostParameter)
        return getHostParameterTextFor(id, (float) parameter->getNormalised());

    if (id > ParameterIds::outputNumber + instrumentCount - 1)
        return {};

    return parameter->getText();
}

juce::String DrumMachine::getHostParameterTextFor(int index, float normalisedValue) const
{
    if (index < ParameterIds::mute)
        return juce::String::formatted("%.3f", (double) normalisedValue);

    if (index < ParameterIds::randThreshold)
        return normalisedValue >= 0.5f ? "On" : "Off";

    if (index <= ParameterIds::lastHostParameter)
        return percentText(normalisedValue);

    return BasePluginOldStyle::getHostParameterTextFor(index, normalisedValue);
}

bool DrumMachine::isHostParameterToggle(int index) const
{
    return index >= ParameterIds::mute && index < ParameterIds::randThreshold;
}
