#include "editor/GFXDisplay.h"

#include "editor/DefaultLookAndFeel.h"
#include "editor/ResourceLoader.h"

namespace
{
constexpr int idleTimerMs = 250;
constexpr int caretTimerMs = 500;

juce::Colour readColour(const juce::XmlElement& xml, const char* name)
{
    return juce::Colour((juce::uint32) xml.getStringAttribute(name, "0").getHexValue64());
}
} // namespace

GFXDisplay::GFXDisplay(const juce::String& name)
    : juce::Component(name)
{
    setWantsKeyboardFocus(true);
    startTimer(idleTimerMs);
}

void GFXDisplay::loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml(xml, parameters, events, editor);

    setColour(DefaultLookAndFeel::displayCaretColourId, readColour(xml, "caretColour"));
    setColour(DefaultLookAndFeel::displayBackgroundColourId, readColour(xml, "backgroundColour"));
    if (xml.getStringAttribute("readonly", "no") == "yes")
        setEnabled(false);

    juce::Rectangle<int> bounds;
    if (const auto* gfx = xml.getChildByName("gfx"))
    {
        juce::Image image;
        loadResourceImage(gfx->getStringAttribute("resource"), image);
        const auto first = gfx->getStringAttribute("firstASCII", " ");
        setFont(image, gfx->getIntAttribute("fontHeight", 0), first.isEmpty() ? 32 : (int) first[0]);
    }
    if (const auto* pos = xml.getChildByName("pos"))
        bounds.setPosition(pos->getIntAttribute("left", 0), pos->getIntAttribute("top", 0));
    if (const auto* size = xml.getChildByName("size"))
        bounds.setSize(size->getIntAttribute("width", 0), size->getIntAttribute("height", 0));
    setBounds(bounds);

    // The name stands in the field until the parameter first speaks.
    setText(getName());
}

void GFXDisplay::setFont(const juce::Image& fontImage, int newFontHeight, int newFirstASCII)
{
    font = fontImage;
    charWidth = font.isValid() ? font.getWidth() : 0;
    fontHeight = newFontHeight;
    firstASCII = newFirstASCII;
    lastASCII = fontHeight > 0 ? font.getHeight() / (2 * fontHeight) + firstASCII - 1 : firstASCII;
    charCount = lastASCII - firstASCII + 1;
    repaint();
}

void GFXDisplay::updateFromParameter(Parameter& changed)
{
    setText(changed.getText());
}

void GFXDisplay::blinkChanged()
{
    shownText = blinkOff ? juce::String() : text;
    repaint();
}

void GFXDisplay::setText(const juce::String& newText)
{
    text = newText;
    shownText = newText;
    repaint();
}

void GFXDisplay::setEditable(bool shouldBeEditable)
{
    editable = shouldBeEditable;
    setWantsKeyboardFocus(shouldBeEditable);
    if (!editable && editing)
        endEdit();
    repaint();
}

void GFXDisplay::setCentred(bool shouldBeCentred)
{
    centred = shouldBeCentred;
    repaint();
}

void GFXDisplay::addDisplayListener(GFXDisplayListener* listener)
{
    if (listener != nullptr)
        displayListeners.addIfNotAlreadyThere(listener);
}

void GFXDisplay::removeDisplayListener(GFXDisplayListener* listener)
{
    displayListeners.removeFirstMatchingValue(listener);
}

int GFXDisplay::getColumns() const
{
    return charWidth > 0 ? getWidth() / charWidth : 0;
}

int GFXDisplay::getHighlightIndex() const
{
    return editing && caretOn ? caretPos : -1;
}

//==============================================================================
// The display edits where it stands: this platform gives the editor its keys.
void GFXDisplay::focusGained(juce::Component::FocusChangeType)
{
    beginEdit();
}

void GFXDisplay::focusLost(juce::Component::FocusChangeType)
{
    endEdit();
}

void GFXDisplay::beginEdit()
{
    if (editing || !editable || !isEnabled())
        return;

    editing = true;
    firstVisible = 0;
    caretPos = text.length();
    keepCaretInView();
    caretOn = true;
    startTimer(caretTimerMs);
    savedText = text;
    repaint();
}

void GFXDisplay::endEdit()
{
    if (!editing)
        return;

    editing = false;
    caretPos = 0;
    firstVisible = 0;
    keepCaretInView();
    stopTimer();
    if (hasKeyboardFocus(false))
        giveAwayKeyboardFocus();

    if (text != savedText)
        for (int i = displayListeners.size(); --i >= 0;)
        {
            displayListeners.getUnchecked(i)->displayTextChanged(*this);
            i = juce::jmin(i, displayListeners.size());
        }

    repaint();
}

