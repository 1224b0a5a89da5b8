#include "sequencer/ShuffledClock.h"

ShuffledClock::ShuffledClock(const juce::String& clockName)
    : Clock(clockName)
{
}

ShuffledClock::~ShuffledClock() = default;

bool ShuffledClock::isNearPreviousStep() const
{
    const double stepLen = 1.0 / stepsPerBeat;
    const double pairLen = 2.0 * stepLen;
    const double pairEnd = std::ceil(position / pairLen) * pairLen;
    const double mid = pairEnd - stepLen + shuffle * stepLen;
    if (mid >= position)
        return mid - position > position - (pairEnd - pairLen);
    return pairEnd - position > position - mid;
}

void ShuffledClock::schedulePairChange()
{
    const double spb = beginUpdate();
    const double stepLen = 1.0 / stepsPerBeat;
    const double tol = stepLen * toleranceInSteps;
    const double pairLen = 2.0 * stepLen;
    const double pairEnd = std::ceil(position / pairLen) * pairLen;
    const double pairStart = pairEnd - pairLen;
    const double mid = pairEnd - stepLen + shuffle * stepLen;
    const double firstPulseEnd = pairStart + (mid - pairStart) * pulseWidth;
    const double nextFirstPulseEnd = pairEnd + (mid - pairStart) * pulseWidth;
    const double secondPulseEnd = mid + (pairEnd - mid) * pulseWidth;

    if (position < 0.0)
    {
        nextState = 0;
        state = -1;
        samplesToChange = -1;
        return;
    }

    // Which state follows the one in force, and when, by where the position
    // lies in the pair. A clock behind its schedule runs through the missed
    // states one per sample.
    auto now = [this](int following)
    {
        nextState = following;
        samplesToChange = 0;
    };
    auto waitFor = [this, spb](int following, double target)
    {
        nextState = following;
        samplesToChange = samplesUntil(target, spb);
    };

    if (state == -1)
    {
        now(0);
    }
    else if (position <= firstPulseEnd)
    {
        switch (state)
        {
            case 0:
                waitFor(1, firstPulseEnd);
                break;
            case 1:
                waitFor(2, mid);
                break;
            case 2:
                waitFor(3, secondPulseEnd);
                break;
            case 3:
                if (position > pairStart + tol)
                    waitFor(0, pairEnd);
                else
                    now(0);
                break;
            default:
                break;
        }
    }
    else if (position <= mid)
    {
        switch (state)
        {
            case 0:
                now(1);
                break;
            case 1:
                waitFor(2, mid);
                break;
            case 2:
                waitFor(3, secondPulseEnd);
                break;
            case 3:
                waitFor(0, pairEnd);
                break;
            default:
                break;
        }
    }
    else if (position <= secondPulseEnd)
    {
        switch (state)
        {
            case 0:
                now(1);
                break;
            case 1:
                now(2);
                break;
            case 2:
                waitFor(3, secondPulseEnd);
                break;
            case 3:
                waitFor(0, pairEnd);
                break;
            default:
                break;
        }
    }
    else
    {
        switch (state)
        {
            case 0:
                if (position > pairEnd - tol)
                    waitFor(1, nextFirstPulseEnd);
                else
                    now(1);
                break;
            case 1:
                now(2);
                break;
            case 2:
                now(3);
                break;
            case 3:
                waitFor(0, pairEnd);
                break;
            default:
                break;
        }
    }
}
