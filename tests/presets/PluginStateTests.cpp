// The state a host keeps in its song: saved, restored into a fresh instance,
// saved again; the sequencer's selection, older states and bad blocks.

#include "StateSupport.h"

using namespace StateSupport;

namespace
{
struct RestoreListener : BasePlugin::Listener
{
    void pluginStateRestored(BasePlugin&) override { ++restored; }
    int restored = 0;
};

// The state of a fresh instance with its QDState children replaced.
juce::MemoryBlock withQDState(const juce::String& children)
{
    auto fresh = makePlugin();
    const auto block = stateOf(*fresh);
    auto xml = juce::AudioProcessor::getXmlFromBinary(block.getData(), (int) block.getSize());
    auto* qd = xml->getChildByName("QDState");
    qd->deleteAllChildElements();
    auto parsed = juce::parseXML("<QDState>" + children + "</QDState>");
    for (auto* child : parsed->getChildIterator())
        qd->addChildElement(new juce::XmlElement(*child));
    return blockOf(*xml);
}
} // namespace

TEST(PresetsPluginState, SaveRestoreSaveGivesTheSameBytesAndTheSameSong)
{
    for (const bool busy : { false, true })
    {
        auto original = makePlugin();
        if (busy)
            makeBusy(*original);
        const auto saved = stateOf(*original);

        auto restored = makePlugin();
        restore(*restored, saved);
        EXPECT_EQ(textOf(stateOf(*restored)), textOf(saved)) << (busy ? "busy instance" : "default instance");
        EXPECT_EQ(stateOf(*restored), saved);

        if (!busy)
            continue;

        // What a musician would check first.
        auto& parameters = restored->getParameterManager();
        auto& seq = *restored->getQuindrelSeq();
        EXPECT_FLOAT_EQ((float) parameters.getNormalised(19), 0.8125f) << "the unstored knob";
        EXPECT_NE(restored->getPresetValue(4, 19), 0.8125f) << "the preset keeps its stored value";
        EXPECT_TRUE(restored->getCurrentPreset() == 4 && restored->getPresetName(9) == "Song Kit" && parameters.getBool(ParameterIds::mute + 3));
        EXPECT_TRUE(restored->getInstrumentOutput(1) == 3 && restored->hostMode && restored->noteOffMode && !restored->internalSync);
        EXPECT_TRUE(seq.getHostPatternAt(7).getName() == "Verse \"A\" & <B>" && seq.getEditedHostPattern() == 7 && seq.getStartType() == QuindrelSeq::startWithFillIn);
        EXPECT_TRUE(restored->getMidiControl().getAssignment(21) == parameters.getParameter("Cymbal Tone") && restored->getKeyInstrument(40) == 12);

        // Saved in host mode, the song comes back ready to write, which shows once host mode is left.
        EXPECT_TRUE(restored->writeMode && !original->writeMode);
        restored->setHostMode(false);
        EXPECT_TRUE(parameters.getBool(ParameterIds::writeModeState));
    }
}

