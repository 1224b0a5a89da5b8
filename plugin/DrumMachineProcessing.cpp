// Block processing of DrumMachine: transport, clocks, MIDI, triggers and the
// deferred, sample-by-sample rendering of the engine. Audio thread throughout,
// but for prepareToPlay and releaseResources.

#include "plugin/DrumMachine.h"

#include "parameters/ParameterIds.h"

namespace
{
// Room for the MIDI of a busy block, so that adding events does not allocate.
constexpr int midiBufferBytes = 16384;
} // namespace

void DrumMachine::prepareToPlay(double newSampleRate, int)
{
    core->prepare();
    core->setSampleRate((float) newSampleRate);
    sampleRate = newSampleRate;

    for (auto* clock : { &hostClock, &nativeClock })
        clock->setSampleRate(newSampleRate);
    for (auto* clock : { &nativeGateClock, &hostGateClock })
        clock->setSampleRate(newSampleRate);

    midiQueue.prepare(midiBufferBytes);
    midiOut.ensureSize(midiBufferBytes);
    noteOffsOut.ensureSize(1024);
}

void DrumMachine::releaseResources()
{
    core->release();
    hostClock.stop();
    nativeClock.stop();
    hostGateClock.stop();
    nativeGateClock.stop();
}

bool DrumMachine::isBusesLayoutSupported(const BusesLayout& layouts) const
{
    if (!layouts.inputBuses.isEmpty())
        return false;

    const auto wanted = outputType == monoOutputs ? juce::AudioChannelSet::mono() : juce::AudioChannelSet::stereo();

    for (const auto& bus : layouts.outputBuses)
        if (!bus.isDisabled() && bus != wanted)
            return false;

    return !layouts.outputBuses.isEmpty() && !layouts.outputBuses.getReference(0).isDisabled();
}

//==============================================================================
void DrumMachine::takePatternTiming(ShuffledClock& clock, bool host, bool intSync)
{
    // The pattern's own tempo only with the internal sync; the host's otherwise.
    if (intSync)
        clock.setTempo(host ? sequencer->getHostTempo() : sequencer->getNativeTempo());
    clock.setShuffle(host ? sequencer->getHostShuffle() : sequencer->getNativeShuffle());
    clock.setStepsPerBeat(host ? sequencer->getHostScale() : sequencer->getNativeScale());
}

void DrumMachine::startNativeSequence()
{
    sequencer->startNative();
    takePatternTiming(nativeClock, false, internalSync);
    nativeClock.start();
    copyTempoAndScale(nativeClock, nativeGateClock);
}

void DrumMachine::copyTempoAndScale(const Clock& from, Clock& to)
{
    to.setTempo(from.bpm);
    to.setStepsPerBeat(from.stepsPerBeat);
}

