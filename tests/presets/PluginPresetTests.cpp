// Presets through the plug-in: selecting, stepping, storing, copying, the
// files old and new, start-up and program changes.

#include "plugin/PluginTestHost.h"

#include "parameters/ParameterIds.h"

#include <gtest/gtest.h>

namespace
{
constexpr int bassDrumDecay = 19;

// A bank of groups of the given sizes, each preset named g.i; the second group
// has no name attribute.
std::unique_ptr<juce::XmlElement> bank(std::initializer_list<int> groups)
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
    return juce::parseXML(text + "</PresetBank>");
}

float live(const Quindrel& plugin, int id) { return (float) plugin.getParameterManager().getNormalised(id); }
} // namespace

TEST(PresetsPlugin, SteppingAppliesTheNeighbourAndStopsAtTheEnds)
{
    auto plugin = makePlugin();
    auto& parameters = plugin->getParameterManager();
    PluginTestHost::fire(*plugin, "Select previous preset");
    EXPECT_EQ(plugin->getCurrentPreset(), 0) << "no wrap below 0";

    plugin->selectPreset(4, true);
    PluginTestHost::fire(*plugin, "Select next preset");
    EXPECT_TRUE(plugin->getCurrentPreset() == 5 && parameters.getInt(ParameterIds::currentPresetNumber) == 5 && parameters.getText(ParameterIds::currentPresetName) == plugin->getPresetName(5));
    EXPECT_FLOAT_EQ(live(*plugin, bassDrumDecay), plugin->getPresetValue(5, bassDrumDecay));

    plugin->selectPreset(127, true);
    const auto decay = live(*plugin, bassDrumDecay);
    PluginTestHost::fire(*plugin, "Select next preset");
    EXPECT_TRUE(plugin->getCurrentPreset() == 127 && live(*plugin, bassDrumDecay) == decay) << "no wrap past 127, and a refused step applies nothing";
}

TEST(PresetsPlugin, APresetIsReadPiecemealAndOnlyIfItIsOurs)
{
    auto plugin = makePlugin();
    const auto before = plugin->getPresetValue(3, 40);
    const auto volume = live(*plugin, ParameterIds::mainVolume);
    juce::String ten = "<Preset application=\"Quindrel\" name=\"Ten\">";
    for (int id = 0; id < 20; id += 2)
        ten << "<param name=\"" << plugin->getParameterManager().getName(id) << "\" value=\"0.25\"/>";
    plugin->loadPresetAt(*juce::parseXML(ten + "<param name=\"No Such Knob\" value=\"0.9\"/><param name=\"Main Volume\" value=\"0.9\"/></Preset>"), 3);
    for (int id = 0; id < 20; id += 2)
        EXPECT_TRUE(plugin->getPresetName(3) == "Ten" && plugin->getPresetValue(3, id) == 0.25f) << id;
    EXPECT_EQ(plugin->getPresetValue(3, 40), before) << "a knob the file does not name keeps its value";
    EXPECT_EQ(live(*plugin, ParameterIds::mainVolume), volume) << "Main Volume is not in a preset";

    plugin->loadPresetAt(*juce::parseXML("<Preset application=\"Drumatic\" name=\"Other\"><param name=\"Bass Drum Level\" value=\"1\"/></Preset>"), 3);
    EXPECT_EQ(plugin->getPresetName(3), "Ten") << "another plug-in's preset";

    plugin->loadPresetAt(*juce::parseXML("<QuindrelPreset name=\"Old\"><param name=\"BD Level\" value=\"0.75\"/>"
                                         "<param name=\"HH Filters Freq\" value=\"0.125\"/><param name=\"Bass Drum Tone\" value=\"0.5\"/></QuindrelPreset>"),
                         3);
    EXPECT_TRUE(plugin->getPresetName(3) == "Old" && plugin->getPresetValue(3, 0) == 0.75f && plugin->getPresetValue(3, 57) == 0.125f);
    EXPECT_EQ(plugin->getPresetValue(3, 18), 0.25f) << "an older preset names knobs only by their short names";
}

