#pragma once

#include "editor/GUIController.h"

class GFXDisplay;

// Told when an edit of a display ends with a changed text.
class GFXDisplayListener
{
public:
    virtual ~GFXDisplayListener() = default;
    virtual void displayTextChanged(GFXDisplay&) = 0;
};

// A line of text drawn with a bitmap font: one column of glyph cells from
// firstASCII on, then the same glyphs again, highlighted, for the caret. It
// can be edited in place: a click gives it the focus, the caret is the
// highlighted cell, Return ends the edit, Escape restores the text, and the
// listeners hear of a changed text. It writes no parameter itself. Message
// thread.
class GFXDisplay : public GUIController, public juce::Component, private juce::Timer
{
public:
    explicit GFXDisplay(const juce::String& name = {});

    juce::Component& getComponent() override { return *this; }
    void loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor) override;
    void updateFromParameter(Parameter& changed) override;
    void blinkChanged() override;

    void setText(const juce::String& newText);
    const juce::String& getText() const { return text; }
    const juce::String& getShownText() const { return shownText; }
    void setEditable(bool shouldBeEditable);
    bool isEditable() const { return editable; }
    void setCentred(bool shouldBeCentred);
    void addDisplayListener(GFXDisplayListener* listener);
    void removeDisplayListener(GFXDisplayListener* listener);

    // A font image: charWidth is its width, and the glyph count follows from
    // its height and fontHeight.
    void setFont(const juce::Image& fontImage, int newFontHeight, int newFirstASCII);
    int getFirstASCII() const { return firstASCII; }
    int getLastASCII() const { return lastASCII; }

    bool isEditing() const { return editing; }
    int getCaretPosition() const { return caretPos; }
    int getFirstVisible() const { return firstVisible; }
    // The index of the text drawn at the first column, -1 for none.
    int getHighlightIndex() const;

    // Begins and ends an edit; a focus change runs these too.
    void beginEdit();
    void endEdit();

    void paint(juce::Graphics& g) override;
    bool keyPressed(const juce::KeyPress& key) override;
    void focusGained(juce::Component::FocusChangeType) override;
    void focusLost(juce::Component::FocusChangeType) override;

protected:
    int getColumns() const;

private:
    void timerCallback() override;
    void keepCaretInView();

    juce::Image font;
    int charWidth = 0;
    int fontHeight = 0;
    int firstASCII = 32;
    int lastASCII = 32;
    int charCount = 1;
    bool caretOn = false;
    int caretPos = 0;
    int firstVisible = 0;
    bool centred = false;
    bool editing = false;
    bool editable = true;
    juce::Array<GFXDisplayListener*> displayListeners;
    juce::String shownText, savedText, text;
};

// A display of a parameter's real value as a plain decimal number, never
// ending in a bare decimal point. Message thread.
class GFXDisplayFloat : public GFXDisplay
{
public:
    using GFXDisplay::GFXDisplay;

    void updateFromParameter(Parameter& changed) override;
    void setNumber(double value);
};
