#include "engine/SampleRateInfo.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(EngineSampleRateInfo, KnownRatesAndTheirIndex)
{
    const struct
    {
        double rate;
        int index;
    } rates[] = { { 44100.0, 0 }, { 48000.0, 1 }, { 88200.0, 2 }, { 96000.0, 3 }, { 192000.0, 4 } };

    for (const auto& r : rates)
    {
        SampleRateInfo info;
        info.fill(r.rate);
        EXPECT_EQ(info.rateIndex, r.index) << r.rate;
        EXPECT_DOUBLE_EQ(info.rateRatio, r.rate / 44100.0) << r.rate;
        EXPECT_DOUBLE_EQ(info.rateScale, 2.0 * (1.0 - std::pow(0.5, 44100.0 / r.rate))) << r.rate;
        EXPECT_DOUBLE_EQ(info.rateScaleCubed, info.rateScale * info.rateScale * info.rateScale);
        EXPECT_DOUBLE_EQ(info.nyquist, r.rate / 2.0);
    }
}

TEST(EngineSampleRateInfo, RateScaleIsOneAt44100AndHalvesRoughlyPerDoubling)
{
    SampleRateInfo info;
    EXPECT_EQ(info.rateScale, 1.0);
    info.fill(88200.0);
    EXPECT_NEAR(info.rateScale, 2.0 * (1.0 - std::sqrt(0.5)), 1e-15); // 0.5858
}

TEST(EngineSampleRateInfo, UnknownRateKeepsThePreviousIndex)
{
    SampleRateInfo info;
    info.fill(96000.0);
    info.fill(22050.0);
    EXPECT_EQ(info.rateIndex, 3);
    EXPECT_DOUBLE_EQ(info.sampleRate, 22050.0);
    EXPECT_DOUBLE_EQ(info.samplePeriod, 1.0 / 22050.0);
}
