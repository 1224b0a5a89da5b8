#include "SampleRateInfo.h"

#include <cmath>

void SampleRateInfo::fill(double sr)
{
    sampleRate = sr;
    sampleRateFloat = (float) sr;

    // Exact comparison, in this order; any other rate leaves the index as it was.
    if (sr == 44100.0)
        rateIndex = 0;
    else if (sr == 48000.0)
        rateIndex = 1;
    else if (sr == 88200.0)
        rateIndex = 2;
    else if (sr == 96000.0)
        rateIndex = 3;
    else if (sr == 192000.0)
        rateIndex = 4;

    samplePeriod = 1.0 / sr;
    samplePeriodFloat = (float) samplePeriod;
    halfSamplePeriod = 1.0 / (2.0 * sr);
    rateRatio = sr * 2.2675736961451248e-05;
    rateRatioFloat = (float) rateRatio;
    inverseRateRatio = 44100.0 / sr;
    rateScale = 2.0 * (1.0 - std::pow(0.5, inverseRateRatio));
    rateScaleFloat = (float) rateScale;
    rateScaleCubed = rateScale * rateScale * rateScale;
    rateScaleCubedFloat = (float) rateScaleCubed;
    nyquist = sr * 0.5;
    smoothing002 = rateScale * 0.002;
    smoothing002Float = (float) smoothing002;
    smoothing005Float = (float) (rateScale * 0.005);
    smoothing0001Float = (float) (rateScale * 0.0001);
    smoothing002b = smoothing002;
    smoothing002bFloat = smoothing002Float;
}
