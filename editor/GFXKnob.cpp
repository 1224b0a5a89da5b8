#include "editor/GFXKnob.h"

#include "editor/DefaultLookAndFeel.h"

#include <cmath>

GFXKnob::GFXKnob()
{
    setTextBoxStyle(juce::Slider::NoTextBox, true, 0, 0);
    setSliderStyle(juce::Slider::RotaryVerticalDrag);
    setRange(0.0, 1.0, 0.0);
    setValue(0.0, juce::dontSendNotification);

    // The feel of a knob: these match the library's defaults today, and are
    // set so that a change of defaults cannot change the feel.
    setMouseDragSensitivity(250);
    setVelocityBasedMode(false);
    setVelocityModeParameters(1.0, 1, 0.0, true, juce::ModifierKeys::ctrlAltCommandModifiers);
    setScrollWheelEnabled(true);
    setDoubleClickReturnValue(false, 0.0);
    setPopupDisplayEnabled(false, false, nullptr);
    setWantsKeyboardFocus(false);
}

void GFXKnob::updateFromParameter(Parameter& changed)
{
    setValue(changed.getNormalised(), juce::dontSendNotification);
}

void GFXKnob::valueChanged()
{
    if (parameter == nullptr)
        return;

    parameter->setNormalised((float) getValue(), true);
    sendValueChanged();
}

int GFXKnob::getFrame() const
{
    if (!isEnabled())
        return 0;

    const double p = (getValue() - getMinimum()) / (getMaximum() - getMinimum());
    return (int) std::floor((framesNum - 1) * p + 0.5);
}

void GFXKnob::paint(juce::Graphics& g)
{
    if (!drawFrame(g, getFrame()))
        paintSubstitute(g);
}

void GFXKnob::mouseWheelMove(const juce::MouseEvent& e, const juce::MouseWheelDetails& wheel)
{
    if (!isEnabled() || !isScrollWheelEnabled())
    {
        juce::Component::mouseWheelMove(e, wheel);
        return;
    }

    if (e.mods.isAnyMouseButtonDown())
        return;

    // A sideways wheel counts reversed, and wins whenever it moves.
    float amount = wheel.deltaX != 0.0f ? -wheel.deltaX : wheel.deltaY;
    if (wheel.isReversed)
        amount = -amount;
    if (amount == 0.0f)
        return;

    const double proportion = juce::jlimit(0.0, 1.0, valueToProportionOfLength(getValue()) + 0.15 * amount);
    const juce::Slider::ScopedDragNotification gesture(*this);
    setValue(proportionOfLengthToValue(proportion), juce::sendNotificationSync);
}

void GFXKnob::paintSubstitute(juce::Graphics& g)
{
    auto area = getLocalBounds();
    g.fillAll(juce::Colour::greyLevel(0.7f));
    drawNameAbove(g, area, parameter != nullptr ? parameter->getName() : getName(), juce::Colours::black);

    juce::String text(getValue(), 2);
    if (parameter != nullptr)
        text = valueText != nullptr ? valueText(*parameter) : parameter->getText();
    g.setFont(DefaultLookAndFeel::getPanelFont(13.0f));
    g.drawFittedText(text, area.removeFromBottom(15).reduced(1, 0), juce::Justification::centred, 1, 0.8f);

    const auto proportion = (float) valueToProportionOfLength(getValue());
    const auto slider = area.reduced(2);
    if (!isRotary())
    {
        const bool horizontal = isHorizontal();
        const float position = horizontal ? (float) slider.getX() + proportion * (float) slider.getWidth()
                                          : (float) slider.getBottom() - proportion * (float) slider.getHeight();
        getLookAndFeel().drawLinearSlider(g, slider.getX(), slider.getY(), slider.getWidth(), slider.getHeight(), position, 0.0f, 0.0f,
                                          getSliderStyle(), *this);
        return;
    }

    // A plain knob: the track, the value's arc and a pointer.
    const auto rotary = getRotaryParameters();
    const float size = (float) juce::jmin(slider.getWidth(), slider.getHeight());
    const auto centre = slider.toFloat().getCentre();
    const float radius = size * 0.5f - 2.0f;
    const float angle = rotary.startAngleRadians + proportion * (rotary.endAngleRadians - rotary.startAngleRadians);

    juce::Path track, arc;
    track.addCentredArc(centre.x, centre.y, radius, radius, 0.0f, rotary.startAngleRadians, rotary.endAngleRadians, true);
    arc.addCentredArc(centre.x, centre.y, radius, radius, 0.0f, rotary.startAngleRadians, angle, true);
    const juce::PathStrokeType stroke(3.0f, juce::PathStrokeType::curved, juce::PathStrokeType::butt);
    g.setColour(juce::Colour::greyLevel(0.55f));
    g.strokePath(track, stroke);
    g.setColour(isEnabled() ? juce::Colour(0xFFD05020) : juce::Colour::greyLevel(0.45f));
    g.strokePath(arc, stroke);

    const float body = radius - 4.0f;
    g.setColour(juce::Colour::greyLevel(0.88f));
    g.fillEllipse(juce::Rectangle<float>(2.0f * body, 2.0f * body).withCentre(centre));
    g.setColour(juce::Colour::greyLevel(0.25f));
    g.drawLine(juce::Line<float>(centre, centre.getPointOnCircumference(body, angle)), 2.0f);
}

//==============================================================================
GFXSwitch::GFXSwitch()
{
    setRange(0.0, 1.0, 0.005);
    setValue(0.0, juce::dontSendNotification);
}

void GFXSwitch::loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor)
{
    GFXKnob::loadFromXml(xml, parameters, events, editor);
    if (xml.hasAttribute("style"))
        setSwitchStyle(xml.getStringAttribute("style"));
}

void GFXSwitch::setSwitchStyle(const juce::String& styleName)
{
    if (styleName == "Rotary")
    {
        switchStyle = rotaryStyle;
        setSliderStyle(juce::Slider::RotaryVerticalDrag);
    }
    else if (styleName == "Horizontal")
    {
        switchStyle = horizontalStyle;
        setSliderStyle(juce::Slider::LinearHorizontal);
    }
    else if (styleName == "Vertical")
    {
        switchStyle = verticalStyle;
        setSliderStyle(juce::Slider::LinearVertical);
    }
}

int GFXSwitch::getFrame() const
{
    if (!isEnabled())
        return 0;
    return (int) std::floor(getValue() * (framesNum - 1) + 0.5);
}