void GFXDisplay::timerCallback()
{
    if (editing)
    {
        caretOn = !caretOn;
        repaint();
    }
}

bool GFXDisplay::keyPressed(const juce::KeyPress& key)
{
    if (!editing)
        return false;

    const int code = key.getKeyCode();
    const auto typed = key.getTextCharacter();

    if (code == juce::KeyPress::returnKey)
    {
        endEdit();
        return true;
    }
    if (code == juce::KeyPress::escapeKey)
    {
        setText(savedText);
        endEdit();
        return true;
    }

    if (code == juce::KeyPress::backspaceKey)
    {
        if (caretPos > 0)
        {
            text = text.substring(0, caretPos - 1) + text.substring(caretPos);
            --caretPos;
        }
    }
    else if (code == juce::KeyPress::deleteKey)
        text = text.substring(0, caretPos) + text.substring(caretPos + 1);
    else if (code == juce::KeyPress::homeKey)
        caretPos = 0;
    else if (code == juce::KeyPress::endKey)
        caretPos = text.length();
    else if (code == juce::KeyPress::leftKey)
        --caretPos;
    else if (code == juce::KeyPress::rightKey)
        ++caretPos;
    else if ((int) typed >= firstASCII && (int) typed <= lastASCII)
    {
        text = text.substring(0, caretPos) + juce::String::charToString(typed) + text.substring(caretPos);
        ++caretPos;
    }

    shownText = text;
    caretPos = juce::jlimit(0, text.length(), caretPos);
    keepCaretInView();
    startTimer(caretTimerMs);
    caretOn = true;
    repaint();
    return true;
}

// One character of context stays on each side of the caret where there is one.
void GFXDisplay::keepCaretInView()
{
    if (charWidth <= 0)
    {
        firstVisible = 0;
        return;
    }

    const int v = getWidth() / charWidth - 1;
    if (firstVisible + v < caretPos + 1)
        firstVisible = caretPos - v + (caretPos < text.length() ? 1 : 0);
    if (firstVisible >= caretPos)
        firstVisible = caretPos - (caretPos > 0 ? 1 : 0);
}

void GFXDisplay::paint(juce::Graphics& g)
{
    g.fillAll(findColour(DefaultLookAndFeel::displayBackgroundColourId));

    if (!font.isValid())
    {
        const auto textFont = DefaultLookAndFeel::getPanelFont(juce::jlimit(8.0f, 14.0f, (float) getHeight() - 2.0f));
        g.setColour(juce::Colours::black);
        g.setFont(textFont);
        g.drawText(shownText, getLocalBounds().reduced(2, 0), juce::Justification::centredLeft, true);
        if (getHighlightIndex() >= 0)
        {
            const float x = 2.0f + textFont.getStringWidthFloat(shownText.substring(0, caretPos));
            const auto caret = findColour(DefaultLookAndFeel::displayCaretColourId);
            g.setColour(caret.isTransparent() ? juce::Colours::black : caret);
            g.drawLine(x, 2.0f, x, (float) getHeight() - 2.0f, 1.0f);
        }
        return;
    }
    if (charWidth <= 0 || fontHeight <= 0)
        return;

    const int columns = getColumns();
    const int x0 = (getWidth() - columns * charWidth) / 2;
    const int y0 = (getHeight() - fontHeight) / 2;
    int i = firstVisible;
    if (columns > shownText.length() && centred)
        i -= (columns - shownText.length()) / 2;

    const int highlight = getHighlightIndex();
    for (int column = 0; column < columns; ++column, ++i)
    {
        int c = juce::isPositiveAndBelow(i, shownText.length()) ? (int) shownText[i] : 32;
        c = juce::jlimit(firstASCII, lastASCII, c);
        int sourceY = fontHeight * (c - firstASCII);
        if (i == highlight && editable)
            sourceY += charCount * fontHeight;
        g.drawImage(font, x0 + column * charWidth, y0, charWidth, fontHeight, 0, sourceY, charWidth, fontHeight);
    }
}

//==============================================================================
void GFXDisplayFloat::updateFromParameter(Parameter& changed)
{
    setNumber(changed.getValue());
}

void GFXDisplayFloat::setNumber(double value)
{
    auto number = juce::String(value);
    const int columns = getColumns();
    if (columns > 0 && number.length() >= columns && number[columns - 1] == '.')
        number = " " + number;
    setText(number);
}
