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
constexpr int frames = 8192;
constexpr int stride = 4;          // every fourth sample is kept
constexpr double tolerance = 1e-7; // room for a different maths library, not for a changed sound

std::string goldenPath(const std::string& name)
{
    return std::string(QUINDREL_SOURCE_DIR) + "/tests/data/engine/" + name + ".txt";
}

bool updating()
{
    const char* flag = std::getenv("QUINDREL_UPDATE_GOLDEN");
    return flag != nullptr && std::string(flag) == "1";
}

// A hit at full velocity, then an accented sequencer hit on the ringing voice.
std::vector<double> renderScenario(int voice, float sampleRate)
{
    auto core = enginetest::makeEngine(sampleRate);
    std::vector<double> kept;
    enginetest::Frame frame{};
    core->trigger(voice, 1.0f);
    for (int i = 0; i < frames; ++i)
    {
        if (i == 2500)
            core->trigger(voice, 0.3779527559055118f + 0.377f);
        core->renderFrame(frame.data());
        if (i % stride == 0)
            kept.push_back(frame[(size_t)voice]);
    }
    return kept;
}

void checkAgainstGolden(const std::string& name, const std::vector<double>& rendered)
{
    const auto path = goldenPath(name);
    if (updating())
    {
        std::ofstream out(path);
        ASSERT_TRUE(out) << "cannot write " << path;
        out << std::setprecision(10);
        for (double y : rendered)
            out << y << '\n';
        GTEST_SKIP() << "rewrote " << path;
    }

    std::ifstream in(path);
    ASSERT_TRUE(in) << "missing " << path << "; QUINDREL_UPDATE_GOLDEN=1 creates it";
    std::vector<double> stored;
    for (double y; in >> y;)
        stored.push_back(y);
    ASSERT_EQ(stored.size(), rendered.size()) << path;

    for (size_t i = 0; i < stored.size(); ++i)
        ASSERT_NEAR(rendered[i], stored[i], tolerance * std::fmax(1.0, std::fabs(stored[i])))
            << name << " differs at sample " << i * stride;
}
} // namespace

TEST(EngineGolden, BassDrum)
{
    checkAgainstGolden("bass-drum-44100", renderScenario(enginetest::bassDrum, 44100.0f));
}

TEST(EngineGolden, SnareDrum)
{
    checkAgainstGolden("snare-drum-44100", renderScenario(enginetest::snareDrum, 44100.0f));
    checkAgainstGolden("snare-drum-96000", renderScenario(enginetest::snareDrum, 96000.0f));
}

TEST(EngineGolden, Claves)
{
    checkAgainstGolden("claves-44100", renderScenario(enginetest::claves, 44100.0f));
}

TEST(EngineGolden, RimShot)
{
    checkAgainstGolden("rim-shot-44100", renderScenario(enginetest::rimShot, 44100.0f));
    checkAgainstGolden("rim-shot-96000", renderScenario(enginetest::rimShot, 96000.0f));
}
