// Presets through the plug-in: selecting, stepping, storing, copying, the
// files old and new, start-up and program changes.

#include "plugin/PluginTestHost.h"

#include "parameters/ParameterIds.h"

#include <gtest/gtest.h>

namespace
{
constexpr int nextEvent = 1002, previousEvent = 1003, copyEvent = 1007, pasteEvent = 1008, storeEvent = 1009;
constexpr int bassDrumDecay = 19;

std::unique_ptr<Quindrel> makePlugin(const juce::File& settings = {})
{
    PluginPaths paths;
    paths.settingsFile = settings;
    paths.writeSettings = false;
    return Quindrel::createInstance(paths);
}

std::unique_ptr<juce::XmlElement> xml(const juce::String& text)
{
    auto parsed = juce::parseXML(text);
    EXPECT_NE(parsed, nullptr) << text;
    return parsed;
}

// A bank of `groups` groups, each with its presets named g.i; the second group
// has no name attribute.
juce::String bankText(std::initializer_list<int> groups)
{
    juce::String text = "<PresetBank name=\"Mine\">";
    int g = 0;
    for (const int count : groups)
    {
        text << (g == 1 ? "<PresetGroup>" : "<PresetGroup name=\"Group " + juce::String(g) + "\">");
        for (int i = 0; i < count; ++i)
            text << "<Preset application=\"Quindrel\" name=\"" << g << "." << i << "\"/>";
        text << "</PresetGroup>";
        ++g;
    }
    return text + "</PresetBank>";
}

double live(const Quindrel& plugin, int id)
{
    return plugin.getParameterManager().getNormalised(id);
}
} // namespace

TEST(PresetsPlugin, SteppingAppliesTheNeighbourAndStopsAtTheEnds)
{
    auto plugin = makePlugin();
    auto& parameters = plugin->getParameterManager();

    plugin->handleEvent(previousEvent);
    EXPECT_EQ(plugin->getCurrentPreset(), 0) << "no wrap below 0";

    plugin->selectPreset(4, true);
    plugin->handleEvent(nextEvent);
    EXPECT_EQ(plugin->getCurrentPreset(), 5);
    EXPECT_EQ(parameters.getInt(ParameterIds::currentPresetNumber), 5);
    EXPECT_EQ(parameters.getText(ParameterIds::currentPresetName), plugin->getPresetName(5));
    EXPECT_FLOAT_EQ((float) live(*plugin, bassDrumDecay), plugin->getPresetValue(5, bassDrumDecay));

    plugin->selectPreset(127, true);
    const auto decay = live(*plugin, bassDrumDecay);
    plugin->handleEvent(nextEvent);
    EXPECT_EQ(plugin->getCurrentPreset(), 127) << "no wrap past 127";
    EXPECT_EQ(live(*plugin, bassDrumDecay), decay) << "a refused step applies nothing";

    // The name parameter renames the current preset.
    parameters.setText(ParameterIds::currentPresetName, "My Kit");
    EXPECT_EQ(plugin->getPresetName(127), "My Kit");
}

