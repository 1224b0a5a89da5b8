// The options window as a user meets it: every setting it shows, writes at
// once and hands on to the next instance, the sequencer's modes in step with
// the panel, and the MIDI control page with learn, its alert and its files.

#include "EditorTestSupport.h"

#include "editor/DrumMachineEditor.h"
#include "editor/GFXMultiStateButton.h"
#include "editor/options/DrumMachineSettingsPages.h"
#include "editor/options/MidiControlComponent.h"
#include "editor/options/PresetsSettingsComponent.h"

using namespace editortest;

namespace
{
template <typename Page>
Page& page(OpenPanel& panel, const char* tab)
{
    return *dynamic_cast<Page*>(panel.editor().getOptionsWindow()->getPage(tab));
}

using Sequencer = DrumMachineEditor::SequencerSettingsComponent;

// A click on a plain JUCE button arrives through the message loop.
void press(juce::Button& button)
{
    button.triggerClick();
    pump(20);
}

// The menu row whose text is that, as a click in the open menu picks it.
void choose(ComboBoxEx& box, const juce::String& text)
{
    auto& menu = box.getMenu();
    for (int i = 0; i < menu.getNumItems(); ++i)
        if (menu.getItemText(i) == text)
            return menu.selectRow(i);
    FAIL() << "no row " << text;
}
} // namespace

