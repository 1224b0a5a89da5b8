#include "PluginTestHost.h"

#include "parameters/InstrumentNames.h"
#include "plugin/Resources.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

// The skin the plug-in carries: every control the panel needs, images the
// editor can cut into frames, and names that bind to real parameters and events.
namespace
{
std::unique_ptr<juce::XmlElement> shippedSkin()
{
    auto xml = juce::parseXML(Resources::loadResourceText("skin.xml"));
    return xml != nullptr && xml->hasTagName("PluginEditor") ? std::move(xml) : nullptr;
}

struct Png
{
    int width = 0, height = 0, bitDepth = 0, colourType = -1;
};

// The header of an embedded PNG: size, bit depth and colour type (2 is RGB
// without alpha).
Png pngHeader(const juce::String& resource)
{
    const auto data = Resources::loadResourceData(resource);
    if (!data.has_value() || data->getSize() < 26)
        return {};
    const auto* b = static_cast<const juce::uint8*>(data->getData());
    if (juce::String::fromUTF8((const char*) b + 1, 3) != "PNG")
        return {};
    return { (int) juce::ByteOrder::bigEndianInt(b + 16), (int) juce::ByteOrder::bigEndianInt(b + 20), b[24], b[25] };
}

juce::Rectangle<int> placeOf(const juce::XmlElement& e)
{
    const auto* pos = e.getChildByName("pos");
    const auto* size = e.getChildByName("size");
    return { pos ? pos->getIntAttribute("left") : 0, pos ? pos->getIntAttribute("top") : 0,
             size ? size->getIntAttribute("width") : 0, size ? size->getIntAttribute("height") : 0 };
}

// The frames the editor cuts from a framed control's image.
int framesOf(const juce::XmlElement& e)
{
    if (e.hasTagName("MultiStateButton"))
        return e.getIntAttribute("states", 2) * (e.getStringAttribute("style") == "3D" ? 2 : 1);
    return e.getChildByName("gfx")->getIntAttribute("framesNum", 1);
}

// Every image a control shows, with the frames the editor cuts from it: the
// pattern number's four digits, a number's digits (0 to 9 and blank), a text
// display's 96 glyphs and their caret cells, or the control's one strip.
std::vector<std::pair<juce::String, int>> stripsOf(const juce::XmlElement& e)
{
    const auto* gfx = e.getChildByName("gfx");
    if (e.hasTagName("PatternNumberDisplay"))
        return { { gfx->getStringAttribute("firstDigit"), 12 }, { gfx->getStringAttribute("secondDigit"), 19 }, { gfx->getStringAttribute("thirdDigit"), 13 }, { gfx->getStringAttribute("fourthDigit"), 11 } };
    if (e.hasTagName("Display"))
        return { { gfx->getStringAttribute("resource"), 2 * 96 } };
    if (e.hasTagName("NumericDisplay"))
    {
        const auto* digits = e.getChildByName("digits");
        std::vector<std::pair<juce::String, int>> strips;
        for (int i = 0; i < e.getIntAttribute("digitsNum", 1); ++i)
            strips.push_back({ digits->getNumChildElements() > 0 ? digits->getChildElement(i)->getStringAttribute("resource") : digits->getStringAttribute("resource"), 11 });
        return strips;
    }
    return { { gfx->getStringAttribute("resource"), framesOf(e) } };
}

// How many pairs of a strip's frames look alike: no channel of any pixel
// differs by more than a shade (gradients may round a step apart).
int framesAlike(const juce::String& resource, int frames)
{
    juce::Image strip;
    if (!Resources::loadResourceImage(resource, strip))
        return frames;
    const juce::Image::BitmapData data(strip, juce::Image::BitmapData::readOnly);
    const int frameHeight = strip.getHeight() / frames;
    auto alike = [&](int a, int b)
    {
        for (int y = 0; y < frameHeight; ++y)
            for (int i = 0; i < strip.getWidth() * data.pixelStride; ++i)
                if (std::abs((int) data.getLinePointer(a * frameHeight + y)[i] - (int) data.getLinePointer(b * frameHeight + y)[i]) > 8)
                    return false;
        return true;
    };
    int pairs = 0;
    for (int a = 0; a < frames; ++a)
        for (int b = a + 1; b < frames; ++b)
            pairs += alike(a, b) ? 1 : 0;
    return pairs;
}
} // namespace

