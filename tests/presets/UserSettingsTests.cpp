// The user settings file: what a new instance starts with, written when an
// instance is destroyed and read when the next one starts.

#include "plugin/PluginTestHost.h"

#include <gtest/gtest.h>

namespace
{
void expectFactoryDefaults(Quindrel& plugin, const char* why)
{
    EXPECT_TRUE(plugin.getPresetsResourceKind() == BasePluginOldStyle::factoryPresets && plugin.getBankName() == "Quindrel Factory Presets" && plugin.getPresetStoring() == BasePluginOldStyle::onDemand) << why;
    EXPECT_TRUE(plugin.internalSequencer && plugin.internalSync && !plugin.hostMode && !plugin.noteOffMode && plugin.hostPlayDetection == DrumMachine::byTransportChange) << why;
    EXPECT_EQ(plugin.getLastDirectory(), juce::File::getSpecialLocation(juce::File::userHomeDirectory)) << why;
}
} // namespace

TEST(PresetsUserSettings, ANewInstanceStartsAsTheLastOneLeftItAndFromDefaultsWithoutTheFile)
{
    juce::TemporaryFile settings(".ini"), bank(".qdprsb");
    const auto folder = bank.getFile().getParentDirectory();
    bank.getFile().replaceWithText("<PresetBank name=\"Live Set\"><PresetGroup name=\"Songs\"><Preset application=\"Quindrel\" name=\"Opener\"/></PresetGroup></PresetBank>");
    {
        auto first = makePlugin(settings.getFile());
        first->setPresetsResource(BasePluginOldStyle::userDefinedPresets, bank.getFile().getFullPathName());
        first->setPresetStoring(BasePluginOldStyle::automatic);
        first->setLastDirectory(folder);
        first->defaultHostMode = true;
        first->internalSequencer = false; // a live value: not what a new instance takes
    }
    {
        auto second = makePlugin(settings.getFile());
        EXPECT_TRUE(second->getBankName() == "Live Set" && second->getPresetName(0) == "Opener" && second->getPresetStoring() == BasePluginOldStyle::automatic);
        EXPECT_TRUE(second->getLastDirectory() == folder && second->internalSequencer && second->hostMode);
    }

    EXPECT_TRUE(settings.getFile().loadFileAsString().contains("<PresetSettings storing=\"automatic\"/>")) << "and no \"changing\", which is no option here";

    // The bank file gone: the factory bank, the choice kept for when it comes back.
    bank.getFile().deleteFile();
    EXPECT_EQ(makePlugin(settings.getFile())->getBankName(), "Quindrel Factory Presets");

    settings.getFile().deleteFile();
    expectFactoryDefaults(*makePlugin(settings.getFile()), "no file");
    settings.getFile().replaceWithText("<UserSettings application=\"Quindrel\"><PresetSettings storing=\"autom");
    expectFactoryDefaults(*makePlugin(settings.getFile()), "a broken file");
    settings.getFile().replaceWithText("<UserSettings application=\"Drumatic\"><PresetSettings storing=\"automatic\"/>"
                                       "<InternalSequencer><HostMode state=\"on\"/></InternalSequencer></UserSettings>");
    expectFactoryDefaults(*makePlugin(settings.getFile()), "another plug-in's file");
}
