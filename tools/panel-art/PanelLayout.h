#pragma once

#include <juce_graphics/juce_graphics.h>

#include <vector>

// The front panel as data: every control with its skin element, name,
// place, frame count, link and actions, and how its art is drawn. The skin
// file, every image and the previews are made from this one table, so a
// change of layout is one edit in PanelLayout.cpp.
namespace PanelArt
{
constexpr int panelWidth = 900;
constexpr int panelHeight = 575;

// How the frames of a control are drawn.
enum class Look
{
    SoundKnob,    // 31 frames, pointer and value arc
    LevelKnob,    // the same with a lighter cap: level and randomizer threshold
    BigKnob,      // tempo, shuffle, volume
    FillSwitch,   // rotary switch, one frame per position
    SlideSwitch,  // horizontal slide, one frame per position
    NameLight,    // instrument name plate whose light flashes on a trigger
    Led,          // round lamp, off and on
    StripButton,  // mute, solo, select: a small cap that lights in its colour
    LedButton,    // a cap with its caption and a lamp, off and on
    LatchButton,  // the same in 3D: off, off pressed, on, on pressed
    PushButton,   // momentary: up and down
    TransportKey, // a large momentary key: start, stop, tap
    StepKey,      // three states in 3D, lit in the colour of its group of four
    TextDisplay,  // dot-matrix text, drawn by the control from Fonts.png
    Digits,       // seven-segment digits of a numeric display
    PatternDigits // the four digits of the pattern number
};

struct Attribute
{
    juce::String name, value;
};

// One strip of frames that a display shows side by side.
struct DigitImage
{
    juce::String resource;
    int width = 0, height = 0, frames = 11;
    int kind = 0; // the digit's glyph set (PanelPainter)
    bool point = false;
};

struct Control
{
    juce::String type; // the skin element
    juce::String name;
    juce::Rectangle<int> bounds;
    int frames = 1;
    juce::String link;
    juce::String onClick, onClickWithCtrl;
    std::vector<Attribute> attributes;
    juce::String resource; // the image; several controls may share one
    std::vector<DigitImage> digits;

    Look look = Look::PushButton;
    juce::String caption;    // drawn in every frame
    juce::String subCaption; // a second line, where there is one
    juce::Colour colour;     // the lit colour
};

// A text printed on the panel.
struct Label
{
    juce::String text;
    int x = 0, baseline = 0;
    juce::Justification justification = juce::Justification::horizontallyCentred;
    enum Style
    {
        knob,  // under a knob or over a button
        title, // a section's name
        small, // step numbers, switch positions
        logo,
        tagline
    } style = knob;
};

// A raised plate that groups a section, with its title in the top left.
struct Plate
{
    juce::Rectangle<int> area;
    juce::String title;
    int headerHeight = 0; // a darker band on top, where the names stand
};

// A recessed window that holds displays.
struct Window
{
    juce::Rectangle<int> area;
};

// A thin line on the panel.
struct Rule
{
    juce::Line<float> line;
};

struct Layout
{
    std::vector<Control> controls; // in skin order: earlier ones lie on top
    std::vector<Plate> plates;
    std::vector<Window> windows;
    std::vector<Label> labels;
    std::vector<Rule> rules;    // brackets that tie controls together
    std::vector<Rule> dividers; // engraved lines between the strips of a plate
};

Layout buildLayout();

// The angle of a rotary switch position, in radians clockwise from twelve.
float switchAngle(int position, int positions);

// The display colours, shared by the skin (the text displays fill with the
// background) and by the font and digit art: glowing amber on near black.
juce::Colour displayBackground();
juce::Colour displayInk();
} // namespace PanelArt
