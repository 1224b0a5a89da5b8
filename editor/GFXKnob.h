#pragma once

#include "editor/GUIController.h"

#include <functional>

// A bitmap knob: a juce::Slider in rotary vertical drag, with the frame of its
// strip chosen by the value. A vertical drag of 250 pixels covers the range
// from where the value stood at mouse down; Ctrl or Alt turns it into a
// velocity drag (fine when slow, coarse when fast); the wheel moves 0.15 of
// the range a notch. No double click, no keys, no value bubble; disabled it
// ignores the mouse and shows frame 0. The value is normalised throughout.
// Message thread.
class GFXKnob : public BaseGFXController, public juce::Slider
{
public:
    GFXKnob();

    juce::Component& getComponent() override { return *this; }
    void updateFromParameter(Parameter& changed) override;

    // The frame shown now.
    virtual int getFrame() const;

    // The value's text in the no-image drawing; the parameter's own text if unset.
    void setValueText(std::function<juce::String(const Parameter&)> textOfValue) { valueText = std::move(textOfValue); }

    void paint(juce::Graphics& g) override;
    void mouseWheelMove(const juce::MouseEvent& e, const juce::MouseWheelDetails& wheel) override;
    bool keyPressed(const juce::KeyPress&) override { return false; }
    void enablementChanged() override { repaint(); }

protected:
    void valueChanged() override;
    void startedDragging() override { beginGesture(); }
    void stoppedDragging() override { endGesture(); }

    // The no-image drawing: the library's slider on grey, the parameter's
    // name above and its value below.
    void paintSubstitute(juce::Graphics& g);

private:
    std::function<juce::String(const Parameter&)> valueText;
};

// A bitmap switch of a few positions: as a knob, but in steps of 0.005, and
// in one of three styles. The position itself comes back from the parameter
// (an enum or int one rounds the write), which moves the picture. Message
// thread.
class GFXSwitch : public GFXKnob
{
public:
    static constexpr int verticalStyle = 0, horizontalStyle = 1, rotaryStyle = 2;

    GFXSwitch();

    void loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor) override;
    int getFrame() const override;

    // Unknown names leave the style as it was.
    void setSwitchStyle(const juce::String& styleName);
    int getSwitchStyle() const { return switchStyle; }

private:
    int switchStyle = rotaryStyle;
};
