#include "plugin/Resources.h"

#include <gtest/gtest.h>

TEST(PluginResources, FoundByNameAndTypeIgnoringCase)
{
    const auto text = Resources::loadResourceText("default.QDDRMAP");
    ASSERT_TRUE(text.isNotEmpty());
    EXPECT_EQ(text, Resources::loadResourceText("DEFAULT.qddrmap"));

    auto xml = juce::parseXML(text);
    ASSERT_NE(xml, nullptr);
    EXPECT_TRUE(xml->hasTagName("DrumMap"));

    const auto data = Resources::loadResourceData("default.qddrmap");
    ASSERT_TRUE(data.has_value());
    EXPECT_EQ(data->getSize(), (size_t) text.getNumBytesAsUTF8());
}

TEST(PluginResources, MissingResourceGivesNothing)
{
    EXPECT_FALSE(Resources::loadResourceData("nothing.XML").has_value());
    EXPECT_TRUE(Resources::loadResourceText("default.QDPRS-not-there").isEmpty());
    juce::Image image;
    EXPECT_FALSE(Resources::loadResourceImage("none.PNG", image));
}