TEST(PresetsPlugin, APresetIsReadPiecemealAndOnlyIfItIsOurs)
{
    auto plugin = makePlugin();
    const auto before = plugin->getPresetValue(3, 40);
    const auto volume = live(*plugin, ParameterIds::mainVolume);

    juce::String ten = "<Preset application=\"Quindrel\" name=\"Ten\">";
    for (int id = 0; id < 10; ++id)
        ten << "<param name=\"" << plugin->getParameterManager().getName(id * 2) << "\" value=\"0.25\"/>";
    ten << "<param name=\"No Such Knob\" value=\"0.9\"/><param name=\"Main Volume\" value=\"0.9\"/></Preset>";
    plugin->loadPresetAt(*xml(ten), 3);
    EXPECT_EQ(plugin->getPresetName(3), "Ten");
    for (int id = 0; id < 20; id += 2)
        EXPECT_EQ(plugin->getPresetValue(3, id), 0.25f) << id;
    EXPECT_EQ(plugin->getPresetValue(3, 40), before) << "a knob the file does not name keeps its value";
    EXPECT_EQ(live(*plugin, ParameterIds::mainVolume), volume) << "Main Volume is not in a preset";

    plugin->loadPresetAt(*xml("<Preset application=\"Drumatic\" name=\"Other\"><param name=\"Bass Drum Level\" value=\"1\"/></Preset>"), 3);
    EXPECT_EQ(plugin->getPresetName(3), "Ten") << "another plug-in's preset";

    plugin->loadPresetAt(*xml("<QuindrelPreset name=\"Old\"><param name=\"BD Level\" value=\"0.75\"/>"
                              "<param name=\"HH Filters Freq\" value=\"0.125\"/><param name=\"Bass Drum Tone\" value=\"0.5\"/></QuindrelPreset>"),
                         3);
    EXPECT_EQ(plugin->getPresetName(3), "Old");
    EXPECT_EQ(plugin->getPresetValue(3, 0), 0.75f);
    EXPECT_EQ(plugin->getPresetValue(3, 57), 0.125f);
    EXPECT_EQ(plugin->getPresetValue(3, 18), 0.25f) << "an older preset names knobs only by their short names";
}

TEST(PresetsPlugin, BanksFillTheirGroupsAndTheRestIsNotUsed)
{
    auto plugin = makePlugin();

    plugin->loadBankXml(*xml(bankText({ 50, 50, 50 })));
    EXPECT_EQ(plugin->getBankName(), "Mine");
    ASSERT_EQ(plugin->getNumGroups(), 3) << "a full bank gets no \"Not used\"";
    EXPECT_EQ(plugin->getGroupCount(2), 28);
    EXPECT_EQ(plugin->getGroupName(1), "group 2");
    EXPECT_EQ(plugin->getPresetName(127), "2.27");

    plugin->loadBankXml(*xml(bankText({ 20 })));
    ASSERT_EQ(plugin->getNumGroups(), 2);
    EXPECT_EQ(plugin->getGroupName(1), "Not used");
    EXPECT_EQ(plugin->getGroupCount(1), 108);
    EXPECT_EQ(plugin->getPresetName(20), "Preset 20");
    EXPECT_EQ(plugin->getPresetName(127), "Preset 127");

    plugin->loadBankXml(*xml("<QuindrelPresetBank><QuindrelPreset name=\"A\"/><Preset application=\"Quindrel\" name=\"B\"/>"
                             "<Junk/></QuindrelPresetBank>"));
    EXPECT_EQ(plugin->getBankName(), "Preset Bank");
    EXPECT_EQ(plugin->getGroupName(0), "All presets");
    EXPECT_EQ(plugin->getGroupCount(0), 2);
    EXPECT_EQ(plugin->getPresetName(1), "B");
}

TEST(PresetsPlugin, CopyTakesTheLiveSoundAndEachCopyAddsOneSuffix)
{
    auto plugin = makePlugin();
    plugin->renamePreset(0, "Kick");
    plugin->getParameterManager().setNormalised(bassDrumDecay, 0.875f); // not stored

    plugin->handleEvent(copyEvent);
    plugin->selectPreset(1, true);
    plugin->handleEvent(pasteEvent);
    plugin->handleEvent(pasteEvent);
    EXPECT_EQ(plugin->getPresetName(1), "Kick_copy") << "pasting again adds nothing";
    EXPECT_EQ(plugin->getPresetValue(1, bassDrumDecay), 0.875f);

    plugin->handleEvent(copyEvent);
    plugin->selectPreset(2, true);
    plugin->handleEvent(pasteEvent);
    EXPECT_EQ(plugin->getPresetName(2), "Kick_copy_copy");
    EXPECT_EQ(plugin->getParameterManager().getText(ParameterIds::currentPresetName), "Kick_copy_copy");
}

