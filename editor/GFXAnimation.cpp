#include "editor/GFXAnimation.h"

#include <cmath>

GFXAnimation::GFXAnimation(const juce::String& name)
    : juce::Component(name)
{
    setInterceptsMouseClicks(false, false);
}

void GFXAnimation::loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor)
{
    BaseGFXController::loadFromXml(xml, parameters, events, editor);
    frame = 0;
}

void GFXAnimation::updateFromParameter(Parameter& changed)
{
    const double value = juce::jlimit(0.0, 1.0, changed.getNormalised());
    setFrame((int) std::floor((framesNum - 1) * value + 0.5));
}

void GFXAnimation::setFrame(int newFrame)
{
    if (newFrame != frame)
    {
        frame = newFrame;
        repaint();
    }
}

int GFXAnimation::getShownFrame() const
{
    return isBlinking() && blinkOff ? 0 : frame;
}

void GFXAnimation::flash()
{
    setFrame(1);
    startTimer(flashMs);
}

void GFXAnimation::timerCallback()
{
    stopTimer();
    frame = restFrame;
    repaint();
}

void GFXAnimation::paint(juce::Graphics& g)
{
    if (!drawFrame(g, getShownFrame()))
        paintSubstitute(g);
}

void GFXAnimation::paintSubstitute(juce::Graphics& g)
{
    drawDotBox(g, getLocalBounds(), framesNum > 1 ? (float) getShownFrame() / (float) (framesNum - 1) : 0.0f);
}
