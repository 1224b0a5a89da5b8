#include "sequencer/DrumMachineSeq.h"

#include "plugin/DrumMachine.h"
#include "sequencer/Pattern.h"

DrumMachineSeq::DrumMachineSeq(DrumMachine* owner, DrumMachineCore* engine)
    : plugin(owner)
    , core(engine)
{
    randomThresholds.fill(0.2f);
    for (auto& levels : randomLevels)
        levels.fill(-1.0f);
}

int DrumMachineSeq::nextStepValue(int value, bool) const
{
    // off -> on -> accented -> off; anything carrying the accent bit goes off.
    if ((value & 2) != 0)
        return getOffValue();
    return value == getOffValue() ? getOnValue() : getAccentValue();
}

void DrumMachineSeq::toggleStep(int track, int step, bool flam)
{
    if (!juce::isPositiveAndBelow(track, numTracks))
        return;

    const int value = getStep(track, step);
    if (track == accentTrack)
        setStep(track, step, value != getOffValue() ? getOffValue() : getAccentValue());
    else
        setStep(track, step, nextStepValue(value, flam));
}

bool DrumMachineSeq::isMaskedByRandomizer(const Pattern* pattern, int track, int step) const
{
    return pattern != nullptr && pattern == randomPattern
        && randomTracks[(size_t) track] != 0
        && !(randomThresholds[(size_t) track] > randomLevels[(size_t) track][(size_t) step]);
}

int DrumMachineSeq::getRandomizedStep(int track, int step) const
{
    if (randomPattern == nullptr || !juce::isPositiveAndBelow(track, numTracks) || !juce::isPositiveAndBelow(step, Pattern::stepCount))
        return 0;

    return isMaskedByRandomizer(randomPattern, track, step) ? 0 : randomPattern->getStep(track, step);
}

void DrumMachineSeq::applyTap(bool play, bool write, bool host)
{
    bool any = false;
    const int type = host ? hostType : nativeType;

    for (int track = 0; track < numTracks; ++track)
    {
        const int value = tapValues[(size_t) track];
        if (value == 0)
            continue;

        any = true;
        if (write)
            recordStep(track, value, type);
        if (play && plugin != nullptr)
            plugin->triggerInstrument(track, plugin->getBaseVelocity() + (value == getAccentValue() ? plugin->getStrongVelocity() : 0.0f));
    }

    if (any && plugin != nullptr)
        plugin->updateStepLights();

    tapValues.fill(0);
}
