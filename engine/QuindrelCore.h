#pragma once

#include "engine/DrumMachineCore.h"
#include "engine/QuindrelBassDrum.h"
#include "engine/QuindrelClaves.h"
#include "engine/QuindrelConga.h"
#include "engine/QuindrelCowBell.h"
#include "engine/QuindrelCymbal.h"
#include "engine/QuindrelHandClap.h"
#include "engine/QuindrelHiHats.h"
#include "engine/QuindrelLaserGun.h"
#include "engine/QuindrelMaracas.h"
#include "engine/QuindrelRimShot.h"
#include "engine/QuindrelSnareDrum.h"
#include "engine/QuindrelTom.h"
#include "engine/SignalBlocks.h"

#include <array>
#include <cstdint>
#include <memory>

// The Quindrel sound engine: seventeen instruments, the sources several of them
// share (a white-noise generator with a bright and a dark tap, six square
// oscillators with two band-passes for the metal voices) and the main volume.
// renderFrame hands back one double per instrument, in instrument order; there
// is no clipping and no mixing here. Threads as DrumMachineCore.
class QuindrelCore : public DrumMachineCore
{
public:
    explicit QuindrelCore(DrumMachine* owner = nullptr);

    void setParameter(int index, float value) override;
    void trigger(int instrument, float velocity) override;
    void setSampleRate(float sampleRate) override;
    void renderFrame(double* outputs) override;

    const QuindrelInstrument& getInstrument(int index) const { return *instruments[(size_t) index]; }
    // The metal bank after its two band-passes, as the last frame fed them to the voices.
    double getMetalHigh() const noexcept { return metalHigh; }
    double getMetalLow() const noexcept { return metalLow; }

private:
    void setMetalBandPasses(double highW, double lowW);
    // Audio thread: advances the shared sources by one sample.
    void renderSources();

    // Each voice is owned through its own class, since the base has no virtual
    // destructor.
    std::unique_ptr<QuindrelBassDrum> bassDrum;
    std::unique_ptr<QuindrelSnareDrum> snareDrum;
    std::unique_ptr<QuindrelLowConga> lowConga;
    std::unique_ptr<QuindrelMidConga> midConga;
    std::unique_ptr<QuindrelHiConga> hiConga;
    std::unique_ptr<QuindrelLowTom> lowTom;
    std::unique_ptr<QuindrelMidTom> midTom;
    std::unique_ptr<QuindrelHiTom> hiTom;
    std::unique_ptr<QuindrelClaves> claves;
    std::unique_ptr<QuindrelRimShot> rimShot;
    std::unique_ptr<QuindrelMaracas> maracas;
    std::unique_ptr<QuindrelHandClap> handClap;
    std::unique_ptr<QuindrelCowBell> cowBell;
    std::unique_ptr<QuindrelLaserGun> laserGun;
    std::unique_ptr<QuindrelCymbal> cymbal;
    std::unique_ptr<QuindrelOpenHiHat> openHiHat;
    std::unique_ptr<QuindrelClosedHiHat> closedHiHat;

    // The same voices by engine index, for the frame loop.
    std::array<QuindrelInstrument*, numInstruments> instruments{};

    double mainVolumeTarget = 0.0;
    double mainVolume = 0.0;

    std::array<quindrel::SquareOscillator, 6> metalOscillators;
    quindrel::Biquad metalBandPassHigh;
    quindrel::Biquad metalBandPassLow;
    double metalHigh = 0.0;
    double metalLow = 0.0;

    uint32_t noiseA = 0;
    uint32_t noiseB = 0;
    double noiseLowPassCoefficient = 0.0;
    double noiseLowPassState = 0.0;
    double noiseBright = 0.0;
    double noiseDark = 0.0;
    quindrel::Biquad noiseDarkFilter;
};