TEST(PresetsPlugin, OnDemandLosesAnUnstoredChangeAndAutomaticKeepsIt)
{
    auto plugin = makePlugin();
    auto& parameters = plugin->getParameterManager();
    const auto stored = plugin->getPresetValue(0, bassDrumDecay);

    parameters.setNormalised(bassDrumDecay, 0.125f);
    plugin->handleEvent(nextEvent);
    plugin->handleEvent(previousEvent);
    EXPECT_FLOAT_EQ((float) live(*plugin, bassDrumDecay), stored);

    parameters.setNormalised(bassDrumDecay, 0.125f);
    plugin->handleEvent(storeEvent);
    plugin->handleEvent(nextEvent);
    plugin->handleEvent(previousEvent);
    EXPECT_FLOAT_EQ((float) live(*plugin, bassDrumDecay), 0.125f) << "stored by the event";

    plugin->setPresetStoring(BasePluginOldStyle::automatic);
    parameters.setNormalised(bassDrumDecay, 0.625f);
    plugin->handleEvent(nextEvent);
    plugin->handleEvent(previousEvent);
    EXPECT_FLOAT_EQ((float) live(*plugin, bassDrumDecay), 0.625f);
}

TEST(PresetsPlugin, FilesRoundToSixDecimalsAndSaveByteIdentically)
{
    auto plugin = makePlugin();
    juce::TemporaryFile presetFile(".qdprs"), bankFile(".qdprsb"), again(".qdprsb");

    plugin->getParameterManager().setNormalised(bassDrumDecay, 0.1234567f);
    plugin->handleEvent(storeEvent);
    ASSERT_TRUE(plugin->savePresetFile(presetFile.getFile()));
    EXPECT_TRUE(presetFile.getFile().loadFileAsString().contains("<param name=\"Bass Drum Decay\" value=\"0.123457\"/>"));

    plugin->loadBankXml(*xml(bankText({ 3, 0, 5 })));
    plugin->renameGroup(1, "Empty \"one\"");
    ASSERT_TRUE(plugin->saveBankFile(bankFile.getFile()));
    EXPECT_EQ(plugin->getLastDirectory(), bankFile.getFile().getParentDirectory());

    auto other = makePlugin();
    ASSERT_TRUE(other->loadBankFile(bankFile.getFile()));
    ASSERT_EQ(other->getNumGroups(), 4);
    for (int g = 0; g < 4; ++g)
    {
        EXPECT_EQ(other->getGroupName(g), plugin->getGroupName(g));
        EXPECT_EQ(other->getGroupCount(g), plugin->getGroupCount(g));
    }
    for (int n = 0; n < 128; ++n)
        EXPECT_EQ(other->getPresetName(n), plugin->getPresetName(n));
    ASSERT_TRUE(other->saveBankFile(again.getFile()));
    EXPECT_TRUE(again.getFile().hasIdenticalContentTo(bankFile.getFile()));

    // The factory bank as the plug-in writes it is the shipped file itself.
    auto fresh = makePlugin();
    ASSERT_TRUE(fresh->saveBankFile(again.getFile()));
    EXPECT_TRUE(again.getFile().hasIdenticalContentTo(juce::File(QUINDREL_SOURCE_DIR).getChildFile("resources/presets/default.qdprsb")));

    // Files that are no bank change nothing.
    juce::TemporaryFile garbage(".qdprsb");
    garbage.getFile().replaceWithText("not xml at all");
    EXPECT_FALSE(other->loadBankFile(garbage.getFile()));
    EXPECT_FALSE(other->loadBankFile(presetFile.getFile()));
    EXPECT_FALSE(other->loadPresetFile(bankFile.getFile(), 0));
    EXPECT_EQ(other->getNumGroups(), 4);
}