TEST(PluginShippedSkin, HoldsEveryControlOnceInsideThePanel)
{
    auto skin = shippedSkin();
    ASSERT_NE(skin, nullptr);
    EXPECT_EQ(skin->getStringAttribute("application"), "Quindrel");
    const auto background = pngHeader(skin->getStringAttribute("background", "Background.png"));
    EXPECT_TRUE(background.width == 900 && background.height == 575);

    std::map<juce::String, int> perType;
    std::set<juce::String> names;
    for (auto* e : skin->getChildIterator())
    {
        const auto name = e->getStringAttribute("name");
        ++perType[e->getTagName()];
        EXPECT_TRUE(names.insert(name).second) << "two controls named " << name;

        auto place = placeOf(*e);
        if (e->hasTagName("NumericDisplay")) // its size is that of its digits side by side
        {
            place.setWidth(0);
            for (const auto& [resource, frames] : stripsOf(*e))
            {
                const auto png = pngHeader(resource);
                place.setWidth(place.getWidth() + png.width);
                place.setHeight(juce::jmax(place.getHeight(), png.height / frames));
            }
        }
        EXPECT_FALSE(place.isEmpty()) << name;
        EXPECT_TRUE(juce::Rectangle<int>(background.width, background.height).contains(place)) << name << " at " << place.toString();
    }
    const std::map<juce::String, int> expected{ { "MultiStateButton", 102 }, { "Knob", 79 }, { "Animation", 39 }, { "NumericDisplay", 18 }, { "Button", 15 }, { "Switch", 3 }, { "Display", 2 }, { "PatternNumberDisplay", 1 } };
    EXPECT_EQ(perType, expected);
}

// Each image is an 8-bit RGB strip of whole frames, each frame showing its
// own state (a lamp that does not light, a knob position without its pointer
// or two digits alike mislead the player), sized as the layout meant.
TEST(PluginShippedSkin, ImagesAreRgbStripsOfDistinctFramesOfTheControlsSize)
{
    auto skin = shippedSkin();
    ASSERT_NE(skin, nullptr);
    std::set<juce::String> seen;
    for (auto* e : skin->getChildIterator())
    {
        const auto name = e->getStringAttribute("name");
        const auto strips = stripsOf(*e);
        for (const auto& [resource, frames] : strips)
        {
            const auto png = pngHeader(resource);
            EXPECT_GT(png.width, 0) << name << ": no image " << resource;
            EXPECT_EQ(png.height % frames, 0) << resource;
            EXPECT_TRUE(png.bitDepth == 8 && png.colourType == 2) << resource << " is not RGB without alpha";
            EXPECT_TRUE(!seen.insert(resource).second || framesAlike(resource, frames) == 0) << resource << " has frames alike";
        }

        const auto place = placeOf(*e);
        const auto first = pngHeader(strips[0].first);
        if (e->hasTagName("PatternNumberDisplay"))
        {
            int width = 0;
            for (const auto& [resource, frames] : strips)
            {
                EXPECT_EQ(pngHeader(resource).height / frames, 34) << resource;
                width += pngHeader(resource).width;
            }
            EXPECT_TRUE(width == 110 && width == place.getWidth()) << width;
        }
        else if (e->hasTagName("Display"))
        {
            EXPECT_EQ(e->getChildByName("gfx")->getIntAttribute("fontHeight"), 9) << name;
            EXPECT_TRUE(first.width == 7 && first.height == 2 * 96 * 9) << name;
        }
        else if (!e->hasTagName("NumericDisplay"))
        {
            const int frames = strips[0].second;
            const bool twoFrames = e->hasTagName("Animation") || e->hasTagName("Button") || (e->hasTagName("MultiStateButton") && e->getStringAttribute("style") != "3D");
            EXPECT_TRUE(e->hasTagName("Knob") ? frames == 31 : twoFrames ? frames == 2 : !e->hasTagName("MultiStateButton") || frames == 4 || frames == 6) << name << ": " << frames;
            EXPECT_EQ(e->getChildByName("gfx")->getIntAttribute("framesNum", frames), frames) << name;
            // The image decides the control's size: it must be the one the layout meant.
            EXPECT_TRUE(first.width == place.getWidth() && first.height == frames * place.getHeight()) << name;
        }
    }
}

TEST(PluginShippedSkin, EveryLinkAndActionBindsToThePlugin)
{
    auto skin = shippedSkin();
    ASSERT_NE(skin, nullptr);
    PluginTestHost host;
    int links = 0, actions = 0;
    for (auto* e : skin->getChildIterator())
    {
        const auto name = e->getStringAttribute("name");
        if (auto* list = e->getChildByName("links"))
            for (auto* link : list->getChildIterator())
            {
                ++links;
                EXPECT_EQ(link->getStringAttribute("as"), "connectedTo") << name;
                EXPECT_NE(host.plugin->getParameterManager().getParameter(link->getStringAttribute("param")), nullptr) << name << " links to an unknown parameter " << link->getStringAttribute("param");
            }
        if (auto* list = e->getChildByName("actions"))
            for (auto* action : list->getChildIterator())
            {
                ++actions;
                const auto type = action->getStringAttribute("type");
                EXPECT_TRUE(type == "onClick" || type == "onClickWithCtrl") << name << ": " << type;
                EXPECT_GE(host.plugin->getEvents().getUid(action->getStringAttribute("event")), 0) << name << " fires an unknown event " << action->getStringAttribute("event");
            }
    }
    // Everything but the MIDI lamps, the options and the preset and pattern
    // buttons links; every button acts.
    EXPECT_GT(links, 200);
    EXPECT_GT(actions, 150);
}

