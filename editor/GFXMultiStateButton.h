#pragma once

#include "editor/GUIController.h"

// A bitmap button of two or more states, each with its own frame ("2D") or
// an up and a down frame ("3D"). A click only fires its event: the state
// moves when the connected parameter comes back changed. It can blink, flash
// for 175 ms (the activity lights), and show the sequencer's running light,
// which inverts what it shows. Message thread.
class GFXMultiStateButton : public BaseGFXController, public juce::Button, private juce::Timer
{
public:
    static constexpr int style2D = 0, style3D = 1;
    static constexpr int flashMs = 175;

    explicit GFXMultiStateButton(const juce::String& name = {});

    juce::Component& getComponent() override { return *this; }
    void addAction(const juce::String& type, int eventUid, const juce::String& tooltip) override;
    void loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor) override;
    void updateFromParameter(Parameter& changed) override;
    void blinkChanged() override { repaint(); }

    int getCurrentState() const { return state; }
    void setCurrentState(int newState);
    int getStatesNum() const { return statesNum; }
    int getStyle() const { return style; }
    int getClickEventUid() const { return clickEvent; }
    int getCtrlClickEventUid() const { return ctrlClickEvent; }

    // Lights state 1 for 175 ms, then state 0; again while lit restarts the time.
    void flash();

    void setRunningLight(bool on);
    bool isRunningLight() const { return runningLight; }

    // The frame shown now.
    int getFrame() const;

    // Fires the event the modifiers select, then the button's onClick.
    void click(const juce::ModifierKeys& modifiers);

    void clicked(const juce::ModifierKeys& modifiers) override;
    void paintButton(juce::Graphics& g, bool highlighted, bool down) override;
    void mouseDown(const juce::MouseEvent& e) override;
    void mouseDrag(const juce::MouseEvent& e) override;
    void mouseUp(const juce::MouseEvent& e) override;

private:
    void timerCallback() override;
    bool isPressed() const { return juce::Button::getState() == juce::Button::buttonDown; }

    int style = style2D;
    int state = 0;
    int statesNum = 2;
    int clickEvent = -1, ctrlClickEvent = -1;
    bool runningLight = false;
};