TEST(EditorOptions, EveryPageShowsTheSettingsAndWritesAChangeAtOnce)
{
    juce::TemporaryFile settings(".ini"), userBank(".qdprsb"), hostBank(".qdptrbH"), savedMap(".qddrmap");
    const auto mapWithoutExtension = settings.getFile().getSiblingFile("my-kit-map");
    const auto ccMap = settings.getFile().getSiblingFile("options-default.qdccmap");
    OpenPanel first(settings.getFile());
    auto& plugin = *first.plugin;

    // Values the plug-in holds before the window opens show in it.
    plugin.setPresetStoring(BasePluginOldStyle::automatic);
    plugin.setPresetsResource(BasePluginOldStyle::userDefinedPresets, userBank.getFile().getFullPathName());
    plugin.setStoredInstrumentOutput(3, 5);
    plugin.setStoredOutputType(DrumMachine::monoOutputs);
    plugin.defaultHostMode = true;
    plugin.hostPlayDetection = DrumMachine::byLowestCNoteOn;
    plugin.getSequencer()->nativeResourceKind = DrumMachineSeq::clearPatterns;
    plugin.setDrumMapSource(1, savedMap.getFile().getFullPathName());
    plugin.getMidiControl().setLoadDefaultMap(true);
    plugin.getMidiControl().setDefaultMapFile(ccMap.getFullPathName());

    first.editor().performEvent(BasePluginEditor::optionsEvent);
    auto& options = *first.editor().getOptionsWindow();
    EXPECT_EQ(options.getTabs().getCurrentTabIndex(), 0) << "the MIDI page first";

    auto& presets = page<BasePluginEditorOldStyle::PresetsSettingsComponent>(first, "Presets");
    auto& outputs = page<DrumMachineEditor::OutputsSettingsComponent>(first, "Outputs");
    auto& sequencer = page<Sequencer>(first, "Sequencer");
    auto& patterns = page<DrumMachineEditor::PatternsSettingsComponent>(first, "Patterns");
    auto& drumMap = page<DrumMachineEditor::DrumMapSettingsComponent>(first, "Drum map");
    auto& midi = *first.editor().getMidiControlComponent();
    auto& defaultPresets = presets.getDefaultPresets();
    EXPECT_TRUE(presets.getStoring().getSelectedIndex() == 0 && defaultPresets.getSelectedIndex() == 2 && defaultPresets.getPathComponent().isEnabled());
    EXPECT_EQ(defaultPresets.getPath(), userBank.getFile().getFullPathName());
    EXPECT_FALSE(presets.getChanging().isEnabled()) << "this plug-in has no changing option";
    EXPECT_TRUE(outputs.getOutputBox(3).getText() == "5" && outputs.getOutputType().getSelectedIndex() == 1 && outputs.getTriggerBox().getText() == " - None - ");
    EXPECT_TRUE(sequencer.getDefaultBox(2).isChecked() && sequencer.getDetection().getSelectedIndex() == 1);
    EXPECT_TRUE(patterns.getNativePatterns().getSelectedIndex() == 1 && !patterns.getNativePatterns().getPathComponent().isEnabled());
    EXPECT_TRUE(drumMap.getDefaultMap().getSelectedIndex() == 1 && midi.getDefaultMapBox().isChecked());
    EXPECT_EQ(drumMap.getKeysText(14), "49 (C#2), 51 (D#2), 52 (E2), 59 (B2)");

    // Each change reaches the plug-in as it is made.
    press(presets.getStoring().getButton(1));
    EXPECT_EQ(plugin.getPresetStoring(), BasePluginOldStyle::onDemand);
    press(presets.getDefaultPresets().getButton(1));
    EXPECT_TRUE(plugin.getPresetsResourceKind() == BasePluginOldStyle::clearPresets && first.editor().getStatusBar()->getMessage() == "Default Presets settings will be affected when plugin is loaded.");

    choose(outputs.getOutputBox(1), "7");
    EXPECT_TRUE(plugin.getStoredInstrumentOutput(1) == 7 && plugin.getInstrumentOutput(1) == 1) << "a default, not the output in use";
    plugin.setInstrumentOutput(12, 9);
    outputs.getSetFromCurrentButton().click({});
    EXPECT_TRUE(plugin.getStoredInstrumentOutput(12) == 9 && plugin.getStoredInstrumentOutput(1) == 1) << "every default takes the output in use";
    EXPECT_EQ(outputs.getOutputBox(12).getText(), "9");
    press(outputs.getOutputType().getButton(0));
    EXPECT_EQ(plugin.getStoredOutputType(), DrumMachine::stereoOutputs);
    choose(outputs.getTriggerBox(), "11");
    EXPECT_TRUE(plugin.getCore()->isTriggerOutEnabled() && plugin.getTriggerOutput() == 11);
    choose(outputs.getTriggerSourceBox(), "Cow Bell");
    EXPECT_EQ(plugin.getCore()->triggerOutSource, 12);

    press(sequencer.getDefaultBox(3).getButton());
    EXPECT_TRUE(plugin.defaultNoteOffMode && !plugin.noteOffMode) << "a default changes nothing in use";
    press(sequencer.getDetection().getButton(0));
    EXPECT_EQ(plugin.hostPlayDetection.load(), DrumMachine::byTransportChange);

    press(patterns.getHostPatterns().getButton(2));
    patterns.getHostPatterns().getPathComponent().choose(hostBank.getFile());
    EXPECT_TRUE(plugin.getSequencer()->hostResourceKind == DrumMachineSeq::userDefinedPatterns && plugin.getSequencer()->hostResourceFile == hostBank.getFile().getFullPathName());

    ASSERT_TRUE(drumMap.saveMap(mapWithoutExtension));
    EXPECT_TRUE(mapWithoutExtension.withFileExtension(".qddrmap").existsAsFile());
    savedMap.getFile().replaceWithText(R"(<DrumMap application="Quindrel" ver="1.1" name="Mine"><assign midiKey="60" instrument="CY"/></DrumMap>)");
    ASSERT_TRUE(drumMap.loadMap(savedMap.getFile()));
    EXPECT_TRUE(plugin.getKeyInstrument(60) == 14 && drumMap.getKeysText(14) == "60 (C3)" && drumMap.getKeysText(0) == "---");

    press(midi.getDefaultMapBox().getCheckBox().getButton());
    EXPECT_TRUE(!plugin.getMidiControl().getLoadDefaultMap() && first.editor().getStatusBar()->getMessage() == "Default Map settings will be affected when plugin is loaded.");
    mapWithoutExtension.withFileExtension(".qddrmap").deleteFile();
}

