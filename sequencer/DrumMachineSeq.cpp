#include "sequencer/DrumMachineSeq.h"

#include "plugin/DrumMachine.h"
#include "presets/XmlFiles.h"
#include "sequencer/Pattern.h"

DrumMachineSeq::DrumMachineSeq(DrumMachine* owner, DrumMachineCore* engine)
    : plugin(owner)
    , core(engine)
{
    for (auto& threshold : randomThresholds)
        threshold.store(0.2f, std::memory_order_relaxed);
    resetRandomizer();
}

void DrumMachineSeq::resetRandomizer()
{
    randomActive.store(false, std::memory_order_relaxed);
    for (auto& track : randomTracks)
        track.store(0, std::memory_order_relaxed);
    for (auto& levels : randomLevels)
        for (auto& level : levels)
            level.store(-1.0f, std::memory_order_relaxed);
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
    constexpr auto relaxed = std::memory_order_relaxed;
    return pattern != nullptr && pattern == randomPattern.load(relaxed) && randomTracks[(size_t) track].load(relaxed) != 0 && !(randomThresholds[(size_t) track].load(relaxed) > randomLevels[(size_t) track][(size_t) step].load(relaxed));
}

int DrumMachineSeq::getRandomizedStep(int track, int step) const
{
    const Pattern* pattern = randomPattern;
    if (pattern == nullptr || !juce::isPositiveAndBelow(track, numTracks) || !juce::isPositiveAndBelow(step, Pattern::stepCount))
        return 0;

    return isMaskedByRandomizer(pattern, track, step) ? 0 : pattern->getStep(track, step);
}

bool DrumMachineSeq::takeTapValues()
{
    if (!tapRequested.exchange(false, std::memory_order_acquire))
        return false;

    for (size_t track = 0; track < (size_t) numTracks; ++track)
        pendingTapValues[track] = tapValues[track].load(std::memory_order_relaxed);
    return true;
}

void DrumMachineSeq::applyTap(bool play, bool write, bool host)
{
    bool any = false;
    const int type = host ? hostType : nativeType;

    for (int track = 0; track < numTracks; ++track)
    {
        const int value = pendingTapValues[(size_t) track];
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

    pendingTapValues.fill(0);
}

//==============================================================================
void DrumMachineSeq::readBank(const juce::XmlElement& xml, int type)
{
    if (!isBankElement(xml, type))
        return;

    // Only pattern elements take a slot; anything else in the bank is passed over.
    const int count = getPatternCount(type);
    int slot = 0;
    for (auto* child : xml.getChildIterator())
    {
        if (slot >= count)
            break;
        if (isPatternElement(*child, type))
            readPattern(*child, slot++, type);
    }
}

std::unique_ptr<juce::XmlElement> DrumMachineSeq::writeBank(int type) const
{
    auto bank = std::make_unique<juce::XmlElement>("PatternBank");
    if (type == hostType)
        bank->setAttribute("type", "hostPattern");
    else if (type == nativeType)
        bank->setAttribute("type", "nativePattern");

    for (int index = 0; index < getPatternCount(type); ++index)
        if (auto pattern = writePattern(index, type))
            bank->addChildElement(pattern.release());

    return bank;
}

void DrumMachineSeq::readPatternsState(const juce::XmlElement& xml)
{
    if (!xml.hasTagName("PatternsState"))
        return;

    for (auto* child : xml.getChildIterator())
    {
        if (!hasHostPatterns())
            readBank(*child, plainType);
        else if (isBankElement(*child, hostType))
            readBank(*child, hostType);
        else
            readBank(*child, nativeType);
    }
}

std::unique_ptr<juce::XmlElement> DrumMachineSeq::writePatternsState() const
{
    auto state = std::make_unique<juce::XmlElement>("PatternsState");
    if (hasHostPatterns())
    {
        state->addChildElement(writeBank(hostType).release());
        state->addChildElement(writeBank(nativeType).release());
    }
    else
    {
        state->addChildElement(writeBank(plainType).release());
    }
    return state;
}

bool DrumMachineSeq::loadPatternFile(const juce::File& file, int type)
{
    const auto xml = XmlFiles::parse(file);
    if (xml == nullptr || !isPatternElement(*xml, type))
        return false;

    readPattern(*xml, editedIndexOf(type), type);
    return true;
}

bool DrumMachineSeq::savePatternFile(const juce::File& file, int type) const
{
    const auto xml = writePattern(editedIndexOf(type), type);
    return xml != nullptr && xml->writeTo(file); // UTF-8
}

bool DrumMachineSeq::loadBankFile(const juce::File& file, int type)
{
    const auto xml = XmlFiles::parse(file);
    if (xml == nullptr || !isBankElement(*xml, type))
        return false;

    readBank(*xml, type);
    return true;
}

bool DrumMachineSeq::saveBankFile(const juce::File& file, int type) const
{
    return writeBank(type)->writeTo(file); // UTF-8
}