//==============================================================================
void DrumMachine::processBlock(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midiMessages)
{
    const int numSamples = buffer.getNumSamples();

    // 1, 2: the sequencer's position and this block's view of the modes.
    sequencer->markPosition();
    const bool intSeq = internalSequencer;
    const bool intSync = internalSync;
    const bool host = hostMode;
    const int detection = hostPlayDetection;
    const bool write = writeMode;
    const bool follow = autoFollow;
    const bool length = lengthMode;
    const bool random = randomizerOn;
    const bool tap = tapMode;
    const bool nativeWasRunning = nativeClock.running;

    // 3: the host's transport.
    bool transportPlaying = wasPlaying;
    if (auto* playHead = getPlayHead())
    {
        if (const auto position = playHead->getPosition())
        {
            const bool isPlaying = position->getIsPlaying();
            // A host that gives a position but no tempo plays at 120.
            const double bpm = position->getBpm().orFallback(120.0);
            const double ppq = position->getPpqPosition().orFallback(0.0);
            const bool wasPlayingBefore = wasPlaying;
            wasPlaying = isPlaying;
            transportPlaying = isPlaying;

            if (wasPlayingBefore && !isPlaying)
            {
                runState = 2;
                hostClock.stop();
                nativeClock.stop();
                hostGateClock.stop();
                nativeGateClock.stop();
                sequencer->stopHost();
                sequencer->stopNative();
            }
            else if (!wasPlayingBefore && isPlaying)
            {
                if (detection == byTransportChange && !nativeClock.running)
                    startNativeSequence();
                runState = 2;
            }

            if (!intSync)
            {
                hostClock.setTempo(bpm);
                nativeClock.setTempo(bpm);
                copyTempoAndScale(hostClock, hostGateClock);
                copyTempoAndScale(nativeClock, nativeGateClock);

                if ((isPlaying && detection == byTransportChange) || (lowestCStarted && detection == byLowestCNoteOn))
                    nativeClock.setPosition(ppq);
            }
        }
    }

    // 4: Start and Stop of the panel, only while the host's transport rests.
    if (const int request = runRequest.exchange(0); request != 0)
    {
        if (request != runState && intSeq && !transportPlaying)
        {
            runState = request;
            if (request == 1)
            {
                startNativeSequence();
            }
            else
            {
                nativeClock.stop();
                sequencer->stopNative();
            }
            nativeGateClock.stop();
        }
    }

    // 5: the outputs are accumulated on zeros.
    buffer.clear();
    prepareOutputChannels(buffer);

    // 6, 7
    midiQueue.addBlock(midiMessages);
    midiOut.clear();
    sampleInBlock = 0;
    pendingSamples = 0;
    renderedSamples = 0;

    // The notes the sequencer left on when the internal sequencer was switched.
    noteOffsOut.clear();
    if (noteOffsRequested.exchange(false))
        sendAllNoteOffs(noteOffsOut);

    // 8, 9: the running patterns' tempo, shuffle and scale, once a block.
    if (hostClock.running)
    {
        takePatternTiming(hostClock, true, intSync);
        copyTempoAndScale(hostClock, hostGateClock);
        hostGateClock.setPulseWidth(sequencer->getHostPulseWidth());
    }
    if (nativeClock.running)
    {
        takePatternTiming(nativeClock, false, intSync);
        copyTempoAndScale(nativeClock, nativeGateClock);
        nativeGateClock.setPulseWidth(sequencer->getNativePulseWidth());
    }

    // 10: sample by sample.
    juce::MidiMessage message;
    for (int i = 0; i < numSamples; ++i)
    {
        // MIDI events of this sample act before the clocks.
        bool first = true;
        while (midiQueue.nextEventAt(i, message))
        {
            if (first)
            {
                midiActivity = 1;
                flushPending();
                first = false;
            }
            handleMidiEvent(message);
        }

        const bool tapNow = sequencer->takeTapRequest();
        if (tapNow)
            (host ? static_cast<Clock&>(hostClock) : static_cast<Clock&>(nativeClock)).needsUpdate = true;

        if (hostClock.tick() && hostClock.isOnState())
        {
            flushPending();
            if (!hostClock.firstTick)
                sequencer->advanceHost();
            if (intSeq && host)
                sequencer->playHostStep(false);
            hostGateClock.restart();
        }

        if (nativeClock.tick() && nativeClock.isOnState())
        {
            flushPending();
            if (!nativeClock.firstTick)
                sequencer->advanceNative();
            // A step may have moved the run to another pattern, part or variation.
            takePatternTiming(nativeClock, false, intSync);
            if (intSeq && !host)
                sequencer->playNativeStep(false);
            copyTempoAndScale(nativeClock, nativeGateClock);
            nativeGateClock.restart();
        }

        if (hostGateClock.tick() && hostGateClock.isOffState())
        {
            flushPending();
            if (intSeq && host)
                sequencer->playHostStep(true);
            hostGateClock.stop();
        }

        if (nativeGateClock.tick() && nativeGateClock.isOffState())
        {
            flushPending();
            if (intSeq && !host)
                sequencer->playNativeStep(true);
            nativeGateClock.stop();
        }

        if (tapNow)
        {
            flushPending();
            auto& clock = host ? static_cast<Clock&>(hostClock) : static_cast<Clock&>(nativeClock);
            if (clock.running)
            {
                if (clock.isNearPreviousStep())
                {
                    sequencer->applyTap(true, true, host);
                }
                else
                {
                    sequencer->tapType = host ? DrumMachineSeq::hostType : DrumMachineSeq::nativeType;
                    sequencer->tapDeferred = true;
                }
            }
            else
            {
                sequencer->applyTap(true, false, host);
            }
        }

        ++sampleInBlock;
        ++pendingSamples;
    }

    // 11, 12
    flushPending();
    midiQueue.rollOver(numSamples);

    // 13: the generated notes replace the input under the internal sequencer.
    if (intSeq)
    {
        midiMessages.clear();
        midiMessages.addEvents(noteOffsOut, 0, -1, 0);
        midiMessages.addEvents(midiOut, 0, -1, 0);
    }
    else
    {
        midiMessages.addEvents(noteOffsOut, 0, -1, 0);
    }

    // 14, 15: the pattern displays follow what plays.
    bool followed = false;
    if (intSeq)
    {
        bool called = false;
        if (host)
        {
            if (!length && !random && (follow || tap) && hostClock.running)
            {
                called = true;
                followed = sequencer->followHost();
            }
        }
        else if ((!write || (!length && !random && (follow || tap))) && nativeClock.running)
        {
            called = true;
            followed = sequencer->followNative();
        }

        if (called && followed)
            updatePatternDisplays();
    }
    if (!followed && sequencer->positionChanged())
        updatePatternDisplays();

    // 16
    if (nativeClock.running != nativeWasRunning)
    {
        parameterManager.setBool(ParameterIds::playState, nativeClock.running);
        updateStepLights();
    }
}

