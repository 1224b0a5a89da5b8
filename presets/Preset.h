#pragma once

#include <juce_core/juce_core.h>

#include <array>
#include <atomic>

// A named snapshot of the sound: the normalised values of the first 58
// parameters, in order of id. A program change reads a preset on the audio
// thread while the message thread may rename it or store into it, so the
// values are atomics and the name sits behind a spin lock held only for a copy
// (a copy of a juce::String takes a reference and never allocates).
class Preset
{
public:
    static constexpr int count = 58;

    Preset() = default;
    explicit Preset(const juce::String& nameToUse);

    juce::String getName() const;
    void setName(const juce::String& newName);

    // 0 for an index out of range; a set out of range does nothing. Any thread.
    float getValue(int index) const;
    void setValue(int index, float value);

    // Name and values, or values only.
    void copyFrom(const Preset& other);
    void copyValuesFrom(const Preset& other);

private:
    mutable juce::SpinLock nameLock;
    juce::String name{ "Preset" };
    std::array<std::atomic<float>, count> values{};

    JUCE_DECLARE_NON_COPYABLE(Preset)
};

// A named run of consecutive presets of the bank; it holds only its length.
struct PresetGroup
{
    juce::String name;
    int count = 0;
};
