#include "Preview.h"

#include "PanelPainter.h"

namespace PanelArt
{
namespace
{
bool isOneOf(const juce::String& name, std::initializer_list<const char*> names)
{
    for (auto* n : names)
        if (name == n)
            return true;
    return false;
}

// Steps of a busy bar: 2 accented, 1 plain; the running light stands on step 7.
constexpr int stepStates[16] = { 2, 0, 1, 0, 2, 0, 1, 1, 2, 0, 1, 0, 2, 0, 1, 2 };
constexpr int runningStep = 6;
} // namespace

int Preview::frameOf(const Control& c, bool lively) const
{
    if (!lively)
        return 0;

    const auto& n = c.name;
    switch (c.look)
    {
        case Look::SoundKnob:
        case Look::LevelKnob:
        case Look::BigKnob:
        {
            if (n == "TempoKnob")
                return 10; // 120 BPM
            const int spread = c.look == Look::LevelKnob ? 8 : 22;
            const int base = c.look == Look::LevelKnob ? 17 : 4;
            return base + (n.hashCode() & 0x7fff) % spread;
        }
        case Look::FillSwitch:
            return 3;
        case Look::SlideSwitch:
            return 1;
        case Look::NameLight:
            return isOneOf(n, { "BassDrumActivityLed", "ClosedHiHatActivityLed", "AccentActivityLed" }) ? 1 : 0;
        case Look::Led:
            return n.startsWith("Step") || isOneOf(n, { "MaracasLevelModeLed", "MidiActivityLed", "BasicVariationALed", "PattPart1Led" }) ? 1 : 0;
        case Look::StripButton:
            return isOneOf(n, { "LaserGunMuteButton", "HandClapSoloButton", "BassDrumSelectButton" }) ? 1 : 0;
        case Look::LedButton:
            return isOneOf(n, { "IntSeqButton", "IntSyncButton", "PattScale3Button" }) ? 1 : 0;
        case Look::LatchButton:
            return isOneOf(n, { "PattWriteModeButton", "VariationAButton", "Part1Button" }) ? 2 : 0;
        case Look::StepKey:
        {
            const int step = n.substring(4, 6).getIntValue() - 1;
            const int state = stepStates[step];
            // The running light shows an empty step lit and a lit one dark.
            const int shown = step == runningStep ? (state > 0 ? 0 : 2) : state;
            return 2 * shown;
        }
        case Look::PushButton:
        case Look::TransportKey:
        case Look::TextDisplay:
        case Look::Digits:
        case Look::PatternDigits:
            break;
    }
    return 0;
}

std::vector<int> Preview::digitFrames(const Control& c, bool lively) const
{
    if (!lively)
        return std::vector<int>(c.digits.size(), 0);
    if (c.name == "PatternNumberDisplay")
        return { 0, 1, 2, 0 }; // pattern 1, read as a number
    if (c.name == "TempoDisplay")
        return { 2, 3, 1, 1 }; // 120.0
    const int output = 1 + (c.name.hashCode() & 0x7fff) % 12;
    return { output >= 10 ? 2 : 0, output % 10 + 1 };
}

juce::String Preview::textOf(const Control& c, bool lively) const
{
    if (!lively)
        return {};
    return c.name == "PresetNameDisplay" ? "Dry Kit with Long Decay" : "Basic Beat 1";
}

// As the text display paints: its colour, then one glyph cell a column.
void Preview::drawText(juce::Graphics& g, const Control& c, const juce::String& text) const
{
    const auto r = c.bounds;
    g.setColour(displayBackground());
    g.fillRect(r);
    const int w = PanelPainter::glyphWidth, h = PanelPainter::glyphHeight;
    const int columns = r.getWidth() / w;
    const int x0 = r.getX() + (r.getWidth() - columns * w) / 2;
    const int y0 = r.getY() + (r.getHeight() - h) / 2;
    for (int i = 0; i < columns; ++i)
    {
        const int code = juce::jlimit(32, 127, i < text.length() ? (int) text[i] : 32);
        g.drawImage(font, x0 + i * w, y0, w, h, 0, (code - 32) * h, w, h);
    }
}

void Preview::drawFrame(juce::Graphics& g, const juce::Image& strip, int frames, juce::Rectangle<int> at, int frame) const
{
    const int h = strip.getHeight() / juce::jmax(1, frames);
    g.drawImage(strip, at.getX(), at.getY(), strip.getWidth(), h, 0, frame * h, strip.getWidth(), h);
}

juce::Image Preview::compose(bool lively) const
{
    juce::Image panel = background.createCopy();
    juce::Graphics g(panel);

    // Earlier controls lie on top, as in the editor.
    for (auto it = layout.controls.rbegin(); it != layout.controls.rend(); ++it)
    {
        const auto& c = *it;

        // Of each level and threshold pair only one shows: the threshold
        // while the instrument's randomizer lamp is lit.
        const bool threshold = c.name.endsWith("RandThresholdKnob");
        const bool levelKnob = c.name.endsWith("LevelKnob");
        if (threshold || levelKnob)
        {
            const auto token = c.name.upToFirstOccurrenceOf(threshold ? "RandThresholdKnob" : "LevelKnob", false, false);
            const bool randomOn = lively && token == "Maracas";
            if (threshold != randomOn)
                continue;
        }

        if (c.look == Look::TextDisplay)
            drawText(g, c, textOf(c, lively));
        else if (!c.digits.empty())
        {
            const auto frames = digitFrames(c, lively);
            int x = c.bounds.getX();
            for (size_t i = 0; i < frames.size(); ++i)
            {
                const auto& d = c.digits[c.digits.size() == 1 ? 0 : i];
                drawFrame(g, strips.at(d.resource), d.frames, { x, c.bounds.getY(), d.width, d.height }, frames[i]);
                x += d.width;
            }
        }
        else
            drawFrame(g, strips.at(c.resource), c.frames, c.bounds, frameOf(c, lively));
    }
    return panel;
}
} // namespace PanelArt