//==============================================================================
void DrumMachine::handleMidiEvent(const juce::MidiMessage& message)
{
    const auto* data = message.getRawData();
    const int status = data[0] & 0xf0;

    if (status == 0xb0)
    {
        if (message.getControllerNumber() == 123)
        {
            sequencer->stopHost();
            sequencer->stopNative();
            hostClock.stop();
            nativeClock.stop();
            hostGateClock.stop();
            nativeGateClock.stop();
            lowestCStarted = false;
            heldPatternNotes = 0;
        }
        else
        {
            handleController(message);
        }
        return;
    }

    if (status == 0xc0)
    {
        handleProgramChange(message.getProgramChangeNumber());
        return;
    }

    if (status != 0x90 && status != 0x80)
        return;

    const int key = message.getNoteNumber();
    const bool noteOn = status == 0x90 && message.getVelocity() > 0;

    if (noteOn)
    {
        if (!internalSequencer)
        {
            const int instrument = keyToInstrument[(size_t) key];
            if (instrument >= 0)
                triggerInstrument(instrument, (float) message.getVelocity() * (1.0f / 127));
        }

        if (key >= 12 && key <= 107)
        {
            const int pattern = key - 12;
            heldPatternNotes = sequencer->getHostPattern() == pattern ? heldPatternNotes + 1 : 1;
            sequencer->startHostPattern(pattern);
            takePatternTiming(hostClock, true, internalSync);
            hostClock.restart();
            copyTempoAndScale(hostClock, hostGateClock);
            hostGateClock.stop();
            hostGateClock.setPulseWidth(sequencer->getHostPulseWidth());
        }

        if (key == 0 && hostPlayDetection == byLowestCNoteOn && !nativeClock.running)
        {
            startNativeSequence();
            lowestCStarted = true;
        }
    }
    else if (key >= 12 && key <= 107)
    {
        // A release that finds no key held (controller 123 came first, as many
        // hosts send it on stop) changes nothing, so the count never goes below 0.
        if (sequencer->getHostPattern() == key - 12 && heldPatternNotes > 0)
        {
            if (--heldPatternNotes == 0 && noteOffMode)
            {
                sequencer->stopHost();
                hostClock.stop();
                hostGateClock.stop();
            }
        }
    }
}

