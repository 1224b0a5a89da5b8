#include "editor/NumericDisplay.h"

#include "editor/DefaultLookAndFeel.h"
#include "editor/ResourceLoader.h"

#include <cmath>

namespace
{
constexpr int digitFrames = 11;

void drawSubstituteText(juce::Graphics& g, juce::Component& component, const juce::String& text)
{
    g.fillAll(juce::Colour::greyLevel(0.15f));
    g.setColour(component.isEnabled() ? juce::Colour(0xFFFF5030) : juce::Colour(0xFF603020));
    g.setFont(DefaultLookAndFeel::getPanelFont((float) component.getHeight() * 0.9f, true));
    g.drawText(text, component.getLocalBounds(), juce::Justification::centred, false);
}
} // namespace

NumericDisplayDigit::NumericDisplayDigit(const juce::Image& imageToUse, int w, int h, bool integerDigit)
    : width(w)
    , height(h)
    , isIntegerDigit(integerDigit)
    , image(imageToUse)
{
    setInterceptsMouseClicks(false, false);
    setSize(width, height);
}

void NumericDisplayDigit::show(int newDigit, bool shouldBeBlank)
{
    if (newDigit != digit || shouldBeBlank != blank)
    {
        digit = newDigit;
        blank = shouldBeBlank;
        repaint();
    }
}

int NumericDisplayDigit::getFrame() const
{
    return blank || !isEnabled() ? 0 : digit + 1;
}

void NumericDisplayDigit::paint(juce::Graphics& g)
{
    if (image.isValid() && height > 0)
    {
        g.drawImage(image, 0, 0, width, height, 0, juce::jlimit(0, digitFrames - 1, getFrame()) * height, width, height);
        return;
    }
    const int frame = getFrame();
    drawSubstituteText(g, *this, frame == 0 ? juce::String() : juce::String(frame - 1));
    if (pointAfter)
    {
        const float size = juce::jmax(2.0f, (float) height * 0.1f);
        g.fillRect((float) width - size, (float) height - 2.0f * size, size, size);
    }
}

//==============================================================================
NumericDisplaySign::NumericDisplaySign(const juce::Image& imageToUse, int w, int h)
    : width(w)
    , height(h)
    , image(imageToUse)
{
    setInterceptsMouseClicks(false, false);
    setSize(width, height);
}

void NumericDisplaySign::setNegative(bool shouldBeNegative)
{
    if (shouldBeNegative != negative)
    {
        negative = shouldBeNegative;
        repaint();
    }
}

void NumericDisplaySign::paint(juce::Graphics& g)
{
    if (image.isValid() && height > 0)
    {
        g.drawImage(image, 0, 0, width, height, 0, negative ? height : 0, width, height);
        return;
    }
    drawSubstituteText(g, *this, negative ? "-" : "");
}

//==============================================================================
NumericDisplay::NumericDisplay(const juce::String& name)
    : juce::Component(name)
{
}

NumericDisplay::~NumericDisplay()
{
    digits.clear();
    sign.reset();
}

