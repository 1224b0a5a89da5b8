#pragma once

#include "parameters/InstrumentNames.h"
#include "parameters/RelaxedAtomic.h"

#include <juce_core/juce_core.h>

#include <array>
#include <cstdint>

// The sequencer's tracks: 0 to 16 trigger the instruments in instrument order,
// 17 (AC) marks a whole step as accented. The short codes are also the XML tags
// of the tracks in pattern files.
namespace Tracks
{
constexpr int count = trackCount;
constexpr int accent = accentTrack;

// The track of a code such as "SD", or -1.
inline int indexOf(const juce::String& code)
{
    return indexOfShortCode(code.toStdString());
}
} // namespace Tracks

// Step notation of pattern files: "." off, "o" on, "O" accented.
namespace StepNotation
{
juce::juce_wchar toCharacter(int value);
int fromCharacter(juce::juce_wchar character);
} // namespace StepNotation

// One host pattern, or one part of a native pattern: 18 tracks of 16 steps
// and the settings that go with them. Every setter clamps to the valid range
// and none fails. Written on the message thread and read by the audio thread
// without a lock: each step and each setting is one relaxed atomic word, so a
// reader sees it whole; reading a step is one indexed load and never
// allocates. The name is for the message thread only.
//
// A plain assignment copies everything. Pasting uses `copyFrom`, which keeps
// the target's tempo and `canBeEmpty`.
class Pattern
{
public:
    static constexpr int stepCount = 16;
    static constexpr double minTempo = 30.0;
    static constexpr double maxTempo = 300.0;
    static constexpr double maxShuffle = 0.8;

    Pattern() = default;

    // Steps; safe on the audio thread (playing reads them, a recorded tap
    // writes one). Out-of-range tracks or steps are ignored and read as 0. On
    // the accent track a value with bit 0 set is stored with bit 1 set too.
    int getStep(int track, int step) const
    {
        return isValid(track, step) ? steps[(size_t) track][(size_t) step].load() : 0;
    }
    void setStep(int track, int step, int value);

    // Writes both bytes as given, with no accent rule: the randomizer's own
    // writes may leave the accent track plain on.
    void setRawStep(int track, int step, bool on, bool accent);

    // Copies the 16 steps of a track, with the accent rule on the target.
    void copyTrackFrom(const Pattern& source, int sourceTrack, int targetTrack);
    void clearTrack(int track);
    void clearSteps();
    // Rotates a track by one step inside `length`, to the left (the first
    // step re-enters at the end) or to the right; the steps beyond `length`
    // stay where they are, and both bytes of each step move unchanged.
    void rotateTrack(int track, bool left);

    // The track in step notation, exactly `length` characters.
    juce::String getTrackString(int track) const;
    // Reads up to the first 16 characters into the first steps; steps beyond
    // the text are left as they are.
    void setTrackString(int track, const juce::String& text);

    const juce::String& getName() const { return name; }
    void setName(const juce::String& newName) { name = newName; }

    int getLength() const { return length; }
    void setLength(int newLength);

    int getScale() const { return scale; }
    void setScale(int newScale) { scale = validScale(newScale); }

    double getShuffle() const { return shuffle; }
    void setShuffle(double newShuffle) { shuffle = clampShuffle(newShuffle); }

    double getTempo() const { return tempo; }
    void setTempo(double newTempo) { tempo = clampTempo(newTempo); }

    // Only the second part of a variation may have length 0: no part at all.
    bool getCanBeEmpty() const { return canBeEmpty; }
    void setCanBeEmpty(bool shouldBeAllowed);

    // Copies length (clamped by this pattern's own rule), name, scale,
    // shuffle and the steps. Tempo and canBeEmpty stay.
    void copyFrom(const Pattern& source);
    // What a part of a native pattern takes in a copy: length, scale, steps.
    void copyPartFrom(const Pattern& source);

    static int validScale(int value);
    static double clampShuffle(double value);
    static double clampTempo(double value);

private:
    static bool isValid(int track, int step)
    {
        return (unsigned) track < (unsigned) Tracks::count && (unsigned) step < (unsigned) stepCount;
    }

    // A step's value in one byte: (accent ? 2 : 0) | (on ? 1 : 0); 0 off, 1 on,
    // 3 on and accented, 2 behaves as off.
    using Step = RelaxedAtomic<uint8_t>;

    std::array<std::array<Step, stepCount>, Tracks::count> steps{};
    juce::String name{ "Empty" };
    RelaxedAtomic<int> length{ stepCount };
    RelaxedAtomic<double> shuffle{ 0.0 };
    RelaxedAtomic<double> tempo{ 120.0 };
    RelaxedAtomic<bool> canBeEmpty{ false };
    RelaxedAtomic<int> scale{ 4 };
};

// One variation of a native pattern: two parts, with shuffle and tempo for
// both. The second part starts absent (length 0) and may be removed again.
class Variation
{
public:
    static constexpr int partCount = 2;

    Variation();

    Pattern& getPart(int index)
    {
        jassert(juce::isPositiveAndBelow(index, partCount));
        return parts[(size_t) index];
    }
    const Pattern& getPart(int index) const
    {
        jassert(juce::isPositiveAndBelow(index, partCount));
        return parts[(size_t) index];
    }

    double getShuffle() const { return shuffle; }
    void setShuffle(double newShuffle) { shuffle = Pattern::clampShuffle(newShuffle); }

    double getTempo() const { return tempo; }
    void setTempo(double newTempo) { tempo = Pattern::clampTempo(newTempo); }

    // Shuffle and both parts; the tempo stays.
    void copyFrom(const Variation& source);

private:
    std::array<Pattern, partCount> parts;
    RelaxedAtomic<double> shuffle{ 0.0 };
    RelaxedAtomic<double> tempo{ 120.0 };
};

// A native pattern: variations A (index 0) and B (index 1), and a name.
class NativePattern
{
public:
    static constexpr int variationCount = 2;

    Variation& getVariation(int index)
    {
        jassert(juce::isPositiveAndBelow(index, variationCount));
        return variations[(size_t) index];
    }
    const Variation& getVariation(int index) const
    {
        jassert(juce::isPositiveAndBelow(index, variationCount));
        return variations[(size_t) index];
    }

    const juce::String& getName() const { return name; }
    void setName(const juce::String& newName) { name = newName; }

    // Name and both variations; no tempo is copied.
    void copyFrom(const NativePattern& source);

private:
    std::array<Variation, variationCount> variations;
    juce::String name;
};
