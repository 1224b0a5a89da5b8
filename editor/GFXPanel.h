#pragma once

#include "editor/GUIController.h"

// A bitmap rocker of three frames (less pressed, rest, more pressed): a press
// on the upper half of a vertical one, or the right half of a horizontal one,
// fires its "more" event, anywhere else its "less" event, each with a Ctrl
// variant. Message thread.
class GFXRocker : public BaseGFXController, public juce::Component
{
public:
    static constexpr int verticalType = 0, horizontalType = 1;
    static constexpr int lessPressed = 0, atRest = 1, morePressed = 2;

    explicit GFXRocker(const juce::String& name = {});

    juce::Component& getComponent() override { return *this; }
    void addAction(const juce::String& type, int eventUid, const juce::String& tooltip) override;
    void loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor) override;

    int getPosition() const { return position; }
    int getFrame() const { return insideFlag ? atRest : position; }

    void paint(juce::Graphics& g) override;
    void mouseDown(const juce::MouseEvent& e) override;
    void mouseDrag(const juce::MouseEvent& e) override;
    void mouseUp(const juce::MouseEvent& e) override;

private:
    int type = verticalType;
    int lessEvent = -1, moreEvent = -1, lessCtrlEvent = -1, moreCtrlEvent = -1;
    int position = atRest;
    bool insideFlag = false;
};

// A container of controls read from its own "controls" child, shifted by
// ofsX and ofsY; it passes clicks through to them. Its image, a grey fill
// without one, or nothing when transparent. Message thread.
class GFXPanel : public BaseGFXController, public juce::Component
{
public:
    explicit GFXPanel(const juce::String& name = {});
    ~GFXPanel() override;

    juce::Component& getComponent() override { return *this; }
    void loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor) override;
    void addListener(Listener* listener) override;

    // Shown while a bool parameter is on, or while it is off.
    virtual void showFromParameter(Parameter& source);
    virtual void showFromNegatedParameter(Parameter& source);

    // Adds a made control as the last child; the panel owns it.
    void addControl(std::unique_ptr<juce::Component> component, GUIController* controller);

    juce::Array<GUIController*> getControllers() const;
    bool isTransparent() const { return transparent; }

    void paint(juce::Graphics& g) override;

private:
    juce::CriticalSection controllersLock;
    juce::Array<GUIController*> controllers;
    juce::OwnedArray<juce::Component> childComponents;
    bool transparent = false;
};
