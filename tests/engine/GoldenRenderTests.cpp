#include "EngineTestHelpers.h"
#include "parameters/InstrumentNames.h"

#include <gtest/gtest.h>

#include <cctype>
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
    using namespace enginetest;
    const std::pair<int, int> renders[] = {
        { bassDrum, 44100 }, { snareDrum, 44100 }, { snareDrum, 96000 }, { lowConga, 44100 }, { midConga, 44100 }, { hiConga, 96000 }, { lowTom, 44100 }, { midTom, 96000 }, { hiTom, 44100 }, { claves, 44100 }, { rimShot, 44100 }, { rimShot, 96000 }, { laserGun, 44100 }, { laserGun, 96000 }, { maracas, 44100 }, { maracas, 192000 }, { handClap, 44100 }, { cowBell, 44100 }, { cymbal, 44100 }, { cymbal, 96000 }, { openHiHat, 44100 }, { closedHiHat, 48000 }
    };
    for (const auto& [voice, rate] : renders)
    {
        // "Closed Hi Hat" at 48 kHz is stored as closed-hi-hat-48000.
        std::string name = instrumentNames[voice];
        for (auto& c : name)
            c = c == ' ' ? '-' : (char) std::tolower(c);
        checkAgainstGolden(voice, (float) rate, name + "-" + std::to_string(rate));
    }
}
