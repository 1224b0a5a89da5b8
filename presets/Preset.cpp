#include "presets/Preset.h"

Preset::Preset(const juce::String& nameToUse)
    : name(nameToUse)
{
}

juce::String Preset::getName() const
{
    const juce::SpinLock::ScopedLockType sl(nameLock);
    return name;
}

void Preset::setName(const juce::String& newName)
{
    // The old text is released outside the lock, so that a reader never waits for a free.
    juce::String old(newName);
    {
        const juce::SpinLock::ScopedLockType sl(nameLock);
        name.swapWith(old);
    }
}

float Preset::getValue(int index) const
{
    return juce::isPositiveAndBelow(index, count) ? values[(size_t) index].load() : 0.0f;
}

void Preset::setValue(int index, float value)
{
    if (juce::isPositiveAndBelow(index, count))
        values[(size_t) index] = value;
}

void Preset::copyFrom(const Preset& other)
{
    if (&other == this)
        return;

    setName(other.getName());
    copyValuesFrom(other);
}

void Preset::copyValuesFrom(const Preset& other)
{
    for (int i = 0; i < count; ++i)
        setValue(i, other.getValue(i));
}
