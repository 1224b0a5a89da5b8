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
    if (xml == nullptr || !xml->hasTagName("PluginEditor"))
        return nullptr;
    return xml;
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

// The frames the editor cuts from a control's image.
int framesOf(const juce::XmlElement& e)
{
    if (e.hasTagName("MultiStateButton"))
        return e.getIntAttribute("states", 2) * (e.getStringAttribute("style") == "3D" ? 2 : 1);
    return e.getChildByName("gfx")->getIntAttribute("framesNum", 1);
}

juce::String tokenOf(const char* instrumentName)
{
    return juce::String(instrumentName).removeCharacters(" ");
}
} // namespace

TEST(PluginShippedSkin, HoldsEveryControlOnceInsideThePanel)
{
    auto skin = shippedSkin();
    ASSERT_NE(skin, nullptr);
    EXPECT_EQ(skin->getStringAttribute("application"), "Quindrel");

    const auto background = pngHeader(skin->getStringAttribute("background", "Background.png"));
    EXPECT_EQ(background.width, 900);
    EXPECT_EQ(background.height, 575);
    const juce::Rectangle<int> panel(0, 0, background.width, background.height);

    std::map<juce::String, int> perType;
    std::set<juce::String> names;
    for (auto* e : skin->getChildIterator())
    {
        const auto name = e->getStringAttribute("name");
        ++perType[e->getTagName()];
        EXPECT_TRUE(names.insert(name).second) << "two controls named " << name;

        auto place = placeOf(*e);
        if (e->hasTagName("NumericDisplay"))
        {
            // Its size is that of its digits side by side.
            const auto* digits = e->getChildByName("digits");
            ASSERT_NE(digits, nullptr) << name;
            const int count = e->getIntAttribute("digitsNum", 1);
            int width = 0;
            for (int i = 0; i < count; ++i)
            {
                const auto* gfx = digits->getNumChildElements() > 0 ? digits->getChildElement(i) : nullptr;
                const auto png = pngHeader(gfx != nullptr ? gfx->getStringAttribute("resource") : digits->getStringAttribute("resource"));
                EXPECT_EQ(png.height % 11, 0) << name;
                width += png.width;
                place.setHeight(juce::jmax(place.getHeight(), png.height / 11));
            }
            place.setWidth(width);
        }
        EXPECT_FALSE(place.isEmpty()) << name;
        EXPECT_TRUE(panel.contains(place)) << name << " at " << place.toString();
    }

    const std::map<juce::String, int> expected{ { "MultiStateButton", 102 }, { "Knob", 79 }, { "Animation", 39 }, { "NumericDisplay", 18 }, { "Button", 15 }, { "Switch", 3 }, { "Display", 2 }, { "PatternNumberDisplay", 1 } };
    EXPECT_EQ(perType, expected);
}

TEST(PluginShippedSkin, ImagesAreRgbStripsOfTheirFrames)
{
    auto skin = shippedSkin();
    ASSERT_NE(skin, nullptr);

    for (auto* e : skin->getChildIterator())
    {
        const auto name = e->getStringAttribute("name");
        const auto* gfx = e->getChildByName("gfx");
        std::vector<std::pair<juce::String, int>> strips; // resource, frames

        if (e->hasTagName("PatternNumberDisplay"))
        {
            ASSERT_NE(gfx, nullptr);
            int width = 0, index = 0;
            for (const auto* digit : { "firstDigit", "secondDigit", "thirdDigit", "fourthDigit" })
            {
                const int frames = std::array<int, 4>{ 12, 19, 13, 11 }[(size_t) index++];
                const auto png = pngHeader(gfx->getStringAttribute(digit));
                EXPECT_EQ(png.height / frames, 34) << digit;
                width += png.width;
                strips.push_back({ gfx->getStringAttribute(digit), frames });
            }
            EXPECT_EQ(width, 110);
            EXPECT_EQ(width, placeOf(*e).getWidth());
        }
        else if (e->hasTagName("NumericDisplay"))
        {
            const auto* digits = e->getChildByName("digits");
            ASSERT_NE(digits, nullptr) << name;
            if (digits->getNumChildElements() == 0)
            {
                strips.push_back({ digits->getStringAttribute("resource"), 11 });
            }
            else
            {
                EXPECT_EQ(digits->getNumChildElements(), e->getIntAttribute("digitsNum")) << name;
            }
            for (auto* digit : digits->getChildIterator())
                strips.push_back({ digit->getStringAttribute("resource"), 11 });
        }
        else if (e->hasTagName("Display"))
        {
            ASSERT_NE(gfx, nullptr) << name;
            EXPECT_EQ(gfx->getIntAttribute("fontHeight"), 9) << name;
            const auto font = pngHeader(gfx->getStringAttribute("resource"));
            EXPECT_EQ(font.width, 7) << name;
            EXPECT_EQ(font.height, 2 * 96 * 9) << name;
            strips.push_back({ gfx->getStringAttribute("resource"), 1 });
        }
        else
        {
            ASSERT_NE(gfx, nullptr) << name;
            const int frames = framesOf(*e);
            if (e->hasTagName("Knob"))
            {
                EXPECT_EQ(frames, 31) << name;
            }
            else if (e->hasTagName("Animation") || e->hasTagName("Button") || (e->hasTagName("MultiStateButton") && e->getStringAttribute("style") != "3D"))
            {
                EXPECT_EQ(frames, 2) << name;
            }
            else if (e->hasTagName("MultiStateButton"))
            {
                EXPECT_TRUE(frames == 4 || frames == 6) << name;
            }
            EXPECT_EQ(gfx->getIntAttribute("framesNum", frames), frames) << name;

            // The image decides the control's size: it must be the one the layout meant.
            const auto png = pngHeader(gfx->getStringAttribute("resource"));
            const auto place = placeOf(*e);
            EXPECT_EQ(png.width, place.getWidth()) << name;
            EXPECT_EQ(png.height, frames * place.getHeight()) << name;
            strips.push_back({ gfx->getStringAttribute("resource"), frames });
        }

        for (const auto& [resource, frames] : strips)
        {
            const auto png = pngHeader(resource);
            EXPECT_GT(png.width, 0) << name << ": no image " << resource;
            EXPECT_EQ(png.height % frames, 0) << resource;
            EXPECT_EQ(png.bitDepth, 8) << resource;
            EXPECT_EQ(png.colourType, 2) << resource << " is not RGB without alpha";
        }
    }
}

