#include "engine/QuindrelCore.h"

#include <cmath>

namespace
{
// Period factor (seconds) and duty of the six metal oscillators, about
// 543.5, 806.5, 510.2, 292.4, 361.7 and 210.1 Hz.
constexpr double oscillatorTable[6][2] = {
    { 0.0018399288200720838, 0.4375 },
    { 0.0012399256247268688, 0.4354 },
    { 0.001960016038552521, 0.4336 },
    { 0.003419972663353988, 0.4289 },
    { 0.0027647222439515337, 0.4339 },
    { 0.00475963826749167, 0.4197 },
};

constexpr uint32_t noiseSeedA = 0x67452301u;
constexpr uint32_t noiseSeedB = 0xefcdab89u;

} // namespace

QuindrelCore::QuindrelCore(DrumMachine* ownerToUse)
    : DrumMachineCore(ownerToUse)
    , bassDrum(std::make_unique<QuindrelBassDrum>())
    , snareDrum(std::make_unique<QuindrelSnareDrum>())
    , lowConga(std::make_unique<QuindrelLowConga>())
    , midConga(std::make_unique<QuindrelMidConga>())
    , hiConga(std::make_unique<QuindrelHiConga>())
    , lowTom(std::make_unique<QuindrelLowTom>())
    , midTom(std::make_unique<QuindrelMidTom>())
    , hiTom(std::make_unique<QuindrelHiTom>())
    , claves(std::make_unique<QuindrelClaves>())
    , rimShot(std::make_unique<QuindrelRimShot>())
    , maracas(std::make_unique<QuindrelMaracas>())
    , handClap(std::make_unique<QuindrelHandClap>())
    , cowBell(std::make_unique<QuindrelCowBell>())
    , laserGun(std::make_unique<QuindrelLaserGun>())
    , cymbal(std::make_unique<QuindrelCymbal>())
    , openHiHat(std::make_unique<QuindrelOpenHiHat>())
    , closedHiHat(std::make_unique<QuindrelClosedHiHat>())
    , instruments{ bassDrum.get(), snareDrum.get(), lowConga.get(), midConga.get(), hiConga.get(),
                   lowTom.get(), midTom.get(), hiTom.get(), claves.get(), rimShot.get(),
                   maracas.get(), handClap.get(), cowBell.get(), laserGun.get(),
                   cymbal.get(), openHiHat.get(), closedHiHat.get() }
{
    // Last, so that every coefficient exists before the first setParameter.
    setSampleRate(44100.0f);
}

void QuindrelCore::setSampleRate(float sampleRate)
{
    DrumMachineCore::setSampleRate(sampleRate);
    const double sr = sampleRateInfo.sampleRate;

    // 7117 Hz and 3553 Hz, whatever the Hi Hat Filters Freq knob says, until it next moves.
    setMetalBandPasses(44717.429831197114 / sr, 22324.15739640907 / sr);
    metalBandPassHigh.clear();
    metalBandPassLow.clear();

    for (size_t i = 0; i < metalOscillators.size(); ++i)
        metalOscillators[i].setUp(sr, oscillatorTable[i][0], oscillatorTable[i][1]);

    noiseLowPassCoefficient = std::exp(-quindrel::twoPi * 2000.0 / sr);
    noiseLowPassState = 0.0;

    const double darkW = 1068.1415022205297 / sr; // 170 Hz
    noiseDarkFilter.designLowPass(darkW, std::sin(darkW) * 0.4424778761061947);
    noiseDarkFilter.clear();

    // The noise starts over at every rate change: it is deliberately repeatable.
    noiseA = noiseSeedA;
    noiseB = noiseSeedB;

    for (auto* instrument : instruments)
        instrument->setSampleRate(sampleRate);
}

void QuindrelCore::setMetalBandPasses(double highW, double lowW)
{
    metalBandPassHigh.designBandPass(highW, std::sin(highW) * 0.125);
    metalBandPassLow.designBandPass(lowW, std::sin(lowW) * 0.2);
}

