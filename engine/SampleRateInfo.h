#pragma once

// Constants derived from the sample rate, filled by one function. The engine
// and every instrument hold a copy; all copies are filled with the same rate.
//
// rateScale k = 2(1 - 0.5^(44100/sr)) is how a per-sample coefficient tuned at
// 44.1 kHz is carried to other rates (c becomes c*k). It is exact only for
// c = 0.5; the approximation elsewhere is part of the sound.
struct SampleRateInfo
{
    double sampleRate = 0.0;
    float sampleRateFloat = 0.0f;
    int rateIndex = 0; // 0..4 for 44.1, 48, 88.2, 96, 192 kHz; unknown rates keep it
    double samplePeriod = 0.0;
    float samplePeriodFloat = 0.0f;
    double halfSamplePeriod = 0.0;
    double rateRatio = 0.0; // sr / 44100
    float rateRatioFloat = 0.0f;
    double rateScale = 0.0; // k
    float rateScaleFloat = 0.0f;
    double inverseRateRatio = 0.0; // 44100 / sr
    double rateScaleCubed = 0.0;
    float rateScaleCubedFloat = 0.0f;
    double nyquist = 0.0;
    double smoothing002 = 0.0;
    float smoothing002Float = 0.0f;
    float smoothing005Float = 0.0f;
    float smoothing0001Float = 0.0f;
    double smoothing002b = 0.0;
    float smoothing002bFloat = 0.0f;

    SampleRateInfo() { fill(44100.0); }

    void fill(double sr);
};
