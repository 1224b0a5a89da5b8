#include "editor/GFXToggleButton.h"

#include "editor/DefaultLookAndFeel.h"
#include "editor/GFXButton.h"

GFXToggleButtonDragGroup* GFXToggleButtonDragGroup::instance = nullptr;
juce::CriticalSection GFXToggleButtonDragGroup::creationLock;

GFXToggleButtonDragGroup::~GFXToggleButtonDragGroup()
{
    const juce::ScopedLock sl(creationLock);
    if (instance == this)
        instance = nullptr;
}

GFXToggleButtonDragGroup* GFXToggleButtonDragGroup::getInstance()
{
    const juce::ScopedLock sl(creationLock);
    if (instance == nullptr)
        instance = new GFXToggleButtonDragGroup();
    return instance;
}

void GFXToggleButtonDragGroup::add(const juce::String& name, GFXToggleButton* button)
{
    groups[name].buttons.addIfNotAlreadyThere(button);
}

void GFXToggleButtonDragGroup::remove(const juce::String& name, GFXToggleButton* button)
{
    const auto found = groups.find(name);
    if (found == groups.end())
        return;
    found->second.buttons.removeFirstMatchingValue(button);
    if (found->second.buttons.isEmpty())
        groups.erase(found);
}

GFXToggleButtonDragGroup::Group* GFXToggleButtonDragGroup::find(const juce::String& name)
{
    const auto found = groups.find(name);
    return found != groups.end() ? &found->second : nullptr;
}

//==============================================================================
GFXToggleButton::GFXToggleButton(const juce::String& name)
    : juce::Button(name)
{
    setClickingTogglesState(true);
    setWantsKeyboardFocus(false);
}

GFXToggleButton::~GFXToggleButton()
{
    // The registry lives to shutdown; a button must not stay in it once gone.
    if (dragGroupRegistry != nullptr)
        dragGroupRegistry->remove(dragGroup, this);
}

void GFXToggleButton::loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml(xml, parameters, events, editor);
    readPos(xml);
    readSize(xml);

    style = reads3DStyle(xml) ? style3D : style2D;

    readGfx(xml, style == style3D ? 4 : 2);

    const auto when = xml.getStringAttribute("clickEvent", "onRelease");
    if (when == "onPress")
        setTriggeredOnMouseDown(true);
    else if (when == "onRelease")
        setTriggeredOnMouseDown(false);

    if (const int group = xml.getIntAttribute("radioGroupId", 0); group != 0)
        setRadioGroupId(group);

    if (xml.hasAttribute("dragGroup"))
        setDragGroup(xml.getStringAttribute("dragGroup"));

    applyBounds();
}

void GFXToggleButton::setDragGroup(const juce::String& groupName)
{
    if (dragGroupRegistry != nullptr)
        dragGroupRegistry->remove(dragGroup, this);

    dragGroup = groupName;
    dragGroupRegistry = GFXToggleButtonDragGroup::getInstance();
    dragGroupRegistry->add(dragGroup, this);
}

void GFXToggleButton::setInverted(bool shouldInvert)
{
    inverted = shouldInvert;
    repaint();
}

void GFXToggleButton::updateFromParameter(Parameter& changed)
{
    setToggleState(changed.getBool(), juce::dontSendNotification);
}

void GFXToggleButton::click(const juce::ModifierKeys& modifiers)
{
    // As the library's toggles: a radio button only turns on.
    const bool shouldBeOn = getRadioGroupId() != 0 || !getToggleState();
    if (shouldBeOn != getToggleState())
        setToggleState(shouldBeOn, juce::sendNotification);
    else
        juce::Button::clicked(modifiers);
}

void GFXToggleButton::clicked()
{
    if (parameter != nullptr)
    {
        parameter->setBool(getToggleState(), true);
        sendValueChanged();
    }

    if (dragGroupRegistry != nullptr)
        if (auto* group = dragGroupRegistry->find(dragGroup))
            group->value = getToggleState();
}

void GFXToggleButton::mouseDown(const juce::MouseEvent& e)
{
    if (ButtonPress::down(*this, e))
        click(e.mods);

    if (dragGroupRegistry != nullptr)
        if (auto* group = dragGroupRegistry->find(dragGroup))
        {
            group->mouseDownX = e.getScreenX();
            group->mouseDownY = e.getScreenY();
        }
}

void GFXToggleButton::mouseDrag(const juce::MouseEvent& e)
{
    ButtonPress::drag(*this, e);

    auto* group = dragGroupRegistry != nullptr ? dragGroupRegistry->find(dragGroup) : nullptr;
    if (group == nullptr)
        return;

    // Only x counts: every toggle of the group with an edge inside the span
    // swept since mouse down takes the group's value.
    const int x = e.getScreenX();
    const int a = juce::jmin(x, group->mouseDownX);
    const int b = juce::jmax(x, group->mouseDownX);
    const bool value = group->value;

    for (auto* button : juce::Array<GFXToggleButton*>(group->buttons))
    {
        const int leftEdge = button->getScreenX();
        const int rightEdge = leftEdge + button->getWidth() - 1;
        if ((leftEdge >= a && leftEdge <= b) || (rightEdge >= a && rightEdge <= b))
            button->setToggleState(value, juce::sendNotification);
    }
}

void GFXToggleButton::mouseUp(const juce::MouseEvent& e)
{
    if (ButtonPress::up(*this, e))
        click(e.mods);
}

bool GFXToggleButton::isShownOn() const
{
    if (!isEnabled() || (isBlinking() && blinkOff))
        return false;
    return getToggleState() != inverted;
}

int GFXToggleButton::getFrame() const
{
    const bool on = isShownOn();
    if (style == style2D)
        return on ? 1 : 0;
    return on ? 2 + (getState() == juce::Button::buttonDown ? 1 : 0) : 0;
}

void GFXToggleButton::paintButton(juce::Graphics& g, bool, bool down)
{
    if (drawFrame(g, getFrame()))
        return;

    auto area = getLocalBounds();
    g.fillAll(juce::Colour::greyLevel(down ? 0.6f : 0.7f));
    drawNameAbove(g, area, parameter != nullptr ? parameter->getName() : getName(), juce::Colours::black);

    const bool on = isShownOn();
    g.setFont(DefaultLookAndFeel::getPanelFont(13.0f, on));
    g.drawText(on ? "On" : "Off", area.removeFromBottom(15), juce::Justification::centred);

    const auto lamp = juce::Rectangle<float>(12.0f, 12.0f).withCentre(area.toFloat().getCentre());
    g.setColour(on ? juce::Colour(0xFFE04020) : juce::Colour::greyLevel(0.4f));
    g.fillEllipse(lamp);
    g.setColour(juce::Colour::greyLevel(0.2f));
    g.drawEllipse(lamp, 1.0f);
}
