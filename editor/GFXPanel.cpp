#include "editor/GFXPanel.h"

#include "editor/SkinControls.h"

GFXRocker::GFXRocker(const juce::String& name)
    : juce::Component(name)
{
}

void GFXRocker::addAction(const juce::String& type, int eventUid, const juce::String&)
{
    if (type == "onLessClick")
        lessEvent = eventUid;
    else if (type == "onMoreClick")
        moreEvent = eventUid;
    else if (type == "onLessClickWithCtrl")
        lessCtrlEvent = eventUid;
    else if (type == "onMoreClickWithCtrl")
        moreCtrlEvent = eventUid;
}

void GFXRocker::loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor)
{
    BaseGFXController::loadFromXml(xml, parameters, events, editor);
    const auto typeName = xml.getStringAttribute("type", "vertical");
    if (typeName == "vertical")
        type = verticalType;
    else if (typeName == "horizontal")
        type = horizontalType;
}

void GFXRocker::mouseDown(const juce::MouseEvent& e)
{
    const bool more = type == verticalType ? e.y < getHeight() / 2 : e.x > getWidth() / 2;
    const bool ctrl = e.mods.isCtrlDown();
    position = more ? morePressed : lessPressed;
    repaint();
    sendEvent(more ? (ctrl ? moreCtrlEvent : moreEvent) : (ctrl ? lessCtrlEvent : lessEvent));
}

void GFXRocker::mouseDrag(const juce::MouseEvent& e)
{
    // The rocker's bounds are in its parent's coordinates and the position in
    // its own: a rocker near the parent's top left shows rest while dragged.
    insideFlag = getBounds().contains(e.getPosition());
    repaint();
}

void GFXRocker::mouseUp(const juce::MouseEvent&)
{
    position = atRest;
    insideFlag = false;
    repaint();
}

void GFXRocker::paint(juce::Graphics& g)
{
    if (drawFrame(g, getFrame()))
        return;

    g.fillAll(juce::Colour::greyLevel(0.7f));
    g.setColour(juce::Colours::black);
    g.drawRect(getLocalBounds());
    auto half = getLocalBounds().toFloat();
    const auto pressed = getFrame();
    if (pressed != atRest)
    {
        const bool more = pressed == morePressed;
        const auto area = type == verticalType ? (more ? half.removeFromTop(half.getHeight() / 2) : half.removeFromBottom(half.getHeight() / 2))
                                               : (more ? half.removeFromRight(half.getWidth() / 2) : half.removeFromLeft(half.getWidth() / 2));
        g.setColour(juce::Colour::greyLevel(0.4f));
        g.fillRect(area.reduced(1.0f));
    }
}

//==============================================================================
GFXPanel::GFXPanel(const juce::String& name)
    : juce::Component(name)
{
    setInterceptsMouseClicks(false, true);
}

GFXPanel::~GFXPanel()
{
    // The controls stop listening before their components go.
    const juce::ScopedLock sl(controllersLock);
    controllers.clear();
    childComponents.clear();
}

void GFXPanel::loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor)
{
    BaseGFXController::loadFromXml(xml, parameters, events, editor);

    if (const auto* gfx = xml.getChildByName("gfx"))
        transparent = gfx->getBoolAttribute("transparent", false);

    const auto* children = xml.getChildByName("controls");
    if (children == nullptr)
        return;

    for (const auto* child : children->getChildIterator())
    {
        GUIController* controller = nullptr;
        auto component = createSkinControl(child->getTagName(), child->getStringAttribute("name"), controller);
        if (component == nullptr)
            continue;

        controller->loadFromXml(*child, parameters, events, editor);
        addControl(std::move(component), controller);
    }

    const int ofsX = children->getIntAttribute("ofsX", 0);
    const int ofsY = children->getIntAttribute("ofsY", 0);
    for (auto* component : childComponents)
        component->setTopLeftPosition(component->getPosition() + juce::Point<int>(ofsX, ofsY));
}

void GFXPanel::addControl(std::unique_ptr<juce::Component> component, GUIController* controller)
{
    {
        const juce::ScopedLock sl(controllersLock);
        controllers.add(controller);
    }
    addAndMakeVisible(*component);
    childComponents.add(component.release());
}

juce::Array<GUIController*> GFXPanel::getControllers() const
{
    const juce::ScopedLock sl(controllersLock);
    return controllers;
}

void GFXPanel::addListener(Listener* listener)
{
    GUIController::addListener(listener);
    for (auto* controller : getControllers())
        controller->addListener(listener);
}

void GFXPanel::showFromParameter(Parameter& source)
{
    setVisible(source.getBool());
}

void GFXPanel::showFromNegatedParameter(Parameter& source)
{
    setVisible(!source.getBool());
}

void GFXPanel::paint(juce::Graphics& g)
{
    if (transparent)
        return;
    if (!drawFrame(g, 0))
        g.fillAll(juce::Colour::greyLevel(0.9f));
}