TEST(EditorOptions, TheSequencersModesOnThePageAndOnThePanelAgreeBothWays)
{
    OpenPanel panel;
    panel.editor().performEvent(BasePluginEditor::optionsEvent);
    auto& sequencer = page<Sequencer>(panel, "Sequencer");

    press(sequencer.getCurrentBox(2).getButton());
    pump();
    EXPECT_TRUE(panel.plugin->hostMode && panel.control<GFXMultiStateButton>("HostModeButton").getCurrentState() == 1) << "the panel's button shows the page's change";
    panel.press("Toggle Host Mode");
    EXPECT_FALSE(sequencer.getCurrentBox(2).isChecked()) << "the page shows the panel's change";

    // With the internal sequencer off the other switches do nothing, here as there.
    panel.press("Toggle Internal Sequencer");
    EXPECT_FALSE(sequencer.getCurrentBox(0).isChecked() || sequencer.getCurrentBox(1).isEnabled());
    press(sequencer.getCurrentBox(0).getButton());
    EXPECT_TRUE(panel.plugin->internalSequencer && sequencer.getCurrentBox(1).isEnabled());
}

TEST(EditorOptions, TheMidiPageFollowsTheMapAndLearnAndAsksBeforeClearing)
{
    OpenPanel panel;
    auto& editor = panel.editor();
    auto& midiControl = panel.plugin->getMidiControl();
    auto& page = *editor.getMidiControlComponent();
    editor.performEvent(BasePluginEditor::optionsEvent);

    // Learn from the page, a parameter touched and a controller moved.
    press(page.getLearnBox().getButton());
    EXPECT_TRUE(midiControl.isLearnMode());
    midiControl.setLearnParameter(&panel.parameter("Bass Drum Tone"));
    midiControl.handleController(juce::MidiMessage::controllerEvent(1, 21, 64));
    midiControl.assign(7, &panel.parameter("Main Volume"), true);
    pump();
    ASSERT_EQ(page.getList().getNumAssignments(), 2);
    EXPECT_TRUE(page.getList().getController(0) == 7 && page.getList().getParameterName(1) == "Bass Drum Tone");

    // The panel's learn button ends it, and the box follows.
    editor.performEvent(BasePluginEditor::toggleMidiLearnEvent);
    pump();
    EXPECT_FALSE(midiControl.isLearnMode() || page.getLearnBox().isChecked());

    page.getList().selectController(21);
    click(panel.control<GFXButton>("Delete Assign", &page));
    pump();
    EXPECT_TRUE(midiControl.getControllerOf(&panel.parameter("Bass Drum Tone")) == -1 && page.getList().getNumAssignments() == 1);

    // A map saved under a bare name gets the extension, and loads back.
    const auto bare = juce::File::createTempFile("").getSiblingFile("options-map");
    ASSERT_TRUE(page.saveMap(bare));
    const auto saved = bare.withFileExtension(".qdccmap");
    EXPECT_TRUE(saved.existsAsFile());

    // "Clear All" asks first; "No" keeps the map, "Yes" clears it.
    auto& alert = page.getClearAlert();
    click(panel.control<GFXButton>("Clear All", &page));
    ASSERT_TRUE(alert.isShown());
    EXPECT_EQ(alert.getMessage(), "Do you really want to clear all assignations?");
    click(*alert.getButton(1));
    pump();
    EXPECT_FALSE(alert.isShown());
    EXPECT_TRUE(midiControl.getControllerOf(&panel.parameter("Main Volume")) == 7 && page.getList().getNumAssignments() == 1);
    click(panel.control<GFXButton>("Clear All", &page));
    click(*alert.getButton(0));
    pump();
    EXPECT_TRUE(midiControl.getControllerOf(&panel.parameter("Main Volume")) == -1 && page.getList().getNumAssignments() == 0);

    ASSERT_TRUE(page.loadMap(saved));
    pump();
    EXPECT_EQ(page.getList().getNumAssignments(), 1);
    saved.deleteFile();
}
