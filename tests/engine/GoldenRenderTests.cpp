#include "EngineTestHelpers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <string>
#include <vector>

// Short renders of each voice compared with stored data, so that any change of
// the sound shows up. QUINDREL_UPDATE_GOLDEN=1 rewrites the data on purpose;
// do that only once the change is understood and wanted.
namespace
{
constexpr int stride = 4;          // every fourth of 8192 samples is kept
constexpr double tolerance = 1e-7; // room for a different maths library, not for a changed sound

// A hit at full velocity, then an accented sequencer hit on the ringing voice.
void checkAgainstGolden(int voice, float sampleRate, const std::string& name)
{
    auto core = enginetest::makeEngine(sampleRate);
    std::vector<double> rendered;
    enginetest::Frame frame{};
    core->trigger(voice, 1.0f);
    for (int i = 0; i < 8192; ++i)
    {
        if (i == 2500)
            core->trigger(voice, 0.3779527559055118f + 0.377f);
        core->renderFrame(frame.data());
        if (i % stride == 0)
            rendered.push_back(frame[(size_t) voice]);
    }

    const auto path = std::string(QUINDREL_SOURCE_DIR) + "/tests/data/engine/" + name + ".txt";
    const char* update = std::getenv("QUINDREL_UPDATE_GOLDEN");
    if (update != nullptr && std::string(update) == "1")
    {
        std::ofstream out(path);
        out << std::setprecision(10);
        for (double y : rendered)
            out << y << '\n';
        ASSERT_TRUE(out.good()) << "cannot write " << path;
        GTEST_SKIP() << "rewrote " << path;
    }

    std::ifstream in(path);
    ASSERT_TRUE(in) << "missing " << path << "; QUINDREL_UPDATE_GOLDEN=1 creates it";
    std::vector<double> stored;
    for (double y; in >> y;)
        stored.push_back(y);
    ASSERT_EQ(stored.size(), rendered.size()) << path;
    for (size_t i = 0; i < stored.size(); ++i)
        ASSERT_NEAR(rendered[i], stored[i], tolerance * std::fmax(1.0, std::fabs(stored[i]))) << name << " differs at sample " << i * stride;
}
} // namespace

TEST(EngineGolden, EachVoiceSoundsAsStored)
{
    checkAgainstGolden(enginetest::bassDrum, 44100.0f, "bass-drum-44100");
    checkAgainstGolden(enginetest::snareDrum, 44100.0f, "snare-drum-44100");
    checkAgainstGolden(enginetest::snareDrum, 96000.0f, "snare-drum-96000");
    checkAgainstGolden(enginetest::lowConga, 44100.0f, "low-conga-44100");
    checkAgainstGolden(enginetest::midConga, 44100.0f, "mid-conga-44100");
    checkAgainstGolden(enginetest::hiConga, 96000.0f, "hi-conga-96000");
    checkAgainstGolden(enginetest::lowTom, 44100.0f, "low-tom-44100");
    checkAgainstGolden(enginetest::midTom, 96000.0f, "mid-tom-96000");
    checkAgainstGolden(enginetest::hiTom, 44100.0f, "hi-tom-44100");
    checkAgainstGolden(enginetest::claves, 44100.0f, "claves-44100");
    checkAgainstGolden(enginetest::rimShot, 44100.0f, "rim-shot-44100");
    checkAgainstGolden(enginetest::rimShot, 96000.0f, "rim-shot-96000");
    checkAgainstGolden(enginetest::laserGun, 44100.0f, "laser-gun-44100");
    checkAgainstGolden(enginetest::laserGun, 96000.0f, "laser-gun-96000");
}

TEST(EngineGolden, NoiseAndMetalVoicesSoundAsStored)
{
    checkAgainstGolden(enginetest::maracas, 44100.0f, "maracas-44100");
    checkAgainstGolden(enginetest::maracas, 192000.0f, "maracas-192000");
    checkAgainstGolden(enginetest::handClap, 44100.0f, "hand-clap-44100");
    checkAgainstGolden(enginetest::cowBell, 44100.0f, "cow-bell-44100");
    checkAgainstGolden(enginetest::cymbal, 44100.0f, "cymbal-44100");
    checkAgainstGolden(enginetest::cymbal, 96000.0f, "cymbal-96000");
    checkAgainstGolden(enginetest::openHiHat, 44100.0f, "open-hi-hat-44100");
    checkAgainstGolden(enginetest::closedHiHat, 48000.0f, "closed-hi-hat-48000");
}
