#include "EngineRender.h"

#include "engine/QuindrelCore.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quindrelrender
{
namespace
{
constexpr const char* instrumentCodes[] = {"BD", "SD", "LC", "MC", "HC", "LT", "MT", "HT", "CL", "RS", "MA", "CP", "CB", "LG", "CY", "OH", "CH", "AC"};
constexpr double settleSeconds = 0.1;
} // namespace

int instrumentFromCode(const std::string& code)
{
    for (int i = 0; i <= DrumMachineCore::accentTrack; ++i)
        if (code == instrumentCodes[i])
            return i;
    return -1;
}

float startValue(int parameterId)
{
    switch (parameterId)
    {
        case 32: // the tom snappies
        case 35:
        case 38:
        case 45: // Hand Clap Reverb
        case 47: // Cow Bell Decay
        case 48: // Laser Gun Depth
            return 1.0f;
        case 49: // Laser Gun Decay
        case 50: // Laser Gun Sweep
            return 0.0f;
        default:
            return 0.5f;
    }
}

std::vector<float> render(const Job& job)
{
    QuindrelCore core;
    core.prepare();
    core.setSampleRate((float)job.sampleRate);
    for (int id = 0; id <= lastEngineParameter; ++id)
        core.setParameter(id, startValue(id));
    for (const auto& [id, value] : job.knobs)
        core.setParameter(id, value);

    std::array<double, DrumMachineCore::numInstruments> frame{};
    const auto settleFrames = (long)std::lround(settleSeconds * job.sampleRate);
    for (long i = 0; i < settleFrames; ++i)
        core.renderFrame(frame.data());

    auto hits = job.hits;
    std::stable_sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b)
                     { return a.seconds < b.seconds; });
    double seconds = job.seconds;
    if (seconds <= 0.0)
        seconds = (hits.empty() ? 0.0 : hits.back().seconds) + tailSeconds;

    std::vector<float> mix((size_t)std::lround(seconds * job.sampleRate));
    auto next = hits.begin();
    for (size_t i = 0; i < mix.size(); ++i)
    {
        for (; next != hits.end() && std::lround(next->seconds * job.sampleRate) <= (long)i; ++next)
            core.trigger(next->instrument, next->velocity);

        core.renderFrame(frame.data());
        float sum = 0.0f;
        for (double y : frame)
            sum += (float)y;
        mix[i] = sum;
    }

    core.release();
    return mix;
}
} // namespace quindrelrender
