#include "sequencer/Pattern.h"

#include <cmath>

juce::juce_wchar StepNotation::toCharacter(int value)
{
    if (value == 3)
        return 'O';
    if (value == 1)
        return 'o';
    return '.';
}

int StepNotation::fromCharacter(juce::juce_wchar character)
{
    if (character == 'O')
        return 3;
    if (character == 'o')
        return 1;
    return 0;
}

void Pattern::setStep(int track, int step, int value)
{
    if (!isValid(track, step))
        return;
    // The accent track knows only off and accented.
    if (track == Tracks::accent && (value & 1) != 0)
        value |= 2;
    steps[(size_t) track][(size_t) step] = (uint8_t) (value & 3);
}

void Pattern::setRawStep(int track, int step, bool on, bool accent)
{
    if (!isValid(track, step))
        return;
    steps[(size_t) track][(size_t) step] = (uint8_t) ((accent ? 2 : 0) | (on ? 1 : 0));
}

void Pattern::copyTrackFrom(const Pattern& source, int sourceTrack, int targetTrack)
{
    if (!isValid(sourceTrack, 0) || !isValid(targetTrack, 0))
        return;
    for (int step = 0; step < stepCount; ++step)
        setStep(targetTrack, step, source.getStep(sourceTrack, step));
}

void Pattern::clearTrack(int track)
{
    if (isValid(track, 0))
        steps[(size_t) track].fill(0);
}

void Pattern::clearSteps()
{
    for (auto& track : steps)
        track.fill(0);
}

void Pattern::rotateTrack(int track, bool left)
{
    // A part of length 0 has nothing to rotate, and one step rotates onto itself.
    if (!isValid(track, 0) || length < 2)
        return;

    auto move = [this, track](int from, int to)
    {
        const int value = getStep(track, from);
        setRawStep(track, to, (value & 1) != 0, (value & 2) != 0);
    };

    const int last = length - 1;
    const int leaving = getStep(track, left ? 0 : last);
    if (left)
        for (int step = 0; step < last; ++step)
            move(step + 1, step);
    else
        for (int step = last; step > 0; --step)
            move(step - 1, step);
    setRawStep(track, left ? last : 0, (leaving & 1) != 0, (leaving & 2) != 0);
}

juce::String Pattern::getTrackString(int track) const
{
    const int count = length;
    char text[stepCount];
    for (int step = 0; step < count; ++step)
        text[step] = (char) StepNotation::toCharacter(getStep(track, step));
    return juce::String(text, (size_t) count);
}

void Pattern::setTrackString(int track, const juce::String& text)
{
    auto character = text.getCharPointer();
    for (int step = 0; step < stepCount && !character.isEmpty(); ++step)
        setStep(track, step, StepNotation::fromCharacter(character.getAndAdvance()));
}

void Pattern::setLength(int newLength)
{
    length = juce::jlimit(canBeEmpty ? 0 : 1, stepCount, newLength);
}

void Pattern::setCanBeEmpty(bool shouldBeAllowed)
{
    canBeEmpty = shouldBeAllowed;
    setLength(length);
}

void Pattern::copyFrom(const Pattern& source)
{
    copyPartFrom(source);
    name = source.name;
    setShuffle(source.shuffle);
}

void Pattern::copyPartFrom(const Pattern& source)
{
    setLength(source.length);
    setScale(source.scale);
    for (int track = 0; track < Tracks::count; ++track)
        copyTrackFrom(source, track, track);
}

int Pattern::validScale(int value)
{
    return (value == 3 || value == 4 || value == 6 || value == 8) ? value : 4;
}

double Pattern::clampShuffle(double value)
{
    // Written so that a NaN from a damaged file ends up at a limit too.
    if (!(value > 0.0))
        return 0.0;
    return value > maxShuffle ? maxShuffle : value;
}

double Pattern::clampTempo(double value)
{
    if (!(value > minTempo))
        value = minTempo;
    else if (value > maxTempo)
        value = maxTempo;
    return std::trunc(value * 10.0 + 0.5) * 0.1;
}

Variation::Variation()
{
    parts[1].setCanBeEmpty(true);
    parts[1].setLength(0);
}

void Variation::copyFrom(const Variation& source)
{
    setShuffle(source.shuffle);
    for (int part = 0; part < partCount; ++part)
        parts[(size_t) part].copyPartFrom(source.parts[(size_t) part]);
}

void NativePattern::copyFrom(const NativePattern& source)
{
    name = source.name;
    for (int variation = 0; variation < variationCount; ++variation)
        variations[(size_t) variation].copyFrom(source.variations[(size_t) variation]);
}