TEST(PresetsPlugin, BanksFillTheirGroupsAndTheRestIsNotUsed)
{
    auto plugin = makePlugin();
    plugin->loadBankXml(*bank({ 50, 50, 50 }));
    ASSERT_EQ(plugin->getNumGroups(), 3) << "a full bank gets no \"Not used\"";
    EXPECT_TRUE(plugin->getBankName() == "Mine" && plugin->getGroupCount(2) == 28 && plugin->getGroupName(1) == "group 2" && plugin->getPresetName(127) == "2.27");

    plugin->loadBankXml(*bank({ 20 }));
    ASSERT_EQ(plugin->getNumGroups(), 2);
    EXPECT_TRUE(plugin->getGroupName(1) == "Not used" && plugin->getGroupCount(1) == 108);
    EXPECT_TRUE(plugin->getPresetName(20) == "Preset 20" && plugin->getPresetName(127) == "Preset 127");

    plugin->loadBankXml(*juce::parseXML("<QuindrelPresetBank><QuindrelPreset name=\"A\"/><Preset application=\"Quindrel\" name=\"B\"/><Junk/></QuindrelPresetBank>"));
    EXPECT_TRUE(plugin->getBankName() == "Preset Bank" && plugin->getGroupName(0) == "All presets" && plugin->getGroupCount(0) == 2 && plugin->getPresetName(1) == "B");
}

TEST(PresetsPlugin, CopyStoreAndTheStoringModes)
{
    // A copy takes the live sound, and each copy adds one suffix.
    auto plugin = makePlugin();
    plugin->renamePreset(0, "Kick");
    plugin->getParameterManager().setNormalised(bassDrumDecay, 0.875f); // not stored
    PluginTestHost::fire(*plugin, "Copy current preset");
    plugin->selectPreset(1, true);
    PluginTestHost::fire(*plugin, "Paste copied preset");
    PluginTestHost::fire(*plugin, "Paste copied preset");
    EXPECT_TRUE(plugin->getPresetName(1) == "Kick_copy" && plugin->getPresetValue(1, bassDrumDecay) == 0.875f) << "pasting again adds nothing";
    PluginTestHost::fire(*plugin, "Copy current preset");
    plugin->selectPreset(2, true);
    PluginTestHost::fire(*plugin, "Paste copied preset");
    EXPECT_EQ(plugin->getParameterManager().getText(ParameterIds::currentPresetName), "Kick_copy_copy");

    // On demand a change not stored is lost by stepping away and back; the
    // store event keeps it, and so does automatic storing.
    auto stepAway = [&](float value, const char* store = nullptr)
    {
        plugin->getParameterManager().setNormalised(bassDrumDecay, value);
        if (store != nullptr)
            PluginTestHost::fire(*plugin, store);
        PluginTestHost::fire(*plugin, "Select next preset");
        PluginTestHost::fire(*plugin, "Select previous preset");
        return live(*plugin, bassDrumDecay);
    };
    ASSERT_NE(plugin->getPresetValue(2, bassDrumDecay), 0.125f);
    EXPECT_FLOAT_EQ(stepAway(0.125f), plugin->getPresetValue(2, bassDrumDecay));
    EXPECT_FLOAT_EQ(stepAway(0.25f, "Store current preset"), 0.25f);
    plugin->setPresetStoring(BasePluginOldStyle::automatic);
    EXPECT_FLOAT_EQ(stepAway(0.625f), 0.625f);
}