TEST(PresetsPluginState, TheNativeRunsSelectionAndItsOddValues)
{
    auto plugin = makePlugin();
    auto* seq = plugin->getQuindrelSeq();
    auto& parameters = plugin->getParameterManager();

    restore(*plugin, withQDState("<AutoFillIn value=\"12\"/><BasicVariation value=\"AB\"/><IntroFillInVariation value=\"B\"/>"
                                 "<BasicPattern value=\"11\"/><IntroFillInPattern value=\"15\"/><StartPatternType value=\"fillIn\"/>"));
    auto expectSelection = [&](const char* why)
    {
        EXPECT_TRUE(seq->getBasicVariationMode() == QuindrelSeq::variationAB && seq->getFillVariationMode() == QuindrelSeq::variationB) << why;
        EXPECT_TRUE(seq->getBasicPattern() == 11 && seq->getFillPattern() == 15 && seq->getStartType() == QuindrelSeq::startWithFillIn) << why;
    };
    expectSelection("as written");
    EXPECT_TRUE(seq->getAutoFill() == 12 && std::abs(parameters.getNormalised(ParameterIds::autoFillIn) - 0.4) < 1e-6);

    restore(*plugin, withQDState("<AutoFillIn value=\"3\"/><BasicVariation value=\"C\"/><IntroFillInVariation value=\"AB\"/>"
                                 "<BasicPattern value=\"12\"/><IntroFillInPattern value=\"11\"/><StartPatternType value=\"intro\"/>"
                                 "<BasicPattern value=\"seven\"/><BasicPattern/>"));
    EXPECT_EQ(seq->getAutoFill(), 0) << "\"3\" is manual";
    expectSelection("unknown words, 12 as a basic pattern and 11 as a fill-in change nothing");

    // A state without QDState keeps the instance's selection and modes; an
    // unknown child is passed over.
    const auto block = stateOf(*plugin);
    auto xml = juce::AudioProcessor::getXmlFromBinary(block.getData(), (int) block.getSize());
    xml->removeChildElement(xml->getChildByName("QDState"), true);
    const auto withoutQDState = blockOf(*xml);
    xml->insertChildElement(new juce::XmlElement("FromANewerVersion"), 3);
    const auto withUnknownChild = blockOf(*xml);

    auto other = makePlugin(), third = makePlugin();
    for (auto* instance : { other.get(), third.get() })
    {
        instance->getQuindrelSeq()->setBasicPattern(3);
        instance->getParameterManager().setNormalised(ParameterIds::autoFillIn, 0.8f); // every 4 passes
    }
    restore(*other, withUnknownChild);
    restore(*third, withoutQDState);
    EXPECT_TRUE(other->getQuindrelSeq()->getBasicPattern() == 3 && other->getQuindrelSeq()->getAutoFill() == 4);
    EXPECT_EQ(stateOf(*other), stateOf(*third));
}

TEST(PresetsPluginState, OnlyTheOlderStateAppliesItsPreset)
{
    // The older state: a bank, a control map and the parameters outside presets, by short names.
    const juce::String old = "<QuindrelBank>"
                             "<QuindrelPresetBank><QuindrelPreset name=\"Old Kit\"><param name=\"BD Decay\" value=\"0.25\"/></QuindrelPreset></QuindrelPresetBank>"
                             "<MidiCCMap><assign CC=\"30\" param=\"SD Tone\"/></MidiCCMap>"
                             "<NotPresetParams><param name=\"BD Mute\" value=\"1\"/><param name=\"Main Volume\" value=\"0.25\"/></NotPresetParams>"
                             "</QuindrelBank>";
    auto plugin = makePlugin();
    auto& parameters = plugin->getParameterManager();
    restore(*plugin, blockOf(old));
    EXPECT_FLOAT_EQ((float) parameters.getNormalised(19), 0.25f) << "the current preset is applied";
    EXPECT_TRUE(plugin->getPresetName(0) == "Old Kit" && plugin->getMidiControl().getAssignment(30) == parameters.getParameter("Snare Drum Tone") && parameters.getBool(ParameterIds::mute));
    EXPECT_FLOAT_EQ((float) parameters.getNormalised(ParameterIds::mainVolume), 0.25f) << "by its name as it stands";

    // The newer state restores the parameters as they were, not the preset.
    auto original = makePlugin();
    original->getParameterManager().setNormalised(19, 0.9375f);
    restore(*plugin, stateOf(*original));
    EXPECT_FLOAT_EQ((float) parameters.getNormalised(19), 0.9375f);
    EXPECT_NE(plugin->getPresetValue(0, 19), 0.9375f);
}

TEST(PresetsPluginState, ABadBlockChangesNothingAndStillTellsTheListeners)
{
    auto plugin = makePlugin();
    makeBusy(*plugin);
    const auto before = stateOf(*plugin);
    RestoreListener listener;
    plugin->addListener(&listener);

    const juce::MemoryBlock bad[] = {
        juce::MemoryBlock("not a state at all", 18),
        blockOf("<PluginState application=\"Drumatic\"><ParametersState><param name=\"Main Volume\" value=\"1\"/></ParametersState></PluginState>"),
        blockOf("<SomethingElse application=\"Quindrel\"><ParametersState><param name=\"Main Volume\" value=\"1\"/></ParametersState></SomethingElse>"),
        {},
    };
    for (const auto& block : bad)
        restore(*plugin, block);

    juce::MessageManager::getInstance()->runDispatchLoopUntil(50);
    EXPECT_GE(listener.restored, 1);
    EXPECT_EQ(stateOf(*plugin), before);
    plugin->removeListener(&listener);
}
