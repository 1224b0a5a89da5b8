#include "engine/SampleRateInfo.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(EngineSampleRateInfo, KnownRatesTheirIndexAndScale)
{
    const std::pair<double, int> rates[] = { { 44100.0, 0 }, { 48000.0, 1 }, { 88200.0, 2 }, { 96000.0, 3 }, { 192000.0, 4 } };
    SampleRateInfo info;
    EXPECT_EQ(info.rateScale, 1.0);
    for (const auto& [rate, index] : rates)
    {
        info.fill(rate);
        EXPECT_EQ(info.rateIndex, index) << rate;
        EXPECT_DOUBLE_EQ(info.rateRatio, rate / 44100.0) << rate;
        EXPECT_DOUBLE_EQ(info.rateScale, 2.0 * (1.0 - std::pow(0.5, 44100.0 / rate))) << rate;
        EXPECT_DOUBLE_EQ(info.rateScaleCubed, info.rateScale * info.rateScale * info.rateScale);
        EXPECT_DOUBLE_EQ(info.nyquist, rate / 2.0);
    }
    EXPECT_NEAR(info.rateScale, 0.2943608005366696, 1e-15) << "192 kHz";

    info.fill(22050.0); // unknown: the previous index stays
    EXPECT_EQ(info.rateIndex, 4);
    EXPECT_DOUBLE_EQ(info.samplePeriod, 1.0 / 22050.0);
}
