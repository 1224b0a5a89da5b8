#include "editor/PatternNumberDisplay.h"

#include "editor/DefaultLookAndFeel.h"
#include "editor/ResourceLoader.h"

PatternNumberDisplayDigit::PatternNumberDisplayDigit(const juce::String& name, int frames)
    : GFXAnimation(name)
    , digitFrames(frames)
{
    framesNum = frames;
}

juce::String PatternNumberDisplayDigit::getFrameText(int frame) const
{
    return frame >= 1 && frame <= 10 ? juce::String(frame - 1) : juce::String();
}

void PatternNumberDisplayDigit::paintSubstitute(juce::Graphics& g)
{
    g.fillAll(juce::Colour::greyLevel(0.15f));
    g.setColour(juce::Colour(0xFFFF5030));
    g.setFont(DefaultLookAndFeel::getPanelFont((float) getHeight() * 0.8f, true));
    g.drawText(getFrameText(getShownFrame()), getLocalBounds(), juce::Justification::centred, false);
}

PatternNumberDisplayFirstDigit::PatternNumberDisplayFirstDigit()
    : PatternNumberDisplayDigit("FirstDigit", 12)
{
}

juce::String PatternNumberDisplayFirstDigit::getFrameText(int frame) const
{
    return frame == 11 ? "P." : PatternNumberDisplayDigit::getFrameText(frame);
}

PatternNumberDisplaySecondDigit::PatternNumberDisplaySecondDigit()
    : PatternNumberDisplayDigit("SecondDigit", 19)
{
}

juce::String PatternNumberDisplaySecondDigit::getFrameText(int frame) const
{
    static const char* const signs[] = { "C", "D", "E", "F", "G", "A", "B", "-" };
    return frame >= 11 && frame <= 18 ? signs[frame - 11] : PatternNumberDisplayDigit::getFrameText(frame);
}

PatternNumberDisplayThirdDigit::PatternNumberDisplayThirdDigit()
    : PatternNumberDisplayDigit("ThirdDigit", 13)
{
}

juce::String PatternNumberDisplayThirdDigit::getFrameText(int frame) const
{
    if (frame == 11)
        return "#";
    if (frame == 12)
        return "-";
    return PatternNumberDisplayDigit::getFrameText(frame);
}

PatternNumberDisplayFourthDigit::PatternNumberDisplayFourthDigit()
    : PatternNumberDisplayDigit("FourthDigit", 11)
{
}

//==============================================================================
PatternNumberDisplay::PatternNumberDisplay(const juce::String& name)
    : juce::Component(name)
{
    digits.add(new PatternNumberDisplayFirstDigit());
    digits.add(new PatternNumberDisplaySecondDigit());
    digits.add(new PatternNumberDisplayThirdDigit());
    digits.add(new PatternNumberDisplayFourthDigit());
    for (auto* digit : digits)
        addAndMakeVisible(digit);
}

PatternNumberDisplay::~PatternNumberDisplay()
{
    digits.clear();
}

void PatternNumberDisplay::loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml(xml, parameters, events, editor);

    notePatternMin = xml.getIntAttribute("notePatternMin", notePatternMin);
    notePatternMax = xml.getIntAttribute("notePatternMax", notePatternMax);
    numericPatternMin = xml.getIntAttribute("numericPatternMin", numericPatternMin);
    numericPatternMax = xml.getIntAttribute("numericPatternMax", numericPatternMax);
    bankAndSlotPatternMin = xml.getIntAttribute("bankAndSlotPatternMin", bankAndSlotPatternMin);
    bankAndSlotPatternMax = xml.getIntAttribute("bankAndSlotPatternMax", bankAndSlotPatternMax);
    slotMax = juce::jlimit(4, 16, xml.getIntAttribute("slotMax", slotMax));

    // Without images the four digits share the size of the element.
    juce::Rectangle<int> area;
    if (const auto* size = xml.getChildByName("size"))
        area.setSize(size->getIntAttribute("width", 0), size->getIntAttribute("height", 0));
    if (const auto* pos = xml.getChildByName("pos"))
        area.setPosition(pos->getIntAttribute("left", 0), pos->getIntAttribute("top", 0));

    static const char* const resourceNames[] = { "firstDigit", "secondDigit", "thirdDigit", "fourthDigit" };
    const auto* gfx = xml.getChildByName("gfx");
    int x = 0, tallest = 0;
    for (int i = 0; i < digits.size(); ++i)
    {
        auto* digit = digits[i];
        juce::Image image;
        if (gfx != nullptr && loadResourceImage(gfx->getStringAttribute(resourceNames[i]), image))
            digit->setImage(image, digit->getDigitFrames());
        else
            digit->setSize(area.getWidth() / 4, area.getHeight());

        if (image.isValid())
            digit->setSize(digit->getFrameWidth(), digit->getFrameHeight());
        digit->setTopLeftPosition(x, 0);
        x += digit->getWidth();
        tallest = juce::jmax(tallest, digit->getHeight());
    }

    setBounds(area.getX(), area.getY(), x, tallest);
    refresh();
}

void PatternNumberDisplay::updateFromParameter(Parameter& changed)
{
    setPattern(changed.getInt());
}

void PatternNumberDisplay::setPattern(int newPattern)
{
    newPattern = clampToMode(newPattern);
    if (newPattern != pattern)
    {
        pattern = newPattern;
        refresh();
    }
}

void PatternNumberDisplay::setMode(int newMode)
{
    if (newMode != mode)
    {
        mode = newMode;
        pattern = clampToMode(pattern);
        refresh();
    }
}

int PatternNumberDisplay::clampToMode(int value) const
{
    if (mode == noteMode)
        return juce::jlimit(notePatternMin, notePatternMax, value);
    if (mode == numericMode)
        return juce::jlimit(numericPatternMin, numericPatternMax, value);
    return juce::jlimit(bankAndSlotPatternMin, bankAndSlotPatternMax, value);
}

void PatternNumberDisplay::refresh()
{
    int frames[4] = { 0, 0, 0, 0 };

    if (isEnabled())
    {
        if (mode == noteMode)
        {
            static const int letters[12] = { 0, 0, 1, 1, 2, 3, 3, 4, 4, 5, 5, 6 };
            static const bool sharps[12] = { false, true, false, true, false, false, true, false, true, false, true, false };
            const int m = pattern % 12;
            frames[0] = 11;
            frames[1] = 11 + letters[m];
            frames[2] = sharps[m] ? 11 : 12;
            frames[3] = pattern / 12 + 1;
        }
        else if (mode == numericMode)
        {
            frames[1] = pattern / 10 + 1;
            frames[2] = pattern % 10 + 1;
        }
        else
        {
            const int slot = (pattern - 1) % slotMax + 1;
            frames[0] = (pattern - 1) / slotMax + 2;
            frames[1] = 18;
            frames[2] = slot / 10 + 1;
            frames[3] = slot % 10 + 1;
        }
    }

    for (int i = 0; i < digits.size(); ++i)
        digits[i]->setFrame(frames[i]);
}
