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

juce::Image imageOf(const juce::String& resource)
{
    juce::Image image;
    Resources::loadResourceImage(resource, image);
    return image;
}

juce::Rectangle<int> placeOf(const juce::XmlElement& e)
{
    const auto* pos = e.getChildByName("pos");
    const auto* size = e.getChildByName("size");
    return { pos ? pos->getIntAttribute("left") : 0, pos ? pos->getIntAttribute("top") : 0,
             size ? size->getIntAttribute("width") : 0, size ? size->getIntAttribute("height") : 0 };
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
    if (e.hasTagName("MultiStateButton"))
        return { { gfx->getStringAttribute("resource"), e.getIntAttribute("states", 2) * (e.getStringAttribute("style") == "3D" ? 2 : 1) } };
    return { { gfx->getStringAttribute("resource"), gfx->getIntAttribute("framesNum", 1) } };
}

// How many pairs of a strip's frames look alike: no channel of any pixel
// differs by more than a shade (gradients may round a step apart).
int framesAlike(const juce::Image& strip, int frames)
{
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

// Each control once and inside the panel. Each image is an RGB strip of
// whole frames, each frame showing its own state (a lamp that does not light,
// a knob position without its pointer or two digits alike mislead the player),
// sized as the layout meant, with the panel's own pixels at its corners (or
// the control shows a seam in one of its states).
TEST(PluginShippedSkin, ControlsSitOnceInsideThePanelAsStripsOfDistinctFrames)
{
    auto skin = shippedSkin();
    ASSERT_NE(skin, nullptr);
    juce::Image panel, font;
    ASSERT_TRUE(Resources::loadResourceImage(skin->getStringAttribute("background", "Background.png"), panel) && Resources::loadResourceImage("Fonts.png", font));

    std::set<juce::String> names, seen;
    for (auto* e : skin->getChildIterator())
    {
        const auto name = e->getStringAttribute("name");
        EXPECT_TRUE(names.insert(name).second) << "two controls named " << name;
        const auto strips = stripsOf(*e);
        auto place = placeOf(*e);
        int width = 0, height = 0;
        for (const auto& [resource, frames] : strips)
        {
            const auto image = imageOf(resource);
            EXPECT_TRUE(image.isValid() && image.getHeight() % frames == 0) << name << ": no image " << resource << " of " << frames << " frames";
            EXPECT_EQ(image.getFormat(), juce::Image::RGB) << resource << " is not RGB without alpha";
            EXPECT_TRUE(!seen.insert(resource).second || framesAlike(image, frames) == 0) << resource << " has frames alike";
            width += image.getWidth();
            height = juce::jmax(height, image.getHeight() / frames);
        }
        if (e->hasTagName("NumericDisplay")) // its size is that of its digits side by side
            place.setSize(width, height);
        EXPECT_FALSE(place.isEmpty()) << name;
        EXPECT_TRUE(juce::Rectangle<int>(panel.getWidth(), panel.getHeight()).contains(place)) << name << " at " << place.toString();

        if (e->hasTagName("PatternNumberDisplay"))
        {
            EXPECT_TRUE(height == 34 && width == 110 && width == place.getWidth()) << width;
        }
        if (e->hasTagName("Display")) // fills with its colour, then draws glyph cells on it; caret cells differ
        {
            const auto fill = juce::Colour::fromString(e->getStringAttribute("backgroundColour"));
            EXPECT_TRUE(font.getPixelAt(0, 0) == fill && font.getPixelAt(0, font.getHeight() / 2) != fill) << name;
            EXPECT_EQ(e->getChildByName("gfx")->getIntAttribute("fontHeight"), 9) << name;
            EXPECT_TRUE(width == 7 && height == 9) << name;
        }
        if (e->hasTagName("Display") || e->hasTagName("NumericDisplay") || e->hasTagName("PatternNumberDisplay"))
            continue;

        const int frames = strips[0].second;
        const bool twoFrames = e->hasTagName("Animation") || e->hasTagName("Button") || (e->hasTagName("MultiStateButton") && e->getStringAttribute("style") != "3D");
        EXPECT_TRUE(e->hasTagName("Knob") ? frames == 31 : twoFrames ? frames == 2
                                                                     : !e->hasTagName("MultiStateButton") || frames == 4 || frames == 6)
            << name << ": " << frames;
        EXPECT_EQ(e->getChildByName("gfx")->getIntAttribute("framesNum", frames), frames) << name;
        // The image decides the control's size: it must be the one the layout meant.
        EXPECT_TRUE(width == place.getWidth() && height == place.getHeight()) << name;

        const auto strip = imageOf(strips[0].first);
        int seams = 0;
        for (int f = 0; f < frames; ++f)
            for (const auto corner : { juce::Point<int>(), { width - 1, 0 }, { 0, height - 1 }, { width - 1, height - 1 } })
                seams += strip.getPixelAt(corner.x, f * height + corner.y) != panel.getPixelAt(place.getX() + corner.x, place.getY() + corner.y) ? 1 : 0;
        EXPECT_EQ(seams, 0) << name << ": corners of its frames that differ from the panel";
    }
}

// Every button fires an event the plug-in knows (the links, which the editor
// binds to parameters, are checked on the built editor).
TEST(PluginShippedSkin, EveryActionFiresAKnownEvent)
{
    auto skin = shippedSkin();
    ASSERT_NE(skin, nullptr);
    PluginTestHost host;
    int actions = 0;
    for (auto* e : skin->getChildIterator())
        if (auto* list = e->getChildByName("actions"))
            for (auto* action : list->getChildIterator())
            {
                ++actions;
                const auto type = action->getStringAttribute("type");
                EXPECT_TRUE(type == "onClick" || type == "onClickWithCtrl") << e->getStringAttribute("name") << ": " << type;
                EXPECT_GE(host.plugin->getEvents().getUid(action->getStringAttribute("event")), 0) << e->getStringAttribute("name") << " fires an unknown event " << action->getStringAttribute("event");
            }
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
    const std::pair<const char*, const char*> controls[] = {
        { "MidiLearnButton", "MultiStateButton" }, { "PattRandModeButton", "MultiStateButton" }, { "PattLengthButton", "MultiStateButton" }, { "PattPrevButton", "Button" }, { "PattNextButton", "Button" }, { "TempoKnob", "Knob" }, { "ShuffleKnob", "Knob" }, { "MidiActivityLed", "Animation" }, { "PatternNameDisplay", "Display" }, { "TempoDisplay", "NumericDisplay" }
    };
    for (const auto& [name, type] : controls)
        expectControl(name, type);
    for (int s = 1; s <= 16; ++s)
        expectControl("Step" + juce::String(s).paddedLeft('0', 2) + "Button", "MultiStateButton");

    for (int t = 0; t < trackCount; ++t)
    {
        const auto token = juce::String(instrumentNames[t]).removeCharacters(" ");
        for (const auto& [n, type] : { std::pair{ "ActivityLed", "MultiStateButton" }, { "SelectButton", "MultiStateButton" }, { "LevelModeLed", "Animation" }, { "LevelKnob", "Knob" }, { "RandThresholdKnob", "Knob" } })
            expectControl(token + n, type);

        // The editor shows one of the two at a time, in the same place and look.
        const auto* level = byName[token + "LevelKnob"];
        const auto* threshold = byName[token + "RandThresholdKnob"];
        ASSERT_TRUE(level != nullptr && threshold != nullptr) << token;
        EXPECT_EQ(placeOf(*level), placeOf(*threshold)) << token;
        EXPECT_EQ(stripsOf(*level), stripsOf(*threshold)) << token;
    }
}
