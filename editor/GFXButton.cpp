#include "editor/GFXButton.h"

#include "editor/DefaultLookAndFeel.h"

namespace ButtonPress
{
bool isInside(const juce::Button& button, const juce::MouseEvent& e)
{
    return button.getLocalBounds().toFloat().contains(e.position);
}

bool down(juce::Button& button, const juce::MouseEvent&)
{
    if (!button.isEnabled())
        return false;
    button.setState(juce::Button::buttonDown);
    return button.getTriggeredOnMouseDown();
}

bool drag(juce::Button& button, const juce::MouseEvent& e)
{
    if (!button.isEnabled())
        return false;
    const bool wasDown = button.getState() == juce::Button::buttonDown;
    const bool over = isInside(button, e);
    button.setState(over ? juce::Button::buttonDown : juce::Button::buttonNormal);
    return over && !wasDown;
}

bool up(juce::Button& button, const juce::MouseEvent& e)
{
    const bool wasDown = button.getState() == juce::Button::buttonDown;
    button.setState(isInside(button, e) ? juce::Button::buttonOver : juce::Button::buttonNormal);
    return wasDown && button.isEnabled() && !button.getTriggeredOnMouseDown();
}
} // namespace ButtonPress

//==============================================================================
GFXButton::GFXButton(const juce::String& name)
    : juce::Button(name)
    , repeatTimer([this]
                  { repeat(); })
{
    setWantsKeyboardFocus(false);
}

GFXButton::~GFXButton() = default;

void GFXButton::addAction(const juce::String& type, int eventUid, const juce::String& tooltip)
{
    if (type == "onClick")
    {
        clickEvent = eventUid;
        clickTooltip = tooltip;
    }
    else if (type == "onClickWithCtrl")
    {
        ctrlClickEvent = eventUid;
        ctrlClickTooltip = tooltip;
    }
    updateTooltip(juce::ModifierKeys());
}

void GFXButton::loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor)
{
    BaseGFXController::loadFromXml(xml, parameters, events, editor);
    setClickEvent(xml.getStringAttribute("clickEvent", "onRelease"));

    const auto repeatText = xml.getStringAttribute("autorepeat", "no");
    if (repeatText == "yes" || repeatText == "no")
        setAutoRepeat(repeatText == "yes");
}

void GFXButton::setClickEvent(const juce::String& when)
{
    if (when == "onPress")
        setTriggeredOnMouseDown(true);
    else if (when == "onRelease")
        setTriggeredOnMouseDown(false);
}

void GFXButton::setAutoRepeat(bool shouldRepeat)
{
    autoRepeatDelay = shouldRepeat ? repeatDelayMs : 0;
    autoRepeatSpeed = shouldRepeat ? repeatIntervalMs : 0;
    if (!shouldRepeat)
        repeatTimer.stopTimer();
}

void GFXButton::click(const juce::ModifierKeys& modifiers)
{
    juce::Component::SafePointer<juce::Component> alive(this);
    clicked(modifiers);
    if (alive != nullptr && onClick != nullptr)
        onClick();
}

void GFXButton::clicked(const juce::ModifierKeys& modifiers)
{
    sendEvent(modifiers.isCtrlDown() ? ctrlClickEvent : clickEvent);
}

void GFXButton::mouseDown(const juce::MouseEvent& e)
{
    if (!isEnabled())
        return;

    const bool fire = ButtonPress::down(*this, e);
    if (isAutoRepeat())
        repeatTimer.startTimer(autoRepeatDelay);
    if (fire)
        click(e.mods);
}

void GFXButton::mouseDrag(const juce::MouseEvent& e)
{
    if (ButtonPress::drag(*this, e) && isAutoRepeat())
        repeatTimer.startTimer(autoRepeatSpeed);
}

void GFXButton::mouseUp(const juce::MouseEvent& e)
{
    repeatTimer.stopTimer();
    if (ButtonPress::up(*this, e))
        click(e.mods);
}

void GFXButton::repeat()
{
    if (getState() != juce::Button::buttonDown || !isEnabled())
    {
        repeatTimer.stopTimer();
        return;
    }

    repeatTimer.startTimer(autoRepeatSpeed);
    click(juce::ModifierKeys::getCurrentModifiers());
}

void GFXButton::mouseEnter(const juce::MouseEvent& e)
{
    juce::Button::mouseEnter(e);
    updateTooltip(e.mods);
}

void GFXButton::modifierKeysChanged(const juce::ModifierKeys& modifiers)
{
    updateTooltip(modifiers);
}

void GFXButton::updateTooltip(const juce::ModifierKeys& modifiers)
{
    setTooltip(modifiers.isCtrlDown() && ctrlClickEvent >= 0 ? ctrlClickTooltip : clickTooltip);
}

void GFXButton::paintButton(juce::Graphics& g, bool, bool down)
{
    if (!drawFrame(g, down ? 1 : 0))
        paintSubstitute(g, down);
}

void GFXButton::paintSubstitute(juce::Graphics& g, bool down)
{
    g.fillAll(juce::Colour::greyLevel(down ? 0.4f : 0.9f));
    g.setColour(juce::Colours::black);
    g.drawRect(getLocalBounds(), 1);

    g.setColour(down ? juce::Colours::white : juce::Colours::black);
    g.setFont(DefaultLookAndFeel::getPanelFont(12.0f));
    g.drawFittedText(getName(), getLocalBounds().reduced(2), juce::Justification::centred, 3, 0.8f);
}

//==============================================================================
TextButtonEx::TextButtonEx(const juce::String& text, const juce::String& tooltip)
    : GFXButton(text)
{
    setButtonText(text);
    clickTooltip = ctrlClickTooltip = tooltip;
    updateTooltip(juce::ModifierKeys());
}

void TextButtonEx::paintSubstitute(juce::Graphics& g, bool down)
{
    const auto bounds = getLocalBounds().toFloat().reduced(0.5f);
    g.setColour(findColour(down ? juce::TextButton::buttonOnColourId : juce::TextButton::buttonColourId)
                    .withMultipliedAlpha(isEnabled() ? 1.0f : 0.5f));
    g.fillRoundedRectangle(bounds, 3.0f);
    g.setColour(findColour(juce::ComboBox::outlineColourId));
    g.drawRoundedRectangle(bounds, 3.0f, 1.0f);

    g.setColour(findColour(down ? juce::TextButton::textColourOnId : juce::TextButton::textColourOffId)
                    .withMultipliedAlpha(isEnabled() ? 1.0f : 0.5f));
    g.setFont(DefaultLookAndFeel::getPanelFont(juce::jmin(15.0f, (float) getHeight() * 0.6f)));
    g.drawFittedText(getButtonText(), getLocalBounds().reduced(4, 2), juce::Justification::centred, 1, 0.8f);
}
