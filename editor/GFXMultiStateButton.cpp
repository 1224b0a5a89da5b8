#include "editor/GFXMultiStateButton.h"

#include "editor/GFXButton.h"

#include <cmath>

GFXMultiStateButton::GFXMultiStateButton(const juce::String& name)
    : juce::Button(name)
{
    setWantsKeyboardFocus(false);
}

void GFXMultiStateButton::addAction(const juce::String& type, int eventUid, const juce::String&)
{
    // The tooltip of an event is dropped: these buttons show none.
    if (type == "onClick")
        clickEvent = eventUid;
    else if (type == "onClickWithCtrl")
        ctrlClickEvent = eventUid;
}

void GFXMultiStateButton::loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml(xml, parameters, events, editor);
    readPos(xml);
    readSize(xml);

    style = reads3DStyle(xml) ? style3D : style2D;

    const int states = xml.getIntAttribute("states", 2);
    if (states >= 2)
        statesNum = states;

    // The frame count comes from the states and the style, whatever framesNum says.
    readGfx(xml, style == style3D ? 2 * statesNum : statesNum);

    const auto when = xml.getStringAttribute("clickEvent", "onRelease");
    if (when == "onPress")
        setTriggeredOnMouseDown(true);
    else if (when == "onRelease")
        setTriggeredOnMouseDown(false);

    setRadioGroupId(xml.getIntAttribute("radioGroupId", 0));
    applyBounds();
}

void GFXMultiStateButton::updateFromParameter(Parameter& changed)
{
    const double value = juce::jlimit(0.0, 1.0, changed.getNormalised());
    setCurrentState((int) std::floor((statesNum - 1) * value + 0.5));
}

void GFXMultiStateButton::setCurrentState(int newState)
{
    if (newState != state)
    {
        state = newState;
        repaint();
    }
}

void GFXMultiStateButton::flash()
{
    state = 1;
    repaint();
    startTimer(flashMs);
}

void GFXMultiStateButton::timerCallback()
{
    stopTimer();
    state = 0;
    repaint();
}

void GFXMultiStateButton::setRunningLight(bool on)
{
    if (on != runningLight)
    {
        runningLight = on;
        repaint();
    }
}

int GFXMultiStateButton::getFrame() const
{
    int shown = isBlinking() && blinkOff ? 0 : state;
    if (runningLight)
        shown = state > 0 ? 0 : statesNum - 1;

    return style == style3D ? 2 * shown + (isPressed() ? 1 : 0) : shown;
}

void GFXMultiStateButton::click(const juce::ModifierKeys& modifiers)
{
    juce::Component::SafePointer<juce::Component> alive(this);
    clicked(modifiers);
    if (alive != nullptr && onClick != nullptr)
        onClick();
}

void GFXMultiStateButton::clicked(const juce::ModifierKeys& modifiers)
{
    sendEvent(modifiers.isCtrlDown() ? ctrlClickEvent : clickEvent);
}

void GFXMultiStateButton::mouseDown(const juce::MouseEvent& e)
{
    if (ButtonPress::down(*this, e))
        click(e.mods);
}

void GFXMultiStateButton::mouseDrag(const juce::MouseEvent& e)
{
    ButtonPress::drag(*this, e);
}

void GFXMultiStateButton::mouseUp(const juce::MouseEvent& e)
{
    if (ButtonPress::up(*this, e))
        click(e.mods);
}

void GFXMultiStateButton::paintButton(juce::Graphics& g, bool, bool)
{
    if (drawFrame(g, getFrame()))
        return;

    int shown = isBlinking() && blinkOff ? 0 : state;
    if (runningLight)
        shown = state > 0 ? 0 : statesNum - 1;
    if (isPressed())
        g.fillAll(juce::Colour::greyLevel(0.8f));
    drawDotBox(g, getLocalBounds(), (float) shown / (float) juce::jmax(1, statesNum - 1));
}
