// The user settings file: what a new instance starts with, written when an
// instance is destroyed and read when the next one starts.

#include "plugin/PluginTestHost.h"

#include <gtest/gtest.h>

namespace
{
std::unique_ptr<Quindrel> open(const juce::File& settings)
{
    PluginPaths paths;
    paths.settingsFile = settings;
    return Quindrel::createInstance(paths);
}

void expectFactoryDefaults(Quindrel& plugin, const char* why)
{
    EXPECT_EQ(plugin.getPresetsResourceKind(), BasePluginOldStyle::factoryPresets) << why;
    EXPECT_EQ(plugin.getBankName(), "Quindrel Factory Presets") << why;
    EXPECT_EQ(plugin.getPresetStoring(), BasePluginOldStyle::onDemand) << why;
    EXPECT_TRUE(plugin.internalSequencer.load()) << why;
    EXPECT_TRUE(plugin.internalSync.load()) << why;
    EXPECT_FALSE(plugin.hostMode.load()) << why;
    EXPECT_FALSE(plugin.noteOffMode.load()) << why;
    EXPECT_EQ(plugin.hostPlayDetection.load(), DrumMachine::byTransportChange) << why;
    EXPECT_EQ(plugin.getLastDirectory(), juce::File::getSpecialLocation(juce::File::userHomeDirectory)) << why;
}
} // namespace

TEST(PresetsUserSettings, ANewInstanceStartsAsTheLastOneLeftItAndFromDefaultsWithoutTheFile)
{
    juce::TemporaryFile settings(".ini"), bank(".qdprsb");
    const auto folder = bank.getFile().getParentDirectory();
    {
        auto writer = open({});
        writer->loadBankXml(*juce::parseXML("<PresetBank name=\"Live Set\"><PresetGroup name=\"Songs\">"
                                            "<Preset application=\"Quindrel\" name=\"Opener\"/></PresetGroup></PresetBank>"));
        ASSERT_TRUE(writer->saveBankFile(bank.getFile()));
    }
    {
        auto first = open(settings.getFile());
        first->setPresetsResource(BasePluginOldStyle::userDefinedPresets, bank.getFile().getFullPathName());
        first->setPresetStoring(BasePluginOldStyle::automatic);
        first->setLastDirectory(folder);
        first->defaultInternalSync = false;
        first->defaultHostMode = true;
        first->defaultNoteOffMode = true;
        first->hostPlayDetection = DrumMachine::byLowestCNoteOn;
        first->internalSequencer = false; // a live value: not what a new instance takes
    }
    {
        auto second = open(settings.getFile());
        EXPECT_EQ(second->getBankName(), "Live Set");
        EXPECT_EQ(second->getPresetName(0), "Opener");
        EXPECT_EQ(second->getPresetStoring(), BasePluginOldStyle::automatic);
        EXPECT_EQ(second->getLastDirectory(), folder);
        EXPECT_TRUE(second->internalSequencer.load());
        EXPECT_FALSE(second->internalSync.load());
        EXPECT_TRUE(second->hostMode.load());
        EXPECT_TRUE(second->noteOffMode.load());
        EXPECT_EQ(second->hostPlayDetection.load(), DrumMachine::byLowestCNoteOn);
    }

    const auto text = settings.getFile().loadFileAsString();
    EXPECT_TRUE(text.contains("<PresetSettings storing=\"automatic\"/>")) << "and no \"changing\", which is no option here";

    // The bank file gone: the factory bank, the choice kept for when it comes back.
    bank.getFile().deleteFile();
    EXPECT_EQ(open(settings.getFile())->getBankName(), "Quindrel Factory Presets");

    settings.getFile().deleteFile();
    expectFactoryDefaults(*open(settings.getFile()), "no file");
    settings.getFile().replaceWithText("<UserSettings application=\"Quindrel\"><PresetSettings storing=\"autom");
    expectFactoryDefaults(*open(settings.getFile()), "a broken file");
    settings.getFile().replaceWithText("<UserSettings application=\"Drumatic\"><PresetSettings storing=\"automatic\"/>"
                                       "<InternalSequencer><HostMode state=\"on\"/></InternalSequencer></UserSettings>");
    expectFactoryDefaults(*open(settings.getFile()), "another plug-in's file");
}

TEST(PresetsUserSettings, OfTwoInstancesTheLastClosedWinsTheFile)
{
    juce::TemporaryFile settings(".ini");
    for (const bool automaticClosesLast : { true, false })
    {
        auto automatic = open(settings.getFile());
        auto onDemand = open(settings.getFile());
        automatic->setPresetStoring(BasePluginOldStyle::automatic);
        onDemand->setPresetStoring(BasePluginOldStyle::onDemand);

        if (automaticClosesLast)
            onDemand.reset();
        automatic.reset();
        onDemand.reset();

        EXPECT_EQ(open(settings.getFile())->getPresetStoring(),
                  automaticClosesLast ? BasePluginOldStyle::automatic : BasePluginOldStyle::onDemand);
    }
}
