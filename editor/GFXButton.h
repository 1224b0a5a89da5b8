#pragma once

#include "editor/GUIController.h"

// The press of a bitmap button, judged from each mouse event's own position
// rather than from the system pointer, so that buttons behave the same in a
// host, headless and under a test's hand. Each returns true when a click is
// due now.
namespace ButtonPress
{
bool isInside(const juce::Button& button, const juce::MouseEvent& e);
// Down on an enabled button; a click is due if it triggers on press.
bool down(juce::Button& button, const juce::MouseEvent& e);
// Pressed while over the button, released while off it. True when the
// button has just come back under the held mouse.
bool drag(juce::Button& button, const juce::MouseEvent& e);
// A click is due on release over a pressed button that triggers on release.
bool up(juce::Button& button, const juce::MouseEvent& e);
} // namespace ButtonPress

// A bitmap push button: frame 1 while pressed, frame 0 otherwise. A click
// fires the "onClick" event, or with Ctrl held the "onClickWithCtrl" one and
// never the plain one; it triggers on release or on press, and may repeat
// while held (after 1000 ms, then every 100 ms). Its tooltip names what a
// click would do with the modifier keys of the moment. Message thread.
class GFXButton : public BaseGFXController, public juce::Button
{
public:
    static constexpr int repeatDelayMs = 1000, repeatIntervalMs = 100;

    explicit GFXButton(const juce::String& name = {});
    ~GFXButton() override;

    juce::Component& getComponent() override { return *this; }
    void addAction(const juce::String& type, int eventUid, const juce::String& tooltip) override;
    void loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor) override;

    // "onPress" triggers on mouse down, "onRelease" on mouse up; other texts
    // change nothing.
    void setClickEvent(const juce::String& when);
    // Repeats while held, or not.
    void setAutoRepeat(bool shouldRepeat);
    bool isAutoRepeat() const { return autoRepeatSpeed > 0; }

    int getClickEventUid() const { return clickEvent; }
    int getCtrlClickEventUid() const { return ctrlClickEvent; }

    // Fires the event the modifiers select, then the button's onClick.
    void click(const juce::ModifierKeys& modifiers);

    void clicked(const juce::ModifierKeys& modifiers) override;
    void paintButton(juce::Graphics& g, bool highlighted, bool down) override;
    void mouseDown(const juce::MouseEvent& e) override;
    void mouseDrag(const juce::MouseEvent& e) override;
    void mouseUp(const juce::MouseEvent& e) override;
    void mouseEnter(const juce::MouseEvent& e) override;
    void modifierKeysChanged(const juce::ModifierKeys& modifiers) override;

protected:
    void updateTooltip(const juce::ModifierKeys& modifiers);
    // The no-image drawing: the name on a light face, dark while pressed.
    virtual void paintSubstitute(juce::Graphics& g, bool down);

    int clickEvent = -1, ctrlClickEvent = -1;
    juce::String clickTooltip, ctrlClickTooltip;

private:
    void repeat();

    int autoRepeatDelay = -1, autoRepeatSpeed = 0;
    CallbackTimer repeatTimer;
};

// A button without a bitmap, drawn in the look and feel's colours with the
// panel's font, whose events work as a bitmap button's. The alert window's
// buttons are these. Message thread.
class TextButtonEx : public GFXButton
{
public:
    // A tooltip, if given, is shown whatever the modifier keys.
    explicit TextButtonEx(const juce::String& text = {}, const juce::String& tooltip = {});

protected:
    void paintSubstitute(juce::Graphics& g, bool down) override;
};
