#pragma once

#include "PanelLayout.h"

// Draws the panel art: the background and one frame of any control, in a
// graphics context whose origin is the control's top left corner. All text
// comes from the embedded DejaVu fonts, never from the system, so that every
// machine draws the same pixels.
namespace PanelArt
{
class PanelPainter
{
public:
    PanelPainter();

    // False when the embedded fonts are missing: nothing should be drawn then.
    bool hasFonts() const { return regular != nullptr && bold != nullptr; }

    void paintBackground(juce::Graphics& g, const Layout& layout) const;

    // Frame `frame` of the control over its piece of the background.
    void paintFrame(juce::Graphics& g, const Control& control, int frame) const;

    // Frame `frame` of a strip of digits (blank, 0 to 9, then the extras of its kind).
    void paintDigit(juce::Graphics& g, const DigitImage& digit, int frame) const;

    // The bitmap font of the text displays: 96 glyphs from the space on,
    // then the same glyphs highlighted, each in a cell of 7 by 9 pixels.
    static juce::Image makeFontImage();
    static bool glyphDot(juce::juce_wchar code, int x, int y); // 5 columns, 9 rows
    static constexpr int glyphWidth = 7;
    static constexpr int glyphHeight = 9;

private:
    juce::Font font(bool bold, float height, float tracking = 0.0f) const;
    void text(juce::Graphics& g, const juce::String& s, float x, float baseline, const juce::Font& f, juce::Colour colour, juce::Justification j = juce::Justification::horizontallyCentred) const;
    void paintLabel(juce::Graphics& g, const Label& label) const;

    void knob(juce::Graphics& g, juce::Rectangle<float> r, float value, Look look) const;
    void rotarySwitch(juce::Graphics& g, juce::Rectangle<float> r, int position, int positions) const;
    void slideSwitch(juce::Graphics& g, juce::Rectangle<float> r, int position, int positions) const;
    void lamp(juce::Graphics& g, juce::Point<float> centre, float radius, juce::Colour colour, bool on) const;
    void lampBar(juce::Graphics& g, juce::Rectangle<float> bar, juce::Colour colour, bool on) const;
    void cap(juce::Graphics& g, juce::Rectangle<float> r, bool pressed, juce::Colour fill) const;
    void caption(juce::Graphics& g, const Control& c, juce::Rectangle<float> r, juce::Colour colour) const;
    void nameLight(juce::Graphics& g, const Control& c, bool on) const;
    void stepKey(juce::Graphics& g, const Control& c, int state, bool pressed) const;
    void transportKey(juce::Graphics& g, const Control& c, bool pressed) const;

    juce::Typeface::Ptr regular, bold;
};
} // namespace PanelArt
