#pragma once

#include "editor/CallbackTimer.h"
#include "parameters/EventMap.h"
#include "parameters/ParameterManager.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>

class BasePluginEditor;

// Lets a control blink: a private timer flips blinkOff every half period and
// blinkChanged redraws the control in its on or off picture. Message thread.
class BlinkingComponent
{
public:
    static constexpr int defaultBlinkIntervalMs = 150;

    BlinkingComponent();
    virtual ~BlinkingComponent();

    virtual void blinkChanged() {}

    // On: starts in the on phase; a non-zero interval replaces the half
    // period. Off: stops, and tells blinkChanged only if it was blinking.
    void setBlinking(bool on, int intervalMs = 0);
    bool isBlinking() const;
    bool isBlinkOff() const { return blinkOff; }
    int getBlinkInterval() const { return blinkIntervalMs; }

protected:
    // True while the control must show its off picture.
    bool blinkOff = false;

private:
    std::unique_ptr<CallbackTimer> blinkTimer;
    int blinkIntervalMs = defaultBlinkIntervalMs;
};

// Every control of the panel: one juce::Component tied to at most one
// parameter and any number of events. A parameter's change reaches the
// control through the parameter's asynchronous listeners, on the message
// thread; the user's moves go back to the parameter with gestures, and clicks
// go to the listeners (the editor) as event uids. The parameter, not the
// control, holds the value. Message thread only.
class GUIController : public Parameter::Listener, public BlinkingComponent
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void controllerGestureBegan(GUIController&) {}
        virtual void controllerGestureEnded(GUIController&) {}
        virtual void controllerValueChanged(GUIController&) {}
        virtual void controllerEvent(GUIController&, int /*eventUid*/) {}
    };

    GUIController() = default;
    ~GUIController() override;

    // Parameter::Listener: forwards to updateFromParameter.
    void parameterChanged(Parameter& changed) override;

    virtual void addAction(const juce::String& /*type*/, int /*eventUid*/, const juce::String& /*tooltip*/) {}
    virtual void updateFromParameter(Parameter&) {}
    virtual void addListener(Listener* listener);
    // Reads the links and actions of a skin element; subclasses read the rest.
    virtual void loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor);

    void removeListener(Listener* listener);

    // Ties the control to one parameter (or none), leaving the one before.
    void connectToParameter(Parameter* newParameter);
    Parameter* getParameter() const { return parameter; }

    // The control as a component; every concrete control is one.
    virtual juce::Component& getComponent() = 0;

    // The text of an event's name as its tooltip: "Toggle midi learn".
    static juce::String makeTooltip(const juce::String& eventName);

protected:
    // The user's gesture on the connected parameter: its synchronous
    // listeners hear of it first, then this control's listeners. Nothing
    // happens without a parameter.
    void beginGesture();
    void endGesture();
    // After the control has written its parameter.
    void sendValueChanged();
    // A click's event, to every listener; -1 is no event.
    void sendEvent(int eventUid);

    juce::Array<Listener*> listeners;
    Parameter* parameter = nullptr;

private:
    template <typename Call>
    void callListeners(Call&& call);
};

// A control that draws frames of one vertical image strip, copied 1:1 to its
// origin. With no image it draws a plain substitute of its own, and takes its
// size from the skin. Message thread.
class BaseGFXController : public GUIController
{
public:
    virtual void sizeChanged();
    virtual void positionChanged();

    // Reads gfx, then size only if there was no image, then pos.
    void loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor) override;

    // Frames are image height / frames rows high, in integer arithmetic; the
    // rows left over are never drawn.
    void setImage(const juce::Image& newImage, int frames);

    const juce::Image& getImage() const { return image; }
    int getFramesNum() const { return framesNum; }
    int getFrameWidth() const { return width; }
    int getFrameHeight() const { return height; }

protected:
    // The pieces of loadFromXml, for the classes that read them in another order.
    void readGfx(const juce::XmlElement& xml, int framesOverride = 0);
    void readSize(const juce::XmlElement& xml);
    void readPos(const juce::XmlElement& xml);
    void applyBounds();

    // The "style" attribute of the two-state buttons: "3D" or, by default, "2D".
    static bool reads3DStyle(const juce::XmlElement& xml) { return xml.getStringAttribute("style", "2D") == "3D"; }

    // Draws frame (clamped to the strip) at the origin; false with no image.
    bool drawFrame(juce::Graphics& g, int frame) const;

    // A no-image substitute's frame: a 16 by 16 box at the centre of bounds
    // with a dot that grows with level 0 to 1.
    static void drawDotBox(juce::Graphics& g, juce::Rectangle<int> bounds, float level);

    // A no-image substitute's label: the name wrapped to the width in two
    // lines (one on a short control), taken off the top of area.
    static void drawNameAbove(juce::Graphics& g, juce::Rectangle<int>& area, const juce::String& name, const juce::Colour& colour);

    juce::Image image;
    int framesNum = 1;
    int width = 0, height = 0;
    int left = 0, top = 0;
};