TEST(PresetsPlugin, FilesRoundToSixDecimalsAndSaveByteIdentically)
{
    auto plugin = makePlugin();
    juce::TemporaryFile presetFile(".qdprs"), bankFile(".qdprsb"), again(".qdprsb"), garbage(".qdprsb");
    plugin->getParameterManager().setNormalised(bassDrumDecay, 0.1234567f);
    PluginTestHost::fire(*plugin, "Store current preset");
    ASSERT_TRUE(plugin->savePresetFile(presetFile.getFile()));
    EXPECT_TRUE(presetFile.getFile().loadFileAsString().contains("<param name=\"Bass Drum Decay\" value=\"0.123457\"/>"));

    plugin->loadBankXml(*bank({ 3, 0, 5 }));
    plugin->renameGroup(1, "Empty \"one\"");
    ASSERT_TRUE(plugin->saveBankFile(bankFile.getFile()));
    auto other = makePlugin();
    ASSERT_TRUE(other->loadBankFile(bankFile.getFile()) && other->saveBankFile(again.getFile()));
    EXPECT_TRUE(again.getFile().hasIdenticalContentTo(bankFile.getFile()) && plugin->getLastDirectory() == bankFile.getFile().getParentDirectory());
    EXPECT_TRUE(other->getNumGroups() == 4 && other->getGroupName(1) == "Empty \"one\"" && other->getGroupCount(2) == 5);

    // The factory bank as the plug-in writes it is the shipped file itself.
    ASSERT_TRUE(makePlugin()->saveBankFile(again.getFile()));
    EXPECT_TRUE(again.getFile().hasIdenticalContentTo(juce::File(QUINDREL_SOURCE_DIR).getChildFile("resources/presets/default.qdprsb")));

    // Files that are no bank change nothing.
    garbage.getFile().replaceWithText("not xml at all");
    EXPECT_FALSE(other->loadBankFile(garbage.getFile()) || other->loadBankFile(presetFile.getFile()) || other->loadPresetFile(bankFile.getFile(), 0) || other->getNumGroups() != 4);
}

TEST(PresetsPlugin, StartUpTakesTheBankTheUserChose)
{
    // No choice: the factory bank, its first kit applied and shown.
    auto factory = makePlugin();
    EXPECT_TRUE(factory->getBankName() == "Quindrel Factory Presets" && factory->getNumGroups() == 2 && factory->getGroupCount(0) == 16 && factory->getGroupName(1) == "Not used");
    EXPECT_EQ(factory->getParameterManager().getText(ParameterIds::currentPresetName), factory->getPresetName(0));
    for (int id = 0; id < Preset::count; ++id)
        EXPECT_FLOAT_EQ(live(*factory, id), factory->getPresetValue(0, id)) << "parameter " << id;

    juce::TemporaryFile settings(".ini"), noXml(".qdprsb");
    noXml.getFile().replaceWithText("this holds no XML");
    auto settingsFor = [&](const juce::String& presets)
    { return makePlugin(PluginTestHost::writeSettings(settings.getFile(), "<ResourcesSettings>" + presets + "</ResourcesSettings>")); };
    EXPECT_EQ(settingsFor("<Presets default=\"userDefinedPresets\" file=\"/no/such/bank.qdprsb\"/>")->getBankName(), "Quindrel Factory Presets");
    auto broken = settingsFor("<Presets default=\"userDefinedPresets\" file=\"" + noXml.getFile().getFullPathName() + "\"/>");
    EXPECT_TRUE(broken->getNumGroups() == 0 && broken->getPresetName(0) == "Preset" && broken->getPresetName(127) == "Preset");
    auto cleared = settingsFor("<Presets default=\"clearPresets\"/>");
    EXPECT_TRUE(cleared->getNumGroups() == 1 && cleared->getGroupCount(0) == 128 && cleared->getPresetName(5) == "Preset 5");
    EXPECT_EQ(cleared->getPresetValue(5, 32), 1.0f) << "cleared presets take the default preset's values";
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
    auto difference = render({ PluginTestHost::noteOn(0, 36), { change, juce::MidiMessage::programChange(1, 8) } });
    difference.addFrom(0, 0, alone, 0, 0, 4096, -1.0f);
    const int firstDifference = PluginTestHost::firstSoundAt(difference, 0, 0.0f);
    EXPECT_TRUE(firstDifference >= change && firstDifference < change + 2) << "the new kit sounded from sample " << firstDifference;
}