TEST(PluginShippedSkin, TheEditorFindsItsNamedControls)
{
    auto skin = shippedSkin();
    ASSERT_NE(skin, nullptr);
    std::map<juce::String, const juce::XmlElement*> byName;
    for (auto* e : skin->getChildIterator())
        byName[e->getStringAttribute("name")] = e;
    auto expectControl = [&](const juce::String& name, const char* type)
    {
        const auto it = byName.find(name);
        EXPECT_TRUE(it != byName.end() && it->second->hasTagName(type)) << name << " is missing or no " << type;
    };

    for (const auto* n : { "MidiLearnButton", "PattRandModeButton", "PattLengthButton" })
        expectControl(n, "MultiStateButton");
    for (const auto* n : { "PattPrevButton", "PattNextButton" })
        expectControl(n, "Button");
    for (const auto* n : { "TempoKnob", "ShuffleKnob" })
        expectControl(n, "Knob");
    expectControl("MidiActivityLed", "Animation");
    expectControl("PatternNameDisplay", "Display");
    expectControl("TempoDisplay", "NumericDisplay");
    for (int s = 1; s <= 16; ++s)
        expectControl("Step" + juce::String(s).paddedLeft('0', 2) + "Button", "MultiStateButton");

    for (int t = 0; t < trackCount; ++t)
    {
        const auto token = juce::String(instrumentNames[t]).removeCharacters(" ");
        for (const auto* n : { "ActivityLed", "SelectButton" })
            expectControl(token + n, "MultiStateButton");
        expectControl(token + "LevelModeLed", "Animation");
        expectControl(token + "LevelKnob", "Knob");
        expectControl(token + "RandThresholdKnob", "Knob");

        // The editor shows one of the two at a time, in the same place and look.
        const auto* level = byName[token + "LevelKnob"];
        const auto* threshold = byName[token + "RandThresholdKnob"];
        ASSERT_TRUE(level != nullptr && threshold != nullptr) << token;
        EXPECT_EQ(placeOf(*level), placeOf(*threshold)) << token;
        EXPECT_EQ(stripsOf(*level), stripsOf(*threshold)) << token;
    }
}

TEST(PluginShippedSkin, FramesCarryThePanelBehindThem)
{
    auto skin = shippedSkin();
    ASSERT_NE(skin, nullptr);
    juce::Image panel, font;
    ASSERT_TRUE(Resources::loadResourceImage("Background.png", panel) && Resources::loadResourceImage("Fonts.png", font));

    // Every frame covers its rectangle, so its corners must be the panel's
    // own pixels there, or the control shows a seam in one of its states.
    for (auto* e : skin->getChildIterator())
    {
        const auto* gfx = e->getChildByName("gfx");
        const auto name = e->getStringAttribute("name");
        if (e->hasTagName("Display")) // fills with its colour, then draws glyph cells on it; caret cells differ
        {
            const auto fill = juce::Colour::fromString(e->getStringAttribute("backgroundColour"));
            EXPECT_TRUE(font.getPixelAt(0, 0) == fill && font.getPixelAt(0, font.getHeight() / 2) != fill) << name;
        }
        if (gfx == nullptr || !gfx->hasAttribute("framesNum"))
            continue;
        juce::Image strip;
        ASSERT_TRUE(Resources::loadResourceImage(gfx->getStringAttribute("resource"), strip)) << name;
        const auto place = placeOf(*e);
        int seams = 0;
        for (int f = 0; f < framesOf(*e); ++f)
            for (const auto corner : { juce::Point<int>(), { place.getWidth() - 1, 0 }, { 0, place.getHeight() - 1 }, { place.getWidth() - 1, place.getHeight() - 1 } })
                seams += strip.getPixelAt(corner.x, f * place.getHeight() + corner.y) != panel.getPixelAt(place.getX() + corner.x, place.getY() + corner.y) ? 1 : 0;
        EXPECT_EQ(seams, 0) << name << ": corners of its frames that differ from the panel";
    }
}
