#pragma once

#include "editor/GUIController.h"

// A light or an indicator: shows the frame its parameter selects, blinks,
// and flashes frame 1 for 175 ms. Message thread.
class GFXAnimation : public BaseGFXController, public juce::Component, private juce::Timer
{
public:
    static constexpr int flashMs = 175;

    explicit GFXAnimation(const juce::String& name = {});

    juce::Component& getComponent() override { return *this; }
    void loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor) override;
    void updateFromParameter(Parameter& changed) override;
    void blinkChanged() override { repaint(); }

    void setFrame(int newFrame);
    int getFrame() const { return frame; }
    // The frame drawn now: frame 0 in a blink's off phase.
    int getShownFrame() const;

    void setRestFrame(int newRestFrame) { restFrame = newRestFrame; }
    void flash();

    void paint(juce::Graphics& g) override;

protected:
    // The drawing without an image.
    virtual void paintSubstitute(juce::Graphics& g);

private:
    void timerCallback() override;

    int frame = 0;
    int restFrame = 0;
};