void DrumMachine::triggerInstrument(int instrument, float velocity)
{
    if (instrument < instrumentCount && ((enabled.load(std::memory_order_relaxed) >> instrument) & 1) == 0)
        return;

    core->trigger(instrument, velocity);
    activityFlags[(size_t) instrument].store(1, std::memory_order_relaxed);

    if (instrument < instrumentCount)
    {
        sendNoteOffs(instrument, midiOut);

        const int velocityByte = juce::jmin(127, (int) (velocity * 127));
        for (int key = 0; key < 128; ++key)
            if (keyToInstrument[(size_t) key] == instrument)
                midiOut.addEvent(juce::MidiMessage::noteOn(1, key, (juce::uint8) juce::jmax(0, velocityByte)), sampleInBlock);

        heldOutNotes[(size_t) instrument] = 1;
    }
}

void DrumMachine::sendNoteOffs(int instrument, juce::MidiBuffer& target)
{
    if (heldOutNotes[(size_t) instrument] == 0)
        return;

    for (int key = 0; key < 128; ++key)
        if (keyToInstrument[(size_t) key] == instrument)
            target.addEvent(juce::MidiMessage::noteOff(1, key, (juce::uint8) 0), sampleInBlock);

    heldOutNotes[(size_t) instrument] = 0;
}

void DrumMachine::sendAllNoteOffs(juce::MidiBuffer& target)
{
    for (int i = 0; i < instrumentCount; ++i)
        sendNoteOffs(i, target);
}

//==============================================================================
void DrumMachine::flushPending()
{
    for (int i = 0; i < pendingSamples; ++i)
        renderOneFrame(renderedSamples + i);

    renderedSamples += pendingSamples;
    pendingSamples = 0;
}

void DrumMachine::prepareOutputChannels(juce::AudioBuffer<float>& buffer)
{
    // Each output is a bus; a bus the host disabled, or channels it did not
    // give, leave the output silent.
    const int channels = buffer.getNumChannels();
    const int width = outputType == monoOutputs ? 1 : 2;

    for (int o = 0; o < maxOutputs; ++o)
    {
        auto& pointers = outputPointers[(size_t) o];
        pointers = { nullptr, nullptr };

        if (o >= outputCount || o >= getBusCount(false))
            continue;

        const auto* bus = getBus(false, o);
        if (bus == nullptr || !bus->isEnabled() || bus->getNumberOfChannels() < width)
            continue;

        for (int side = 0; side < width; ++side)
        {
            const int channel = getChannelIndexInProcessBlockBuffer(false, o, side);
            if (channel < channels)
                pointers[(size_t) side] = buffer.getWritePointer(channel);
        }
    }
}

void DrumMachine::renderOneFrame(int index)
{
    core->renderFrame(renderBuffer.data());

    const bool mono = outputType == monoOutputs;

    auto add = [&](int output, float value)
    {
        if (!juce::isPositiveAndBelow(output, maxOutputs))
            return;
        const auto& pointers = outputPointers[(size_t) output];
        if (pointers[0] != nullptr)
            pointers[0][index] += value;
        if (!mono && pointers[1] != nullptr)
            pointers[1][index] += value;
    };

    // A silent instrument adds nothing, and most are silent most of the time.
    for (int i = 0; i < instrumentCount; ++i)
        if (const auto value = (float) renderBuffer[(size_t) i]; value != 0.0f)
            add(instrumentOutput[(size_t) i].load(std::memory_order_relaxed) - 1, value);

    if (core->isTriggerOutEnabled())
        add(triggerOutput.load(std::memory_order_relaxed) - 1, (float) core->renderTriggerPulse());
}

void DrumMachine::handleController(const juce::MidiMessage& message)
{
    midiControl->handleController(message);
}

void DrumMachine::handleProgramChange(int program)
{
    if (program < numPresets)
        selectAndApplyPreset(program);
}