TEST(PresetsPlugin, StartUpTakesTheBankTheUserChose)
{
    // No choice: the factory bank, its first kit applied and shown.
    auto factory = makePlugin();
    EXPECT_EQ(factory->getBankName(), "Quindrel Factory Presets");
    ASSERT_EQ(factory->getNumGroups(), 2);
    EXPECT_EQ(factory->getGroupCount(0), 16);
    EXPECT_EQ(factory->getGroupName(1), "Not used");
    EXPECT_EQ(factory->getParameterManager().getText(ParameterIds::currentPresetName), factory->getPresetName(0));
    for (int id = 0; id < Preset::count; ++id)
        EXPECT_FLOAT_EQ((float) live(*factory, id), factory->getPresetValue(0, id)) << "parameter " << id;

    juce::TemporaryFile settings(".ini"), noXml(".qdprsb");
    noXml.getFile().replaceWithText("this holds no XML");
    auto settingsFor = [&](const juce::String& resource)
    {
        settings.getFile().replaceWithText("<UserSettings application=\"Quindrel\"><ResourcesSettings>" + resource +
                                           "</ResourcesSettings></UserSettings>");
        return makePlugin(settings.getFile());
    };

    auto gone = settingsFor("<Presets default=\"userDefinedPresets\" file=\"/no/such/bank.qdprsb\"/>");
    EXPECT_EQ(gone->getBankName(), "Quindrel Factory Presets");

    auto broken = settingsFor("<Presets default=\"userDefinedPresets\" file=\"" + noXml.getFile().getFullPathName() + "\"/>");
    EXPECT_EQ(broken->getNumGroups(), 0);
    EXPECT_EQ(broken->getPresetName(0), "Preset");
    EXPECT_EQ(broken->getPresetName(127), "Preset");

    auto cleared = settingsFor("<Presets default=\"clearPresets\"/>");
    ASSERT_EQ(cleared->getNumGroups(), 1);
    EXPECT_EQ(cleared->getGroupCount(0), 128);
    EXPECT_EQ(cleared->getPresetName(5), "Preset 5");
    EXPECT_EQ(cleared->getPresetValue(5, 32), 1.0f) << "cleared presets take the default preset's values";
}

TEST(PresetsPlugin, MovesKeepTheSameSoundSelected)
{
    auto plugin = makePlugin();
    plugin->selectAndApplyPreset(3);
    const auto name = plugin->getPresetName(3);

    plugin->movePreset(0, 1, 3, 20);
    EXPECT_EQ(plugin->getCurrentPreset(), 20);
    EXPECT_EQ(plugin->getPresetName(20), name);
    EXPECT_EQ(plugin->getGroupCount(0) + plugin->getGroupCount(1), 128);

    plugin->moveGroup(1, 0);
    EXPECT_EQ(plugin->getPresetName(plugin->getCurrentPreset()), name);
    EXPECT_EQ(plugin->getParameterManager().getInt(ParameterIds::currentPresetNumber), plugin->getCurrentPreset());
}

TEST(PresetsPlugin, AProgramChangeSoundsFromItsSample)
{
    // A long bass drum from sample 0; the program change comes mid-block.
    constexpr int change = 700;
    auto render = [](std::vector<PluginTestHost::Event> events)
    {
        PluginTestHost host(48000.0, 512);
        host.plugin->setInternalSequencer(false);
        return host.render(4096, events);
    };

    const auto alone = render({ PluginTestHost::noteOn(0, 36) });
    const auto changed = render({ PluginTestHost::noteOn(0, 36), { change, juce::MidiMessage::programChange(1, 8) } });

    int firstDifference = -1;
    for (int i = 0; i < 4096 && firstDifference < 0; ++i)
        if (alone.getSample(0, i) != changed.getSample(0, i))
            firstDifference = i;
    EXPECT_GE(firstDifference, change) << "the new kit sounded before its program change";
    EXPECT_LT(firstDifference, change + 2) << "the new kit sounded late";
}
