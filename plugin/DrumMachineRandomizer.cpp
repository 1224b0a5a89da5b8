// The randomizer: fills the selected tracks of the edited pattern with a
// random sequence that the level knobs thin out at play time, kept as a seed
// so that "Prev" can bring an earlier result back. Message thread; the audio
// thread sees only the mask fields of the sequencer.

#include "plugin/DrumMachine.h"

#include "sequencer/Pattern.h"

namespace
{
constexpr juce::uint32 seedRange = 1000000; // seeds are 1 to 1000000
constexpr float levelStep = 1.0f / Pattern::stepCount;
} // namespace

void DrumMachine::setRandomizer(bool shouldBeOn)
{
    if (randomizerOn == shouldBeOn)
        return;

    auto& seq = *sequencer;
    if (shouldBeOn)
    {
        lengthMode = false;
        tapMode = false;
        seq.resetRandomizer();
        seq.randomPattern = seq.getEditedPattern();
        seq.backupForRandom(seq.randomPattern);
    }
    else
    {
        cancelRandomResult();
        seq.randomPattern = nullptr;
        seq.resetRandomizer();
    }

    randomizerOn = shouldBeOn;
    refreshModeRows();
}

void DrumMachine::newRandomResult()
{
    auto& seq = *sequencer;
    if (seq.seedCurrent != 0)
        seq.seedHistory.push_back(seq.seedCurrent);

    seq.seedCurrent = seq.randomGenerator.uniform(seedRange) + 1;
    drawRandomResult();
}

void DrumMachine::previousRandomResult()
{
    auto& seq = *sequencer;
    if (seq.seedHistory.empty())
        return;

    seq.seedCurrent = seq.seedHistory.back();
    seq.seedHistory.pop_back();
    drawRandomResult();
}

void DrumMachine::drawRandomResult()
{
    auto& seq = *sequencer;
    seq.randomGenerator.seed(seq.seedCurrent);
    randomize();

    // The shown track is one of the result's, the first selected if it must change.
    const bool shownIsRandom = juce::isPositiveAndBelow(selectedTrack, trackCount) && seq.randomTracks[(size_t) selectedTrack] != 0;
    if (seq.randomActive && !shownIsRandom)
    {
        const auto first = std::find(selectedTracks.begin(), selectedTracks.end(), (juce::uint8) 1);
        selectedTrack = first != selectedTracks.end() ? (int) std::distance(selectedTracks.begin(), first) : -1;
    }
    refreshModeRows();
}

void DrumMachine::randomize()
{
    auto& seq = *sequencer;
    Pattern* pattern = seq.randomPattern;
    if (pattern == nullptr)
        return;

    // A track taken out of the selection keeps its thinned steps.
    if (seq.randomActive)
        acceptRandomResult();

    auto& random = seq.randomGenerator;
    for (int t = 0; t < trackCount; ++t)
    {
        seq.randomTracks[(size_t) t] = selectedTracks[(size_t) t];
        if (selectedTracks[(size_t) t] == 0)
            continue;

        // Inserting each step at a uniform place gives a uniform permutation:
        // its rank is the step's level, so a knob adds or removes single hits.
        seq.stepRanks.clear();
        for (juce::uint32 i = 0; i < (juce::uint32) Pattern::stepCount; ++i)
            seq.stepRanks.insert(seq.stepRanks.begin() + (std::ptrdiff_t) random.uniform((juce::uint32) seq.stepRanks.size() + 1), i);

        for (int s = 0; s < Pattern::stepCount; ++s)
        {
            seq.randomLevels[(size_t) t][(size_t) s] = (float) seq.stepRanks[(size_t) s] * levelStep;
            const bool accented = random.uniform(2) != 0;
            // Flam mode draws as usual but writes nothing: this instrument has no flam.
            if (flamMode)
                seq.setFlamStepIn(pattern, t, s);
            else if (accented)
                seq.setAccentedStepIn(pattern, t, s);
            else
                seq.setStepIn(pattern, t, s);
        }
    }
    seq.randomActive = true;
}

void DrumMachine::acceptRandomResult()
{
    auto& seq = *sequencer;
    if (!seq.randomActive)
        return;

    Pattern* pattern = seq.randomPattern;
    for (int t = 0; t < trackCount; ++t)
    {
        if (seq.randomTracks[(size_t) t] == 0)
            continue;
        const float threshold = seq.randomThresholds[(size_t) t];
        for (int s = 0; s < Pattern::stepCount; ++s)
            if (!(threshold > seq.randomLevels[(size_t) t][(size_t) s]))
                seq.clearStepIn(pattern, t, s);
    }
    // The backup stays as it was taken on entry: "Undo" after a later result
    // goes back to before the mode, not to this accepted state.
    seq.resetRandomizer();
}

void DrumMachine::cancelRandomResult()
{
    auto& seq = *sequencer;
    if (!seq.randomActive)
        return;

    for (int t = 0; t < trackCount; ++t)
        if (seq.randomTracks[(size_t) t] != 0)
            seq.restoreTrack(seq.randomPattern, t);
    seq.resetRandomizer();
}
