#include "plugin/BasePlugin.h"

#include <gtest/gtest.h>

TEST(PluginPaths, SettingsLiveInTheUsersFolderNeverInABundle)
{
    const juce::File config("/home/someone/.config");
    const juce::File settings("/home/someone/.config/Quindrel/Quindrel.ini");
    const juce::File host("/usr/bin/some-host");

    for (const char* module : { "/usr/lib/lv2/Quindrel.lv2/Quindrel.so",
                                "/home/someone/.vst3/Quindrel.vst3/Contents/x86_64-linux/Quindrel.so",
                                "/home/someone/bin/Quindrel" })
    {
        const auto paths = PluginPaths::forModule("Quindrel", juce::File(module), host, config);
        EXPECT_EQ(paths.pluginFile, juce::File(module));
        EXPECT_EQ(paths.settingsFile, settings) << module;
        EXPECT_TRUE(paths.writeSettings);
    }

    // The build runs JUCE's LV2 manifest helper on the plug-in: that instance
    // must neither take the build machine's settings into the manifest nor
    // leave a settings file behind.
    const auto tool = PluginPaths::forModule("Quindrel", juce::File("/build/LV2/Quindrel.lv2/Quindrel.so"),
                                             juce::File("/build/juce_lv2_helper"), config);
    EXPECT_EQ(tool.settingsFile, juce::File());
}