TEST(PluginShippedSkin, EveryLinkAndActionBindsToThePlugin)
{
    auto skin = shippedSkin();
    ASSERT_NE(skin, nullptr);
    PluginTestHost host;
    auto& parameters = host.plugin->getParameterManager();
    auto& events = host.plugin->getEvents();

    int links = 0, actions = 0;
    for (auto* e : skin->getChildIterator())
    {
        const auto name = e->getStringAttribute("name");
        if (auto* list = e->getChildByName("links"))
            for (auto* link : list->getChildIterator())
            {
                ++links;
                EXPECT_EQ(link->getStringAttribute("as"), "connectedTo") << name;
                EXPECT_NE(parameters.getParameter(link->getStringAttribute("param")), nullptr) << name << " links to an unknown parameter " << link->getStringAttribute("param");
            }
        if (auto* list = e->getChildByName("actions"))
            for (auto* action : list->getChildIterator())
            {
                ++actions;
                const auto type = action->getStringAttribute("type");
                EXPECT_TRUE(type == "onClick" || type == "onClickWithCtrl") << name << ": " << type;
                EXPECT_GE(events.getUid(action->getStringAttribute("event")), 0) << name << " fires an unknown event " << action->getStringAttribute("event");
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
        ASSERT_NE(it, byName.end()) << name << " is missing";
        EXPECT_TRUE(it->second->hasTagName(type)) << name << " is a " << it->second->getTagName();
    };

    for (const auto* n : { "MidiLearnButton", "PattRandModeButton", "PattLengthButton" })
        expectControl(n, "MultiStateButton");
    for (const auto* n : { "PattPrevButton", "PattNextButton" })
        expectControl(n, "Button");
    for (const auto* n : { "TempoKnob", "ShuffleKnob" })
        expectControl(n, "Knob");
    expectControl("MidiActivityLed", "Animation");
    expectControl("PatternNumberDisplay", "PatternNumberDisplay");
    expectControl("PatternNameDisplay", "Display");
    expectControl("TempoDisplay", "NumericDisplay");

    for (int t = 0; t < trackCount; ++t)
    {
        const auto token = tokenOf(instrumentNames[t]);
        expectControl(token + "ActivityLed", "MultiStateButton");
        expectControl(token + "SelectButton", "MultiStateButton");
        expectControl(token + "LevelModeLed", "Animation");
        expectControl(token + "LevelKnob", "Knob");
        expectControl(token + "RandThresholdKnob", "Knob");

        // The editor shows one of the two at a time, in the same place and look.
        const auto* level = byName[token + "LevelKnob"];
        const auto* threshold = byName[token + "RandThresholdKnob"];
        if (level != nullptr && threshold != nullptr)
        {
            EXPECT_EQ(placeOf(*level), placeOf(*threshold)) << token;
            EXPECT_EQ(level->getChildByName("gfx")->getStringAttribute("resource"), threshold->getChildByName("gfx")->getStringAttribute("resource")) << token;
        }
    }

    for (int s = 1; s <= 16; ++s)
        expectControl("Step" + juce::String(s).paddedLeft('0', 2) + "Button", "MultiStateButton");
}

TEST(PluginShippedSkin, FramesCarryThePanelBehindThem)
{
    auto skin = shippedSkin();
    ASSERT_NE(skin, nullptr);
    juce::Image panel;
    ASSERT_TRUE(Resources::loadResourceImage("Background.png", panel));

    // Every frame covers its rectangle, so its corners must be the panel's
    // own pixels there, or the control shows a seam in one of its states.
    for (auto* e : skin->getChildIterator())
    {
        const auto* gfx = e->getChildByName("gfx");
        if (gfx == nullptr || !gfx->hasAttribute("framesNum"))
            continue;
        const auto name = e->getStringAttribute("name");
        juce::Image strip;
        ASSERT_TRUE(Resources::loadResourceImage(gfx->getStringAttribute("resource"), strip)) << name;
        const auto place = placeOf(*e);
        const int frames = framesOf(*e);
        const juce::Point<int> corners[] = { { 0, 0 }, { place.getWidth() - 1, 0 }, { 0, place.getHeight() - 1 }, { place.getWidth() - 1, place.getHeight() - 1 } };
        int seams = 0;
        for (int f = 0; f < frames; ++f)
            for (const auto corner : corners)
            {
                const auto atPanel = place.getPosition() + corner;
                if (strip.getPixelAt(corner.x, f * place.getHeight() + corner.y) != panel.getPixelAt(atPanel.x, atPanel.y))
                    ++seams;
            }
        EXPECT_EQ(seams, 0) << name << ": corners of its frames that differ from the panel";
    }

    // The text displays fill with their colour, then draw glyph cells: the
    // cells must stand on that same colour, and the caret cells must not.
    juce::Image font;
    ASSERT_TRUE(Resources::loadResourceImage("Fonts.png", font));
    for (auto* e : skin->getChildWithTagNameIterator("Display"))
    {
        const auto fill = juce::Colour::fromString(e->getStringAttribute("backgroundColour"));
        EXPECT_EQ(font.getPixelAt(0, 0).getARGB(), fill.getARGB()) << e->getStringAttribute("name");
        EXPECT_NE(font.getPixelAt(0, font.getHeight() / 2).getARGB(), fill.getARGB()) << e->getStringAttribute("name");
    }
}

namespace
{
// Two frames look alike when no channel of any pixel differs by more than
// a shade: gradients may round a step apart from one frame to the next.
bool alike(const juce::Image::BitmapData& data, int width, int a, int b, int frameHeight)
{
    for (int y = 0; y < frameHeight; ++y)
    {
        const auto* p = data.getLinePointer(a * frameHeight + y);
        const auto* q = data.getLinePointer(b * frameHeight + y);
        for (int i = 0; i < width * data.pixelStride; ++i)
            if (std::abs((int) p[i] - (int) q[i]) > 8)
                return false;
    }
    return true;
}

// How many pairs of the strip's frames look alike.
int framesAlike(const juce::String& resource, int frames)
{
    juce::Image strip;
    if (!Resources::loadResourceImage(resource, strip))
        return frames;
    const juce::Image::BitmapData data(strip, juce::Image::BitmapData::readOnly);
    int pairs = 0;
    for (int a = 0; a < frames; ++a)
        for (int b = a + 1; b < frames; ++b)
            pairs += alike(data, strip.getWidth(), a, b, strip.getHeight() / frames) ? 1 : 0;
    return pairs;
}
} // namespace

TEST(PluginShippedSkin, EveryFrameShowsItsOwnState)
{
    // A state that looks like another (a lamp that does not light, a knob
    // position without its pointer, two digits alike) misleads the player.
    auto skin = shippedSkin();
    ASSERT_NE(skin, nullptr);
    std::set<juce::String> digitStrips;
    for (auto* e : skin->getChildIterator())
    {
        const auto* gfx = e->getChildByName("gfx");
        if (gfx != nullptr && gfx->hasAttribute("framesNum"))
        {
            EXPECT_EQ(framesAlike(gfx->getStringAttribute("resource"), framesOf(*e)), 0) << e->getStringAttribute("name");
        }
        if (const auto* digits = e->getChildByName("digits"))
        {
            digitStrips.insert(digits->getStringAttribute("resource"));
            for (auto* digit : digits->getChildIterator())
                digitStrips.insert(digit->getStringAttribute("resource"));
        }
    }
    digitStrips.erase(juce::String());
    EXPECT_FALSE(digitStrips.empty());
    for (const auto& resource : digitStrips)
        EXPECT_EQ(framesAlike(resource, 11), 0) << resource;

    const auto* numbers = skin->getChildByName("PatternNumberDisplay")->getChildByName("gfx");
    const std::pair<const char*, int> patternDigits[] = { { "firstDigit", 12 }, { "secondDigit", 19 }, { "thirdDigit", 13 }, { "fourthDigit", 11 } };
    for (const auto& [digit, frames] : patternDigits)
        EXPECT_EQ(framesAlike(numbers->getStringAttribute(digit), frames), 0) << digit;

    // 96 glyphs and their 96 caret cells, every one its own.
    EXPECT_EQ(framesAlike("Fonts.png", 2 * 96), 0);
}
