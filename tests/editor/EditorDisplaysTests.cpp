// Bitmap text and numbers: the caret and its keys, the digits of a number
// and their drags, the three readings of the pattern number, the status bar.

#include "EditorTestSupport.h"

#include "editor/GFXDisplay.h"
#include "editor/NumericDisplay.h"
#include "editor/PatternNumberDisplay.h"
#include "editor/StatusBar.h"

using namespace editortest;

namespace
{
// 26 glyphs from " " to "9", 5 by 4 pixels: glyph g is colour g, and its
// highlighted form colour 26 + g.
constexpr int glyphs = 26, charWidth = 5, fontHeight = 4;

struct DisplaysPanel : SkinnedPanel
{
    DisplaysPanel()
        : SkinnedPanel([](const TestSkin& skin)
                       {
            skin.writeStrip("Font.png", charWidth, fontHeight, 2 * glyphs);
            skin.writeStrip("Digit.png", 10, 20, 11);
            skin.writeStrip("Sign.png", 10, 20, 2);
            skin.writeStrip("First.png", 27, 34, 12, 2);
            skin.writeStrip("Second.png", 29, 34, 19);
            skin.writeStrip("Third.png", 28, 34, 13);
            skin.writeStrip("Fourth.png", 26, 34, 11);
            skin.writeSkin(400, 200, R"(
<Display name="Name" backgroundColour="FF000000"><gfx resource="Font.png" fontHeight="4" firstASCII=" "/>
  <pos left="10" top="10"/><size width="30" height="4"/></Display>
<NumericDisplay name="Tempo" digitsNum="4" firstDigitOrder="100" minValue="30" maxValue="300">
  <links><link as="connectedTo" param="Pattern Tempo"/></links><size width="40" height="20"/>
  <digits resource="Digit.png"/><pos left="10" top="30"/></NumericDisplay>
<NumericDisplay name="Output" digitsNum="2" firstDigitOrder="10" minValue="1" maxValue="12" control="continous">
  <digits><gfx resource="Digit.png"/><gfx resource="Digit.png"/></digits><pos left="60" top="30"/></NumericDisplay>
<NumericDisplay name="Signed" digitsNum="2" firstDigitOrder="10" minValue="-20" maxValue="20">
  <sign><gfx resource="Sign.png"/></sign><digits resource="Digit.png"/><pos left="90" top="30"/></NumericDisplay>
<PatternNumberDisplay name="Pattern"><links><link as="connectedTo" param="Pattern Number"/></links>
  <gfx firstDigit="First.png" secondDigit="Second.png" thirdDigit="Third.png" fourthDigit="Fourth.png"/>
  <pos left="10" top="60"/></PatternNumberDisplay>
)"); })
    {
    }
};

// What the display's cells show: each character, the highlighted one in [].
juce::String cells(GFXDisplay& display)
{
    const auto picture = display.createComponentSnapshot(display.getLocalBounds());
    juce::String shown;
    for (int column = 0; column < display.getWidth() / charWidth; ++column)
    {
        const int frame = frameOf(picture.getPixelAt(column * charWidth + 2, 1));
        const auto c = juce::String::charToString((juce::juce_wchar)(32 + frame % glyphs));
        shown << (frame >= glyphs ? "[" + c + "]" : c);
    }
    return shown;
}

// Keys pressed one after the other: a character, or a key code written as
// a negative number (-juce::KeyPress::leftKey).
void keys(GFXDisplay& display, std::initializer_list<int> presses)
{
    for (const int k : presses)
        display.keyPressed(k < 0 ? juce::KeyPress(-k) : juce::KeyPress(k, {}, (juce::juce_wchar) k));
}

struct ChangeLog : GFXDisplayListener
{
    void displayTextChanged(GFXDisplay& display) override { texts.add(display.getText()); }
    juce::StringArray texts;
};

// The frame each digit shows.
juce::Array<int> frames(NumericDisplay& display)
{
    juce::Array<int> result;
    for (int i = 0; i < display.getDigitsNum(); ++i)
        result.add(shownFrame(*display.getDigit(i), 2, 2));
    return result;
}

juce::Array<int> frames(PatternNumberDisplay& display)
{
    return { shownFrame(display.getDigit(0), 2, 2), shownFrame(display.getDigit(1), 2, 2), shownFrame(display.getDigit(2), 2, 2), shownFrame(display.getDigit(3), 2, 2) };
}
} // namespace

TEST(EditorDisplays, CaretAndKeysEditInPlace)
{
    using K = juce::KeyPress;
    DisplaysPanel p;
    auto& display = p.control<GFXDisplay>("Name");
    ChangeLog log;
    display.addDisplayListener(&log);

    display.setText("123");
    EXPECT_EQ(cells(display), "123   ");
    display.beginEdit();
    EXPECT_EQ(cells(display), "123[ ]  ") << "the caret is a highlighted cell";

    keys(display, { '4', -K::leftKey, -K::backspaceKey });
    EXPECT_EQ(display.getText(), "124");
    keys(display, { -K::deleteKey, -K::homeKey });
    EXPECT_EQ(display.getText(), "12");
    EXPECT_TRUE(display.keyPressed(K('A', {}, 'A'))) << "a key outside the font is taken";
    EXPECT_EQ(cells(display), "[1]2    ") << "and changes nothing";
    keys(display, { -K::endKey, -K::rightKey });
    EXPECT_EQ(display.getCaretPosition(), 2);
    keys(display, { -K::returnKey });
    EXPECT_TRUE(!display.isEditing() && log.texts == juce::StringArray("12"));

    // Escape after edits restores the text, and no one hears of it; nor of
    // Return in an unchanged field.
    display.beginEdit();
    keys(display, { '9', -K::escapeKey });
    EXPECT_EQ(display.getText(), "12");
    display.beginEdit();
    keys(display, { -K::returnKey });
    EXPECT_EQ(log.texts.size(), 1);

    // A long text scrolls with the caret only, one character of context
    // kept each side, and shows from the start again after the edit.
    display.setText("0123456789");
    display.beginEdit();
    EXPECT_EQ(cells(display), "56789[ ]");
    keys(display, { -K::homeKey });
    EXPECT_EQ(cells(display), "[0]12345");
    keys(display, { -K::rightKey, -K::rightKey, -K::rightKey, -K::rightKey, -K::rightKey, -K::rightKey });
    EXPECT_EQ(cells(display), "2345[6]7");
    display.endEdit();
    EXPECT_EQ(cells(display), "012345");

    // Not editable: no focus wish, no highlighted caret.
    display.setEditable(false);
    display.beginEdit();
    EXPECT_FALSE(display.getWantsKeyboardFocus() || display.isEditing());

    GFXDisplayFloat number;
    number.setFont(juce::Image(juce::Image::RGB, charWidth, 8 * glyphs, true), fontHeight, ' ');
    number.setSize(30, 4);
    number.setNumber(12345.5);
    EXPECT_EQ(number.getText(), " 12345.5") << "never a bare point in the last column";
    number.setNumber(1.5);
    EXPECT_EQ(number.getText(), "1.5");
}

TEST(EditorDisplays, NumbersShowTheirDigitsAndMoveByTheDigitGrabbed)
{
    DisplaysPanel p;
    auto& tempo = p.control<NumericDisplay>("Tempo");
    auto& parameter = p.parameter("Pattern Tempo");

    parameter.setValue(120.0f, true);
    pump();
    EXPECT_EQ(frames(tempo), juce::Array<int>({ 2, 3, 1, 1 }));
    parameter.setValue(90.5f, true);
    pump();
    EXPECT_EQ(frames(tempo), juce::Array<int>({ 0, 10, 1, 6 })) << "leading zeros are blank";

    // Hundreds: 100 per 25 px; tenths: 0.1 per 10 px; up raises.
    drag(tempo, { 5, 10 }, { { 5, -14 } });
    EXPECT_NEAR(parameter.getValue(), 90.5, 1e-4);
    drag(tempo, { 5, 10 }, { { 5, -15 } });
    EXPECT_NEAR(parameter.getValue(), 190.5, 1e-4);
    drag(tempo, { 35, 10 }, { { 35, 40 } });
    EXPECT_NEAR(parameter.getValue(), 190.2, 1e-4);
    drag(tempo, { 5, 10 }, { { 5, 200 } });
    EXPECT_NEAR(parameter.getValue(), 30.0, 1e-4) << "clamped to the minimum";

    tempo.setControlEnabled(false);
    drag(tempo, { 5, 10 }, { { 5, -100 } });
    EXPECT_NEAR(parameter.getValue(), 30.0, 1e-4);
    tempo.setEnabled(false);
    EXPECT_EQ(frames(tempo), juce::Array<int>({ 0, 0, 0, 0 })) << "disabled digits are blank";

    // Continuous: one unit per 20 px wherever it is grabbed.
    auto& output = p.control<NumericDisplay>("Output");
    output.setValue(1.0, false);
    drag(output, { 18, 10 }, { { 18, -10 } });
    EXPECT_TRUE(output.getValue() == 2.0 && frames(output) == juce::Array<int>({ 0, 3 }));

    auto& signedDisplay = p.control<NumericDisplay>("Signed");
    ASSERT_NE(signedDisplay.getSign(), nullptr);
    EXPECT_EQ(signedDisplay.getDigit(0)->getX(), 10) << "the digits follow the sign";
    signedDisplay.setValue(-7.0, false);
    EXPECT_TRUE(shownFrame(*signedDisplay.getSign(), 2, 2) == 1 && frames(signedDisplay) == juce::Array<int>({ 0, 8 }));
}

TEST(EditorDisplays, PatternNumberReadsAsNoteOrNumber)
{
    DisplaysPanel p;
    auto& display = p.control<PatternNumberDisplay>("Pattern");
    EXPECT_EQ(display.getBounds(), juce::Rectangle<int>(10, 60, 110, 34));

    p.parameter("Pattern Number").setInt(60, true);
    pump();
    EXPECT_EQ(frames(display), juce::Array<int>({ 11, 11, 12, 6 })) << "P. C - 5";
    display.setPattern(61);
    EXPECT_EQ(frames(display), juce::Array<int>({ 11, 11, 11, 6 })) << "P. C # 5";
    display.setPattern(70);
    EXPECT_EQ(frames(display), juce::Array<int>({ 11, 16, 11, 6 })) << "P. A # 5";

    display.setMode(PatternNumberDisplay::numericMode);
    EXPECT_TRUE(display.getPattern() == 16 && frames(display) == juce::Array<int>({ 0, 2, 7, 0 })) << "clamped to the mode's range";

    display.setEnabled(false);
    EXPECT_EQ(frames(display), juce::Array<int>({ 0, 0, 0, 0 }));
}

// Which message wins is seen on the shipped panel (learn prompts, hints,
// knob values); here, that a timed message goes by itself.
TEST(EditorDisplays, StatusBarClearsATimedMessageOnlyOfItsPriorityOrLower)
{
    StatusBar bar;
    bar.setMessage("Waiting for a controller or parameter movement...", 7);
    bar.setTimedMessage("Bass Drum Level: 0.5", 5, 3000);
    bar.clear(6);
    EXPECT_EQ(bar.getMessage(), "Waiting for a controller or parameter movement...");
    bar.clear(StatusBar::anyPriority);
    bar.setTimedMessage("Snare Drum Level: 0.7", 6, 60);
    pump(150);
    EXPECT_TRUE(bar.getMessage().isEmpty()) << "a timed message clears itself";
    EXPECT_EQ(bar.getPriority(), 0);
}