void NumericDisplay::loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml(xml, parameters, events, editor);

    digitsNum = juce::jmax(1, xml.getIntAttribute("digitsNum", 1));

    firstDigitOrder = xml.getDoubleAttribute("firstDigitOrder", 0.0);
    if (!(firstDigitOrder > 0.0) || std::log10(firstDigitOrder) != std::floor(std::log10(firstDigitOrder)))
        firstDigitOrder = std::pow(10.0, digitsNum - 1);

    const double order = std::log10(firstDigitOrder);
    scale = std::pow(10.0, digitsNum - order - 1);
    leftDivisor = std::pow(10.0, digitsNum - 1);
    fractionDigits = juce::jmax(0, digitsNum - (int) order);

    minValue = xml.getDoubleAttribute("minValue", 0.0);
    maxValue = xml.getDoubleAttribute("maxValue", 0.0);
    continuous = xml.getStringAttribute("control") == "continous";

    const bool hasSign = minValue < 0.0;
    if (const auto* size = xml.getChildByName("size"))
    {
        digitWidth = size->getIntAttribute("width", 0) / (digitsNum + (hasSign ? 1 : 0));
        digitHeight = size->getIntAttribute("height", 0);
    }

    int x = 0;
    if (hasSign)
    {
        juce::Image image;
        if (const auto* signXml = xml.getChildByName("sign"))
            if (const auto* gfx = signXml->getChildByName("gfx"))
                loadResourceImage(gfx->getStringAttribute("resource"), image);
        signImage = image;

        sign = std::make_unique<NumericDisplaySign>(image, image.isValid() ? image.getWidth() : digitWidth,
                                                    image.isValid() ? image.getHeight() / 2 : digitHeight);
        sign->setTopLeftPosition(0, 0);
        addAndMakeVisible(*sign);
        x = sign->getWidth();
    }

    // One image for each digit, or one for all, or none.
    juce::Array<juce::Image> images;
    if (const auto* digitsXml = xml.getChildByName("digits"))
    {
        if (digitsXml->getNumChildElements() > 0)
        {
            for (const auto* gfx : digitsXml->getChildWithTagNameIterator("gfx"))
            {
                if (images.size() >= digitsNum)
                    break;
                juce::Image image;
                loadResourceImage(gfx->getStringAttribute("resource"), image);
                images.add(image);
            }
        }
        else if (digitsXml->hasAttribute("resource"))
        {
            juce::Image image;
            loadResourceImage(digitsXml->getStringAttribute("resource"), image);
            images.insertMultiple(0, image, digitsNum);
        }
    }

    int tallest = sign != nullptr ? sign->getHeight() : 0;
    for (int i = 0; i < digitsNum; ++i)
    {
        const auto image = images[i];
        auto* digit = digits.add(new NumericDisplayDigit(image, image.isValid() ? image.getWidth() : digitWidth,
                                                         image.isValid() ? image.getHeight() / digitFrames : digitHeight,
                                                         i <= (int) order));
        digit->setTopLeftPosition(x, 0);
        digit->setPointAfter(!image.isValid() && i == (int) order && i < digitsNum - 1);
        addAndMakeVisible(digit);
        x += digit->getWidth();
        tallest = juce::jmax(tallest, digit->getHeight());
    }

    juce::Point<int> position;
    if (const auto* pos = xml.getChildByName("pos"))
        position = { pos->getIntAttribute("left", 0), pos->getIntAttribute("top", 0) };
    setBounds(position.x, position.y, x, tallest);

    value = juce::jlimit(minValue, maxValue, 0.0);
    showValue();
}

void NumericDisplay::updateFromParameter(Parameter& changed)
{
    setValue(changed.getValue(), false);
}

void NumericDisplay::setValue(double newValue, bool notify)
{
    newValue = juce::jlimit(minValue, maxValue, newValue);
    if (newValue != value)
    {
        value = newValue;
        if (notify && parameter != nullptr)
        {
            parameter->setValue((float) value, true);
            sendValueChanged();
        }
    }
    showValue();
}

void NumericDisplay::showValue()
{
    double n = std::trunc(std::abs(value) * scale + 0.5);
    double d = leftDivisor;
    bool shown = false;

    for (int i = 0; i < digits.size(); ++i)
    {
        const double q = std::trunc(n / d);
        if (q != 0.0 || i == digitsNum - fractionDigits)
            shown = true;
        digits[i]->show(juce::jlimit(0, 9, (int) q), !shown);
        n -= q * d;
        d *= 0.1;
    }

    if (sign != nullptr)
        sign->setNegative(value < 0.0);
}

void NumericDisplay::enablementChanged()
{
    for (auto* digit : digits)
        digit->repaint();
}

void NumericDisplay::mouseDown(const juce::MouseEvent& e)
{
    if (!controlEnabled)
        return;

    beginGesture();
    dragStartValue = value;
    dragging = true;

    const int digit = continuous ? 1 : (int) std::trunc((double) e.x / juce::jmax(1, getWidth()) * digitsNum);
    dragStep = firstDigitOrder / std::pow(10.0, digit);
    pixelsPerStep = juce::jmax(1, 5 * (5 - digit));
}

void NumericDisplay::mouseDrag(const juce::MouseEvent& e)
{
    if (!controlEnabled || !dragging)
        return;

    const int steps = -(e.getDistanceFromDragStartY()) / pixelsPerStep;
    setValue(dragStartValue + steps * dragStep, true);
}

void NumericDisplay::mouseUp(const juce::MouseEvent&)
{
    if (!dragging)
        return;
    endGesture();
    dragging = false;
}
