#include "editor/GUIController.h"

#include "editor/DefaultLookAndFeel.h"
#include "editor/ResourceLoader.h"

BlinkingComponent::BlinkingComponent()
    : blinkTimer(std::make_unique<CallbackTimer>([this]
                                                 {
                                                     blinkOff = !blinkOff;
                                                     blinkChanged(); }))
{
}

BlinkingComponent::~BlinkingComponent() = default;

void BlinkingComponent::setBlinking(bool on, int intervalMs)
{
    if (on)
    {
        blinkOff = false;
        if (intervalMs != 0)
            blinkIntervalMs = intervalMs;
        blinkTimer->startTimer(blinkIntervalMs);
        blinkChanged();
    }
    else if (blinkTimer->isTimerRunning())
    {
        blinkTimer->stopTimer();
        blinkOff = false;
        blinkChanged();
    }
}

bool BlinkingComponent::isBlinking() const
{
    return blinkTimer->isTimerRunning();
}

//==============================================================================
GUIController::~GUIController()
{
    if (parameter != nullptr)
        parameter->removeAsyncListener(this);
}

void GUIController::parameterChanged(Parameter& changed)
{
    updateFromParameter(changed);
}

void GUIController::addListener(Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere(listener);
}

void GUIController::removeListener(Listener* listener)
{
    listeners.removeFirstMatchingValue(listener);
}

void GUIController::connectToParameter(Parameter* newParameter)
{
    if (parameter != nullptr)
        parameter->removeAsyncListener(this);

    parameter = newParameter;

    if (parameter != nullptr)
        parameter->addAsyncListener(this);
}

juce::String GUIController::makeTooltip(const juce::String& eventName)
{
    return eventName.substring(0, 1).toUpperCase() + eventName.substring(1).toLowerCase();
}

void GUIController::loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor*)
{
    if (const auto* links = xml.getChildByName("links"))
    {
        for (const auto* link : links->getChildWithTagNameIterator("link"))
        {
            auto* found = parameters.getParameter(link->getStringAttribute("param"));
            if (found != nullptr && link->getStringAttribute("as") == "connectedTo")
                connectToParameter(found);
        }
    }

    if (const auto* actions = xml.getChildByName("actions"))
    {
        for (const auto* action : actions->getChildWithTagNameIterator("action"))
        {
            const auto type = action->getStringAttribute("type");
            const auto eventName = action->getStringAttribute("event");
            const int uid = events.getUid(eventName);
            if (type.isNotEmpty() && uid >= 0)
                addAction(type, uid, makeTooltip(eventName));
        }
    }
}

// Last to first, the index clamped after each call, so that a listener may
// remove itself or others while it is called.
template <typename Call>
void GUIController::callListeners(Call&& call)
{
    for (int i = listeners.size(); --i >= 0;)
    {
        call(*listeners.getUnchecked(i));
        i = juce::jmin(i, listeners.size());
    }
}

void GUIController::beginGesture()
{
    if (parameter == nullptr)
        return;
    parameter->beginGesture();
    callListeners([this](Listener& l)
                  { l.controllerGestureBegan(*this); });
}

void GUIController::endGesture()
{
    if (parameter == nullptr)
        return;
    parameter->endGesture();
    callListeners([this](Listener& l)
                  { l.controllerGestureEnded(*this); });
}

void GUIController::sendValueChanged()
{
    callListeners([this](Listener& l)
                  { l.controllerValueChanged(*this); });
}

void GUIController::sendEvent(int eventUid)
{
    if (eventUid < 0)
        return;
    callListeners([this, eventUid](Listener& l)
                  { l.controllerEvent(*this, eventUid); });
}

//==============================================================================
void BaseGFXController::sizeChanged()
{
    applyBounds();
}

void BaseGFXController::positionChanged()
{
    applyBounds();
}

void BaseGFXController::applyBounds()
{
    getComponent().setBounds(left, top, width, height);
}

void BaseGFXController::loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml(xml, parameters, events, editor);
    readGfx(xml);
    if (!image.isValid())
        readSize(xml);
    readPos(xml);
    applyBounds();
}

