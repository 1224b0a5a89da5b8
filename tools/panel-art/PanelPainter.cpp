#include "PanelPainter.h"

#include "plugin/Resources.h"

#include <cmath>

namespace PanelArt
{
namespace
{
// Values, not hues, carry the hierarchy: panel darkest, controls lighter,
// labels lighter still.
const juce::Colour panelTop(0xff24272c);
const juce::Colour panelBottom(0xff1c1e22);
const juce::Colour barColour(0xff141619);
const juce::Colour plateColour(0xff2a2e34);
const juce::Colour plateEdge(0xff141518);
const juce::Colour plateLight(0xff353a41);
const juce::Colour dividerColour(0xff202328);
const juce::Colour capColour(0xff41464e);
const juce::Colour captionColour(0xffd0d5db);
const juce::Colour labelColour(0xffa9b1ba);
const juce::Colour titleColour(0xff7f8994);
const juce::Colour smallColour(0xff8d96a0);
const juce::Colour arcColour(0xff4fc9c0);
const juce::Colour arcTrack(0xff131517);

juce::Point<float> polar(juce::Point<float> centre, float angle, float radius)
{
    return { centre.x + radius * std::sin(angle), centre.y - radius * std::cos(angle) };
}

juce::Rectangle<float> circle(juce::Point<float> centre, float radius)
{
    return { centre.x - radius, centre.y - radius, 2 * radius, 2 * radius };
}

// Seven segments a to g as bits 0 to 6.
enum : int
{
    segA = 1,
    segB = 2,
    segC = 4,
    segD = 8,
    segE = 16,
    segF = 32,
    segG = 64
};
const int digitSegments[10] = { 0x3f, 0x06, 0x5b, 0x4f, 0x66, 0x6d, 0x7d, 0x07, 0x7f, 0x6f };
const int noteSegments[8] = { 0x39, 0x5e, 0x79, 0x71, 0x3d, 0x77, 0x7c, 0x40 }; // C d E F G A b -
constexpr int sharpSign = -1;

// What a digit frame shows: segments, a sharp sign or nothing, and the point.
struct DigitGlyph
{
    int segments = 0;
    bool point = false;
};

DigitGlyph glyphFor(int kind, int frame)
{
    if (frame >= 1 && frame <= 10)
        return { digitSegments[frame - 1], false };
    if (kind == 1 && frame == 11)
        return { 0x73, true }; // "P."
    if (kind == 2 && frame >= 11 && frame <= 18)
        return { noteSegments[frame - 11], false };
    if (kind == 3 && frame == 11)
        return { sharpSign, false };
    if (kind == 3 && frame == 12)
        return { segG, false };
    return {};
}

juce::Path segmentPath(int segment, juce::Rectangle<float> box, float t)
{
    const float gap = t * 0.28f;
    const float left = box.getX() + t / 2, right = box.getRight() - t / 2;
    const float top = box.getY() + t / 2, bottom = box.getBottom() - t / 2, middle = box.getCentreY();
    juce::Path p;

    auto horizontal = [&](float y)
    {
        const float a = left + gap, b = right - gap;
        p.startNewSubPath(a, y);
        p.lineTo(a + t / 2, y - t / 2);
        p.lineTo(b - t / 2, y - t / 2);
        p.lineTo(b, y);
        p.lineTo(b - t / 2, y + t / 2);
        p.lineTo(a + t / 2, y + t / 2);
        p.closeSubPath();
    };
    auto vertical = [&](float x, float y0, float y1)
    {
        const float a = y0 + gap, b = y1 - gap;
        p.startNewSubPath(x, a);
        p.lineTo(x + t / 2, a + t / 2);
        p.lineTo(x + t / 2, b - t / 2);
        p.lineTo(x, b);
        p.lineTo(x - t / 2, b - t / 2);
        p.lineTo(x - t / 2, a + t / 2);
        p.closeSubPath();
    };

    switch (segment)
    {
        case 0:
            horizontal(top);
            break;
        case 1:
            vertical(right, top, middle);
            break;
        case 2:
            vertical(right, middle, bottom);
            break;
        case 3:
            horizontal(bottom);
            break;
        case 4:
            vertical(left, middle, bottom);
            break;
        case 5:
            vertical(left, top, middle);
            break;
        default:
            horizontal(middle);
            break;
    }
    return p;
}

void fillGlowing(juce::Graphics& g, const juce::Path& p, juce::Colour colour, float glow)
{
    g.setColour(colour.withAlpha(0.22f));
    g.strokePath(p, juce::PathStrokeType(glow, juce::PathStrokeType::curved, juce::PathStrokeType::rounded));
    g.setColour(colour);
    g.fillPath(p);
}
} // namespace

PanelPainter::PanelPainter()
{
    auto load = [](const char* name) -> juce::Typeface::Ptr
    {
        const auto data = Resources::loadResourceData(name);
        return data.has_value() ? juce::Typeface::createSystemTypefaceFor(data->getData(), data->getSize()) : nullptr;
    };
    regular = load("DejaVuSansCondensed.ttf");
    bold = load("DejaVuSansCondensed-Bold.ttf");
}

juce::Font PanelPainter::font(bool isBold, float height, float tracking) const
{
    juce::Font f(isBold ? bold : regular);
    f.setHeight(height);
    f.setExtraKerningFactor(tracking);
    return f;
}

void PanelPainter::text(juce::Graphics& g, const juce::String& s, float x, float baseline, const juce::Font& f, juce::Colour colour, juce::Justification j) const
{
    g.setColour(colour);
    g.setFont(f);
    g.drawSingleLineText(s, juce::roundToInt(x), juce::roundToInt(baseline), j);
}

void PanelPainter::paintLabel(juce::Graphics& g, const Label& label) const
{
    switch (label.style)
    {
        case Label::knob:
            text(g, label.text, (float) label.x, (float) label.baseline, font(false, 11.2f, 0.03f), labelColour, label.justification);
            break;
        case Label::title:
            text(g, label.text, (float) label.x, (float) label.baseline, font(true, 9.6f, 0.12f), titleColour, label.justification);
            break;
        case Label::small:
            text(g, label.text, (float) label.x, (float) label.baseline, font(false, 10.4f, 0.02f), smallColour, label.justification);
            break;
        case Label::logo:
            text(g, label.text, (float) label.x, (float) label.baseline, font(true, 24.0f, 0.16f), juce::Colour(0xffe6e9ed), label.justification);
            break;
        case Label::tagline:
            text(g, label.text, (float) label.x, (float) label.baseline, font(false, 8.8f, 0.14f), juce::Colour(0xff6f7883), label.justification);
            break;
    }
}

//==============================================================================
void PanelPainter::paintBackground(juce::Graphics& g, const Layout& layout) const
{
    g.setGradientFill(juce::ColourGradient(panelTop, 0, 0, panelBottom, 0, (float) panelHeight, false));
    g.fillAll();

    g.setColour(barColour);
    g.fillRect(0, 0, panelWidth, 50);
    g.setColour(juce::Colour(0xff0d0e10));
    g.fillRect(0, 50, panelWidth, 1);

    for (const auto& plate : layout.plates)
    {
        const auto r = plate.area.toFloat();
        g.setColour(plateEdge);
        g.fillRoundedRectangle(r.expanded(1.0f), 5.0f);
        g.setGradientFill(juce::ColourGradient(plateColour.brighter(0.04f), 0, r.getY(), plateColour.darker(0.08f), 0, r.getBottom(), false));
        g.fillRoundedRectangle(r, 4.0f);
        if (plate.headerHeight > 0)
        {
            juce::Graphics::ScopedSaveState state(g);
            g.reduceClipRegion(plate.area.withHeight(plate.headerHeight));
            g.setColour(plateColour.darker(0.28f));
            g.fillRoundedRectangle(r, 4.0f);
            g.setColour(plateEdge.withAlpha(0.8f));
            g.fillRect(r.getX(), r.getY() + (float) plate.headerHeight - 1.0f, r.getWidth(), 1.0f);
        }
        g.setColour(plateLight);
        g.fillRect(r.getX() + 4, r.getY(), r.getWidth() - 8, 1.0f);
        if (plate.title.isNotEmpty())
            paintLabel(g, { plate.title, plate.area.getX() + 8, plate.area.getY() + 12, juce::Justification::left, Label::title });
    }

    // Engraved: a dark line with a light one beside it.
    for (const auto& d : layout.dividers)
    {
        g.setColour(dividerColour);
        g.drawLine(d.line, 1.0f);
        g.setColour(plateLight.withAlpha(0.5f));
        g.drawLine(d.line.getStartX() + 1.0f, d.line.getStartY(), d.line.getEndX() + 1.0f, d.line.getEndY(), 1.0f);
    }

    for (const auto& w : layout.windows)
    {
        const auto r = w.area.toFloat();
        g.setColour(plateLight.brighter(0.1f));
        g.fillRoundedRectangle(r.translated(0, 1), 3.0f);
        g.setColour(juce::Colour(0xff08090a));
        g.fillRoundedRectangle(r, 3.0f);
        g.setColour(displayBackground());
        g.fillRoundedRectangle(r.reduced(1.5f), 2.0f);
    }

    for (const auto& rule : layout.rules)
    {
        g.setColour(titleColour.withAlpha(0.55f));
        g.drawLine(rule.line, 1.0f);
    }

    for (const auto& label : layout.labels)
        paintLabel(g, label);
}

//==============================================================================
void PanelPainter::paintFrame(juce::Graphics& g, const Control& c, int frame) const
{
    const auto r = c.bounds.withZeroOrigin().toFloat();

    switch (c.look)
    {
        case Look::SoundKnob:
        case Look::LevelKnob:
        case Look::BigKnob:
            knob(g, r, c.frames > 1 ? (float) frame / (float) (c.frames - 1) : 0.0f, c.look);
            break;
        case Look::FillSwitch:
            rotarySwitch(g, r, frame, c.frames);
            break;
        case Look::SlideSwitch:
            slideSwitch(g, r, frame, c.frames);
            break;
        case Look::NameLight:
            nameLight(g, c, frame == 1);
            break;
        case Look::Led:
            lamp(g, r.getCentre(), juce::jmin(r.getWidth(), r.getHeight()) / 2 - 1.0f, c.colour, frame == 1);
            break;
        case Look::StripButton:
        {
            const bool on = frame == 1;
            cap(g, r.reduced(1.0f), false, on ? c.colour : capColour);
            const auto ink = on ? (c.colour.getPerceivedBrightness() > 0.6f ? juce::Colour(0xff1d1f22) : juce::Colours::white) : captionColour;
            caption(g, c, r.reduced(1.0f), ink);
            break;
        }
        case Look::LedButton:
        case Look::LatchButton:
        {
            // A lamp bar above the caption: the button says what it is and whether it is on.
            const bool on = c.look == Look::LedButton ? frame == 1 : frame >= 2;
            const bool pressed = c.look == Look::LatchButton && frame % 2 == 1;
            auto body = r.reduced(1.0f);
            cap(g, body, pressed, capColour);
            if (pressed)
                body.translate(0, 1);
            const float barW = juce::jmin(16.0f, body.getWidth() - 12.0f);
            lampBar(g, { body.getCentreX() - barW / 2, body.getY() + 3.0f, barW, 2.5f }, c.colour, on);
            caption(g, c, body.withTrimmedTop(4.0f), on ? juce::Colours::white : captionColour);
            break;
        }
        case Look::PushButton:
        {
            const bool pressed = frame == 1;
            auto body = r.reduced(1.0f);
            cap(g, body, pressed, capColour);
            caption(g, c, pressed ? body.translated(0, 1) : body, captionColour);
            break;
        }
        case Look::TransportKey:
            transportKey(g, c, frame == 1);
            break;
        case Look::StepKey:
            stepKey(g, c, frame / 2, frame % 2 == 1);
            break;
        case Look::TextDisplay:
        case Look::Digits:
        case Look::PatternDigits:
            break; // drawn by the displays themselves
    }
}

void PanelPainter::knob(juce::Graphics& g, juce::Rectangle<float> r, float value, Look look) const
{
    const auto c = r.getCentre();
    const float arcR = r.getWidth() / 2 - 2.5f;
    const float bodyR = arcR - (look == Look::BigKnob ? 5.0f : 4.5f);
    constexpr float a0 = -2.35619f, a1 = 2.35619f;
    const float a = a0 + (a1 - a0) * value;
    const juce::PathStrokeType arcStroke(3.0f, juce::PathStrokeType::curved, juce::PathStrokeType::rounded);

    juce::Path track;
    track.addCentredArc(c.x, c.y, arcR, arcR, 0.0f, a0, a1, true);
    g.setColour(arcTrack);
    g.strokePath(track, arcStroke);
    if (value > 0.0f)
    {
        juce::Path arc;
        arc.addCentredArc(c.x, c.y, arcR, arcR, 0.0f, a0, a, true);
        g.setColour(look == Look::LevelKnob ? juce::Colour(0xffe9edf1) : arcColour);
        g.strokePath(arc, arcStroke);
    }

    const bool light = look == Look::LevelKnob;
    const auto top = light ? juce::Colour(0xffa9afb7) : juce::Colour(0xff5a6069);
    const auto bottom = light ? juce::Colour(0xff6b717a) : juce::Colour(0xff2b2f35);
    g.setColour(juce::Colours::black.withAlpha(0.55f));
    g.fillEllipse(circle(c.translated(0, 1.0f), bodyR + 1.0f));
    g.setGradientFill(juce::ColourGradient(top, c.x, c.y - bodyR, bottom, c.x, c.y + bodyR, false));
    g.fillEllipse(circle(c, bodyR));
    g.setGradientFill(juce::ColourGradient(bottom.brighter(0.15f), c.x, c.y - bodyR, top.darker(0.05f), c.x, c.y + bodyR, false));
    g.fillEllipse(circle(c, bodyR - 2.0f));

    juce::Path pointer;
    pointer.startNewSubPath(polar(c, a, bodyR * 0.3f));
    pointer.lineTo(polar(c, a, bodyR - 1.8f));
    g.setColour(light ? juce::Colour(0xff1b1d20) : juce::Colour(0xfff3f5f7));
    g.strokePath(pointer, juce::PathStrokeType(2.2f, juce::PathStrokeType::curved, juce::PathStrokeType::rounded));
}

void PanelPainter::rotarySwitch(juce::Graphics& g, juce::Rectangle<float> r, int position, int positions) const
{
    const auto c = r.getCentre();
    const float bodyR = r.getWidth() / 2 - 6.0f;
    for (int p = 0; p < positions; ++p)
    {
        const auto dot = polar(c, switchAngle(p, positions), r.getWidth() / 2 - 2.0f);
        g.setColour(p == position ? displayInk() : juce::Colour(0xff5b626b));
        g.fillEllipse(circle(dot, p == position ? 1.8f : 1.3f));
    }

    g.setColour(juce::Colours::black.withAlpha(0.55f));
    g.fillEllipse(circle(c.translated(0, 1.0f), bodyR + 1.0f));
    g.setGradientFill(juce::ColourGradient(juce::Colour(0xff5a6069), c.x, c.y - bodyR, juce::Colour(0xff2b2f35), c.x, c.y + bodyR, false));
    g.fillEllipse(circle(c, bodyR));

    // A bar across the knob with a pointed end, as on a selector.
    const float a = switchAngle(position, positions);
    juce::Path bar;
    bar.addRoundedRectangle(-2.2f, -bodyR + 0.5f, 4.4f, 2 * bodyR - 1.0f, 2.0f);
    bar.applyTransform(juce::AffineTransform::rotation(a).translated(c.x, c.y));
    g.setColour(juce::Colour(0xff353a41));
    g.fillPath(bar);
    juce::Path tip;
    tip.startNewSubPath(polar(c, a, bodyR * 0.15f));
    tip.lineTo(polar(c, a, bodyR - 1.5f));
    g.setColour(juce::Colour(0xfff3f5f7));
    g.strokePath(tip, juce::PathStrokeType(2.0f, juce::PathStrokeType::curved, juce::PathStrokeType::rounded));
}

void PanelPainter::slideSwitch(juce::Graphics& g, juce::Rectangle<float> r, int position, int positions) const
{
    const auto slot = r.reduced(1.0f, 4.0f);
    g.setColour(plateLight);
    g.fillRoundedRectangle(slot.translated(0, 1), 3.5f);
    g.setColour(juce::Colour(0xff0c0d0f));
    g.fillRoundedRectangle(slot, 3.5f);

    const float thumbW = 16.0f;
    const float x = r.getX() + 1.0f + (r.getWidth() - 2.0f - thumbW) * (float) position / (float) juce::jmax(1, positions - 1);
    const juce::Rectangle<float> thumb(x, r.getY() + 1.0f, thumbW, r.getHeight() - 2.0f);
    cap(g, thumb, false, juce::Colour(0xff8d939b));
    g.setColour(juce::Colour(0xff4a4f56));
    for (int i = -1; i <= 1; ++i)
        g.fillRect(thumb.getCentreX() + 3.0f * (float) i - 0.5f, thumb.getY() + 4.0f, 1.0f, thumb.getHeight() - 8.0f);
}

void PanelPainter::lamp(juce::Graphics& g, juce::Point<float> centre, float radius, juce::Colour colour, bool on) const
{
    g.setColour(juce::Colours::black.withAlpha(0.6f));
    g.fillEllipse(circle(centre, radius + 0.8f));
    if (!on)
    {
        const auto dark = colour.withMultipliedSaturation(0.45f).withMultipliedBrightness(0.22f);
        g.setGradientFill(juce::ColourGradient(dark.brighter(0.5f), centre.x, centre.y - radius, dark, centre.x, centre.y + radius, false));
        g.fillEllipse(circle(centre, radius));
        return;
    }

    // The glow fades out before the corners, so the frame meets the panel without a seam.
    const auto frame = g.getClipBounds().toFloat();
    const float toCorner = juce::jmin(centre.getDistanceFrom(frame.getTopLeft()), centre.getDistanceFrom(frame.getTopRight()), centre.getDistanceFrom(frame.getBottomLeft()), centre.getDistanceFrom(frame.getBottomRight()));
    const float glow = juce::jmin(radius * 2.2f, toCorner - 1.0f);
    g.setGradientFill(juce::ColourGradient(colour.withAlpha(0.55f), centre.x, centre.y, colour.withAlpha(0.0f), centre.x + glow, centre.y, true));
    g.fillEllipse(circle(centre, glow));
    g.setGradientFill(juce::ColourGradient(colour.brighter(0.9f), centre.x, centre.y - radius * 0.3f, colour, centre.x + radius, centre.y + radius * 0.3f, true));
    g.fillEllipse(circle(centre, radius));
}

void PanelPainter::lampBar(juce::Graphics& g, juce::Rectangle<float> bar, juce::Colour colour, bool on) const
{
    if (on)
    {
        g.setGradientFill(juce::ColourGradient(colour.withAlpha(0.45f), bar.getCentreX(), bar.getCentreY(), colour.withAlpha(0.0f), bar.getRight() + 4.0f, bar.getCentreY(), true));
        g.fillRect(bar.expanded(4.0f, 2.5f));
        g.setColour(colour.brighter(0.4f));
    }
    else
        g.setColour(juce::Colour(0xff17191c));
    g.fillRoundedRectangle(bar, 1.2f);
}

void PanelPainter::cap(juce::Graphics& g, juce::Rectangle<float> r, bool pressed, juce::Colour fill) const
{
    g.setColour(juce::Colour(0xff0e0f11));
    g.fillRoundedRectangle(r.expanded(0.5f), 3.0f);
    const auto top = pressed ? fill.darker(0.25f) : fill.brighter(0.18f);
    const auto bottom = pressed ? fill.darker(0.1f) : fill.darker(0.12f);
    g.setGradientFill(juce::ColourGradient(top, 0, r.getY(), bottom, 0, r.getBottom(), false));
    g.fillRoundedRectangle(r, 2.5f);
    if (!pressed)
    {
        g.setColour(fill.brighter(0.45f).withAlpha(0.6f));
        g.fillRect(r.getX() + 2.5f, r.getY(), r.getWidth() - 5.0f, 1.0f);
    }
}

void PanelPainter::caption(juce::Graphics& g, const Control& c, juce::Rectangle<float> r, juce::Colour colour) const
{
    if (c.caption == "<" || c.caption == ">")
    {
        const float s = juce::jmin(r.getHeight(), r.getWidth()) * 0.22f;
        const auto m = r.getCentre();
        const float dir = c.caption == "<" ? -1.0f : 1.0f;
        juce::Path arrow;
        arrow.addTriangle(m.x + dir * s, m.y, m.x - dir * s * 0.8f, m.y - s, m.x - dir * s * 0.8f, m.y + s);
        g.setColour(colour);
        g.fillPath(arrow);
        return;
    }

    auto f = font(true, r.getHeight() >= 16 ? 10.6f : 10.0f, 0.05f);
    while (f.getHeight() > 8.0f && f.getStringWidthFloat(c.caption) > r.getWidth() - 6.0f)
        f = font(true, f.getHeight() - 0.25f, 0.0f);
    text(g, c.caption, r.getCentreX(), std::floor(r.getCentreY() + 3.5f), f, colour);
}

void PanelPainter::nameLight(juce::Graphics& g, const Control& c, bool on) const
{
    const auto r = c.bounds.withZeroOrigin().toFloat();
    const auto ink = on ? juce::Colours::white : juce::Colour(0xffd9dee3);
    // Long single words shrink until they fit the strip.
    auto f = font(true, 11.0f, 0.04f);
    while (f.getHeight() > 8.0f && juce::jmax(f.getStringWidthFloat(c.caption), f.getStringWidthFloat(c.subCaption)) > r.getWidth() - 2.0f)
        f = font(true, f.getHeight() - 0.25f, 0.0f);
    if (c.subCaption.isEmpty())
        text(g, c.caption, r.getCentreX(), 15.0f, f, ink);
    else
    {
        text(g, c.caption, r.getCentreX(), 9.0f, f, ink);
        text(g, c.subCaption, r.getCentreX(), 19.0f, f, ink);
    }

    const juce::Rectangle<float> bar(r.getCentreX() - 12.0f, r.getBottom() - 4.0f, 24.0f, 3.0f);
    if (on)
    {
        g.setGradientFill(juce::ColourGradient(c.colour.withAlpha(0.5f), bar.getCentreX(), bar.getCentreY(), c.colour.withAlpha(0.0f), bar.getRight() + 6.0f, bar.getCentreY(), true));
        g.fillRect(bar.expanded(6.0f, 2.0f));
        g.setColour(c.colour.brighter(0.5f));
        g.fillRoundedRectangle(bar, 1.5f);
    }
    else
    {
        g.setColour(c.colour.withMultipliedSaturation(0.4f).withMultipliedBrightness(0.2f));
        g.fillRoundedRectangle(bar, 1.5f);
    }
}

void PanelPainter::stepKey(juce::Graphics& g, const Control& c, int state, bool pressed) const
{
    const auto r = c.bounds.withZeroOrigin().toFloat().reduced(1.0f);
    const auto hue = c.colour;
    const auto off = capColour.interpolatedWith(hue, 0.12f);

    g.setColour(juce::Colour(0xff0c0d0f));
    g.fillRoundedRectangle(r.expanded(0.5f), 4.5f);
    g.setColour(off.darker(0.7f));
    g.fillRoundedRectangle(r, 4.0f);

    auto face = r.withTrimmedBottom(3.0f);
    if (pressed)
        face.translate(0, 2.0f);
    // On reads as a key tinted with its group's colour, accented as a key
    // lit through, so a pattern reads from across the room.
    const auto body = state == 2 ? hue : state == 1 ? off.interpolatedWith(hue, 0.42f)
                                                    : off;
    g.setGradientFill(juce::ColourGradient(body.brighter(pressed ? 0.0f : 0.2f), 0, face.getY(), body.darker(0.15f), 0, face.getBottom(), false));
    g.fillRoundedRectangle(face, 4.0f);
    if (!pressed)
    {
        g.setColour(body.brighter(0.6f).withAlpha(0.5f));
        g.fillRect(face.getX() + 4.0f, face.getY(), face.getWidth() - 8.0f, 1.0f);
    }
    if (state < 2)
    {
        // The group's colour stays on a dark key as a band along its foot.
        g.setColour(hue.withMultipliedBrightness(0.8f));
        g.fillRoundedRectangle(face.getX() + 4.0f, face.getBottom() - 7.0f, face.getWidth() - 8.0f, 3.0f, 1.5f);
    }

    const juce::Rectangle<float> lens(face.getCentreX() - 11.0f, face.getY() + 7.0f, 22.0f, 5.0f);
    if (state == 0)
    {
        g.setColour(juce::Colour(0xff141517));
        g.fillRoundedRectangle(lens, 2.0f);
        g.setColour(off.brighter(0.3f).withAlpha(0.5f));
        g.fillRect(lens.getX() + 1.0f, lens.getBottom(), lens.getWidth() - 2.0f, 1.0f);
    }
    else
    {
        const auto light = state == 2 ? juce::Colours::white : hue.brighter(0.35f);
        g.setGradientFill(juce::ColourGradient(light.withAlpha(0.7f), lens.getCentreX(), lens.getCentreY(), light.withAlpha(0.0f), lens.getRight() + 5.0f, lens.getCentreY(), true));
        g.fillRect(lens.expanded(5.0f, 4.0f));
        g.setColour(light);
        g.fillRoundedRectangle(lens, 2.0f);
    }
}

void PanelPainter::transportKey(juce::Graphics& g, const Control& c, bool pressed) const
{
    const auto r = c.bounds.withZeroOrigin().toFloat().reduced(1.0f);
    g.setColour(juce::Colour(0xff0c0d0f));
    g.fillRoundedRectangle(r.expanded(0.5f), 4.5f);
    g.setColour(capColour.darker(0.7f));
    g.fillRoundedRectangle(r, 4.0f);

    auto face = r.withTrimmedBottom(3.0f);
    if (pressed)
        face.translate(0, 2.0f);
    g.setGradientFill(juce::ColourGradient(capColour.brighter(pressed ? 0.0f : 0.2f), 0, face.getY(), capColour.darker(0.15f), 0, face.getBottom(), false));
    g.fillRoundedRectangle(face, 4.0f);
    if (!pressed)
    {
        g.setColour(capColour.brighter(0.6f).withAlpha(0.5f));
        g.fillRect(face.getX() + 4.0f, face.getY(), face.getWidth() - 8.0f, 1.0f);
    }

    const auto m = juce::Point<float>(face.getCentreX(), face.getY() + 14.0f);
    juce::Path icon;
    if (c.caption == "START")
        icon.addTriangle(m.x - 5.0f, m.y - 6.0f, m.x - 5.0f, m.y + 6.0f, m.x + 6.0f, m.y);
    else if (c.caption == "STOP")
        icon.addRectangle(m.x - 5.0f, m.y - 5.0f, 10.0f, 10.0f);
    else
        icon.addEllipse(circle(m, 4.5f));
    g.setColour(captionColour);
    g.fillPath(icon);
    text(g, c.caption, face.getCentreX(), face.getBottom() - 9.0f, font(true, 10.6f, 0.06f), captionColour);
}

//==============================================================================
void PanelPainter::paintDigit(juce::Graphics& g, const DigitImage& d, int frame) const
{
    g.fillAll(displayBackground());

    // Small digits come from the dot-matrix font: segments a pixel and a half
    // wide break apart at this size.
    if (d.height < 20)
    {
        if (frame < 1 || frame > 10)
            return;
        g.setColour(displayInk());
        const int left = (d.width - 5) / 2, top = (d.height - 7) / 2;
        for (int y = 0; y < 7; ++y)
            for (int x = 0; x < 5; ++x)
                if (glyphDot((juce::juce_wchar)('0' + frame - 1), x, y))
                    g.fillRect(left + x, top + y, 1, 1);
        return;
    }

    const auto glyph = glyphFor(d.kind, frame);

    const float glyphH = 26.0f;
    const float glyphW = 16.0f;
    const float t = 3.6f; // segment thickness
    const float slant = 0.07f;
    float x = ((float) d.width - glyphW) / 2.0f;
    if (d.point || d.kind == 1)
        x -= 2.0f;
    const juce::Rectangle<float> box(x, ((float) d.height - glyphH) / 2.0f, glyphW, glyphH);
    const auto shear = juce::AffineTransform(1.0f, -slant, slant * box.getCentreY(), 0.0f, 1.0f, 0.0f);
    const auto ghost = displayBackground().interpolatedWith(displayInk(), 0.06f);
    const float glow = 3.0f;

    if (glyph.segments == sharpSign)
    {
        juce::Path sharp;
        const auto b = box.withTrimmedBottom(box.getHeight() * 0.35f).reduced(1.5f, 1.0f);
        const float w = t * 0.75f;
        sharp.addRectangle(b.getX() + b.getWidth() * 0.3f - w / 2, b.getY(), w, b.getHeight());
        sharp.addRectangle(b.getX() + b.getWidth() * 0.7f - w / 2, b.getY(), w, b.getHeight());
        sharp.addRectangle(b.getX(), b.getY() + b.getHeight() * 0.32f - w / 2, b.getWidth(), w);
        sharp.addRectangle(b.getX(), b.getY() + b.getHeight() * 0.68f - w / 2, b.getWidth(), w);
        sharp.applyTransform(shear);
        fillGlowing(g, sharp, displayInk(), glow);
        return;
    }

    for (int s = 0; s < 7; ++s)
    {
        auto p = segmentPath(s, box, t);
        p.applyTransform(shear);
        if ((glyph.segments & (1 << s)) != 0)
            fillGlowing(g, p, displayInk(), glow);
        else
        {
            g.setColour(ghost);
            g.fillPath(p);
        }
    }

    if (d.point || d.kind == 1)
    {
        const float size = 3.6f;
        const auto dot = juce::Rectangle<float>(box.getRight() + 1.5f, box.getBottom() - size, size, size);
        const bool lit = d.kind == 1 ? glyph.point : frame >= 1;
        juce::Path p;
        p.addRectangle(dot);
        if (lit)
            fillGlowing(g, p, displayInk(), glow);
        else
        {
            g.setColour(ghost);
            g.fillPath(p);
        }
    }
}
} // namespace PanelArt