void QuindrelCore::setParameter(int index, float value)
{
    const double x = (double) value;

    if (index >= 0 && index < numInstruments)
    {
        instruments[(size_t) index]->setLevel(x);
        return;
    }

    switch (index)
    {
        case 18:
            bassDrum->setTone(x);
            break;
        case 19:
            bassDrum->setDecay(x);
            break;
        case 20:
            bassDrum->setSweep(x);
            break;
        case 21:
            snareDrum->setTone(x);
            break;
        case 22:
            snareDrum->setDecay(x);
            break;
        case 23:
            snareDrum->setSnappy(x);
            break;
        case 24:
            lowConga->setTuning(x);
            break;
        case 25:
            lowConga->setDecay(x);
            break;
        case 26:
            midConga->setTuning(x);
            break;
        case 27:
            midConga->setDecay(x);
            break;
        case 28:
            hiConga->setTuning(x);
            break;
        case 29:
            hiConga->setDecay(x);
            break;
        case 30:
            lowTom->setTuning(x);
            break;
        case 31:
            lowTom->setDecay(x);
            break;
        case 32:
            lowTom->setSnappy(x);
            break;
        case 33:
            midTom->setTuning(x);
            break;
        case 34:
            midTom->setDecay(x);
            break;
        case 35:
            midTom->setSnappy(x);
            break;
        case 36:
            hiTom->setTuning(x);
            break;
        case 37:
            hiTom->setDecay(x);
            break;
        case 38:
            hiTom->setSnappy(x);
            break;
        case 39:
            claves->setTuning(x);
            break;
        case 40:
            claves->setDecay(x);
            break;
        case 41:
            rimShot->setTuning(x);
            break;
        case 42:
            rimShot->setDecay(x);
            break;
        case 43:
            maracas->setTone(x);
            break;
        case 44:
            handClap->setTone(x);
            break;
        case 45:
            handClap->setReverb(x);
            break;
        case 46:
            cowBell->setTuning(x);
            break;
        case 47:
            cowBell->setDecay(x);
            break;
        case 48:
            laserGun->setDepth(x);
            break;
        case 49:
            laserGun->setDecay(x);
            break;
        case 50:
            laserGun->setSweep(x);
            break;
        case 51:
            cymbal->setTone(x);
            break;
        case 52:
            cymbal->setDecay(x);
            break;
        case 53:
            openHiHat->setTone(x);
            break;
        case 54:
            openHiHat->setDecay(x);
            break;
        case 55:
            closedHiHat->setTone(x);
            break;
        case 56:
            closedHiHat->setDecay(x);
            break;
        case 57:
        {
            // Only the coefficients change; the histories are kept.
            const double u = x + 0.5;
            const double sr = sampleRateInfo.sampleRate;
            setMetalBandPasses(7117.0 * u * quindrel::twoPi / sr, 3553.0 * u * quindrel::twoPi / sr);
            break;
        }
        case 58:
            mainVolumeTarget = x;
            break;
        default:
            break; // 17 is the sequencer's accent; the rest is not ours
    }
}

void QuindrelCore::trigger(int instrument, float velocity)
{
    DrumMachineCore::trigger(instrument, velocity);

    // The closed hi hat chokes the open one; nothing else chokes anything.
    if (instrument == 16)
        openHiHat->choke();

    if (instrument >= 0 && instrument < numInstruments)
        instruments[(size_t) instrument]->trigger(velocity);
}

void QuindrelCore::renderSources()
{
    // All six outputs first, then all six phases.
    for (auto& oscillator : metalOscillators)
        oscillator.updateOutput();
    for (auto& oscillator : metalOscillators)
        oscillator.advance();

    const auto& o = metalOscillators;
    const double bank = 0.5 * (o[5].output + o[4].output + o[3].output + o[2].output + o[1].output + o[0].output);
    metalHigh = metalBandPassHigh.process(bank);
    metalLow = metalBandPassLow.process(bank);

    // The sign bit of the word makes the white noise symmetric: -0.5 to just under 0.5.
    const float white = (float) (int32_t) noiseB * 2.3283064365386963e-10f;
    noiseA ^= noiseB;
    noiseB += noiseA;

    const double c = noiseLowPassCoefficient;
    noiseLowPassState = (1.0 - c) * (double) white + c * noiseLowPassState + quindrel::antiDenormal;
    noiseBright = 1.5 * noiseLowPassState;
    noiseDark = 4.0 * noiseDarkFilter.process(noiseBright);
}

void QuindrelCore::renderFrame(double* outputs)
{
    renderSources();

    // Smoothed like the voices' levels (k * 0.002).
    quindrel::relax(mainVolume, mainVolumeTarget, sampleRateInfo.smoothing002);
    const double volume = mainVolume;

    auto& in = instruments;
    outputs[0] = in[0]->renderSample() * volume;
    outputs[1] = in[1]->renderSample(noiseBright) * volume;
    outputs[2] = in[2]->renderSample() * volume;
    outputs[3] = in[3]->renderSample() * volume;
    outputs[4] = in[4]->renderSample() * volume;
    outputs[5] = in[5]->renderSample(noiseDark) * volume;
    outputs[6] = in[6]->renderSample(noiseDark) * volume;
    outputs[7] = in[7]->renderSample(noiseDark) * volume;
    outputs[8] = in[8]->renderSample() * volume;
    outputs[9] = in[9]->renderSample() * volume;
    outputs[10] = in[10]->renderSample(noiseBright) * volume;
    outputs[11] = in[11]->renderSample(noiseBright) * volume;
    outputs[12] = in[12]->renderSample() * volume;
    outputs[13] = in[13]->renderSample() * volume;
    outputs[14] = in[14]->renderSample(metalHigh, metalLow) * volume;
    outputs[15] = in[15]->renderSample(metalHigh) * volume;
    outputs[16] = in[16]->renderSample(metalHigh) * volume;
}