void BaseGFXController::readGfx(const juce::XmlElement& xml, int framesOverride)
{
    const auto* gfx = xml.getChildByName("gfx");
    if (gfx == nullptr)
        return;

    framesNum = juce::jmax(1, gfx->getIntAttribute("framesNum", 1));
    if (framesOverride > 0)
        framesNum = framesOverride;

    juce::Image loaded;
    if (loadResourceImage(gfx->getStringAttribute("resource"), loaded))
        setImage(loaded, framesNum);
}

void BaseGFXController::readSize(const juce::XmlElement& xml)
{
    if (const auto* size = xml.getChildByName("size"))
    {
        width = size->getIntAttribute("width", 0);
        height = size->getIntAttribute("height", 0);
        sizeChanged();
    }
}

void BaseGFXController::readPos(const juce::XmlElement& xml)
{
    if (const auto* pos = xml.getChildByName("pos"))
    {
        const int newLeft = pos->getIntAttribute("left", 0);
        const int newTop = pos->getIntAttribute("top", 0);
        if (newLeft != left || newTop != top)
        {
            left = newLeft;
            top = newTop;
            positionChanged();
        }
    }
}

void BaseGFXController::setImage(const juce::Image& newImage, int frames)
{
    image = newImage;
    framesNum = juce::jmax(1, frames);

    const int newWidth = image.getWidth();
    const int newHeight = image.getHeight() / framesNum;
    if (newWidth != width || newHeight != height)
    {
        width = newWidth;
        height = newHeight;
        sizeChanged();
    }
}

bool BaseGFXController::drawFrame(juce::Graphics& g, int frame) const
{
    if (!image.isValid() || height <= 0)
        return false;

    frame = juce::jlimit(0, framesNum - 1, frame);
    g.drawImage(image, 0, 0, width, height, 0, frame * height, width, height);
    return true;
}

void BaseGFXController::drawDotBox(juce::Graphics& g, juce::Rectangle<int> bounds, float level)
{
    const auto box = juce::Rectangle<float>(16.0f, 16.0f).withCentre(bounds.toFloat().getCentre());

    g.setColour(juce::Colours::white);
    g.fillRect(box);
    g.setColour(juce::Colours::black);
    g.drawRect(box, 1.0f);

    const float diameter = 10.0f * juce::jlimit(0.0f, 1.0f, level);
    if (diameter > 0.0f)
        g.fillEllipse(juce::Rectangle<float>(diameter, diameter).withCentre(box.getCentre()));
}

void BaseGFXController::drawNameAbove(juce::Graphics& g, juce::Rectangle<int>& area, const juce::String& name, const juce::Colour& colour)
{
    const auto font = DefaultLookAndFeel::getPanelFont(13.0f);
    const int lineHeight = (int) std::ceil(font.getHeight());
    // Two lines on a tall control, so that a row of them lines up; one on a short one.
    const int maxLines = area.getHeight() >= 70 ? 2 : 1;

    // Words go on a line while they fit, squeezed a little, and harder when
    // the name would take more lines than there are.
    juce::StringArray lines;
    for (const float squeeze : { 0.9f, 0.7f })
    {
        lines.clear();
        const float room = (float) area.getWidth() / squeeze;
        for (const auto& word : juce::StringArray::fromTokens(name, " ", {}))
        {
            if (!lines.isEmpty() && font.getStringWidthFloat(lines[lines.size() - 1] + " " + word) <= room)
                lines.set(lines.size() - 1, lines[lines.size() - 1] + " " + word);
            else
                lines.add(word);
        }
        if (lines.size() <= maxLines)
            break;
    }
    while (lines.size() > maxLines)
    {
        lines.set(maxLines - 1, lines[maxLines - 1] + " " + lines[maxLines]);
        lines.remove(maxLines);
    }

    auto label = area.removeFromTop(maxLines * lineHeight);
    label = label.withSizeKeepingCentre(label.getWidth(), lines.size() * lineHeight);
    g.setColour(colour);
    g.setFont(font);
    for (const auto& line : lines)
        g.drawFittedText(line, label.removeFromTop(lineHeight), juce::Justification::centred, 1, 0.6f);
}
