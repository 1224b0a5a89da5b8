// The shipped panel at work: what the state parameters do to the other
// controls, the hints and learn prompts on the status bar, the lights that
// follow the audio thread and the clocks, the pattern menus and files.

#include "EditorTestSupport.h"

#include "editor/GFXAnimation.h"
#include "editor/GFXButton.h"
#include "editor/GFXKnob.h"
#include "editor/GFXMultiStateButton.h"
#include "editor/NumericDisplay.h"
#include "editor/PatternNumberDisplay.h"
#include "editor/QuindrelEditor.h"
#include "sequencer/QuindrelSeq.h"

using namespace editortest;

namespace
{
// The shipped panel, with what its tests read of it.
struct Panel : OpenPanel
{
    QuindrelEditor& editor() { return dynamic_cast<QuindrelEditor&>(OpenPanel::editor()); }
    StatusBar& status() { return *editor().getStatusBar(); }

    void controller(int number, int value)
    {
        render(64, { { 0, juce::MidiMessage::controllerEvent(1, number, value) } });
        pump();
    }

    // The step keys that show the running light.
    juce::Array<int> runningSteps()
    {
        juce::Array<int> lit;
        for (int step = 0; step < 16; ++step)
            if (control<GFXMultiStateButton>("Step" + juce::String(step + 1).paddedLeft('0', 2) + "Button").isRunningLight())
                lit.add(step);
        return lit;
    }
};

const juce::String learnPrompt = "Waiting for a controller or parameter movement...";
} // namespace

TEST(EditorPanel, ARandomizedTrackShowsItsThresholdKnobWhereTheLevelKnobWas)
{
    Panel p;
    // The threshold knob in the level knob's place, and the track's lamp blinking.
    const auto randomized = [&p](const juce::String& track)
    {
        auto& level = p.control<GFXKnob>(track + "LevelKnob");
        auto& threshold = p.control<GFXKnob>(track + "RandThresholdKnob");
        const bool lamp = p.control<GFXAnimation>(track + "LevelModeLed").isBlinking();
        EXPECT_EQ(level.isVisible(), !threshold.isVisible()) << track;
        EXPECT_EQ(threshold.getBounds(), level.getBounds()) << track;
        EXPECT_EQ(lamp, threshold.isVisible()) << track;
        return threshold.isVisible();
    };
    EXPECT_FALSE(randomized("SnareDrum")) << "the opening sends every parameter, Rand State off among them";

    p.press("Toggle Pattern Write Mode");
    p.press("Select Snare Drum");
    p.press("Toggle Randomizer");
    const auto emptyHint = p.status().getMessage();
    EXPECT_TRUE(emptyHint.startsWith("Choose tracks")) << emptyHint;
    EXPECT_TRUE(p.control<GFXMultiStateButton>("PattRandModeButton").isBlinking());
    EXPECT_FALSE(randomized("SnareDrum")) << "no result yet";

    p.press("Next");
    EXPECT_TRUE(randomized("SnareDrum"));
    EXPECT_TRUE(p.status().getMessage().startsWith("Tune the amount")) << "the hint follows the result";
    EXPECT_EQ(p.status().getPriority(), QuindrelEditor::hintPriority);
    EXPECT_FALSE(randomized("BassDrum")) << "a track outside the result keeps its level knob";

    p.reopen();
    EXPECT_TRUE(randomized("SnareDrum")) << "closed and opened again, the panel comes up as the plug-in stands";

    // Cancelled, the panel is as before and the hint goes.
    p.press("Toggle Randomizer");
    EXPECT_FALSE(randomized("SnareDrum"));
    EXPECT_FALSE(p.control<GFXMultiStateButton>("PattRandModeButton").isBlinking());
    EXPECT_TRUE(p.status().getMessage().isEmpty());
}

TEST(EditorPanel, PatternDisplaysReadNotesInHostModeAndGoBlankWithoutTheSequencer)
{
    Panel p;
    auto& number = p.control<PatternNumberDisplay>("PatternNumberDisplay");
    const auto frames = [&number]
    { return juce::Array<int>{ number.getDigit(0).getFrame(), number.getDigit(1).getFrame(), number.getDigit(2).getFrame(), number.getDigit(3).getFrame() }; };
    const auto numbered = frames();
    EXPECT_EQ(numbered[2], 2) << "native pattern 1 reads 01";

    p.press("Toggle Host Mode");
    EXPECT_TRUE(frames()[0] == 11 && frames()[1] >= 11 && frames()[1] <= 17) << "P. and a note letter";
    p.press("Toggle Host Mode");
    EXPECT_EQ(frames(), numbered);

    p.press("Toggle Internal Sequencer");
    EXPECT_EQ(frames(), juce::Array<int>({ 0, 0, 0, 0 }));
    EXPECT_FALSE(p.control<GFXDisplay>("PatternNameDisplay").isEnabled());
}

// The auto fill-in switch turns like a knob (250 pixels up for the whole range),
// and the nearest of its six positions is what it shows and what the sequencer
// plays; sideways does nothing.
TEST(EditorPanel, TheAutoFillInSwitchTurnsLikeAKnobToItsNearestPosition)
{
    Panel p;
    auto& autoFill = p.control<GFXSwitch>("MeasuresAutoFillInKnob");
    auto& seq = *p.plugin->getQuindrelSeq();
    const juce::Point<float> centre { 18, 18 };
    auto expectPosition = [&](int frame, int passes)
    {
        pump();
        EXPECT_TRUE(autoFill.getFrame() == frame && seq.getAutoFill() == passes) << "frame " << autoFill.getFrame() << ", every " << seq.getAutoFill();
    };

    drag(autoFill, centre, { { 18, 8 }, { 18, -37 } }); // 55 pixels up: 0.22
    expectPosition(1, 16);
    drag(autoFill, centre, { { 18, -132 } }); // 150 more from where it stands: 0.82
    expectPosition(4, 4);
    drag(autoFill, centre, { { 400, 18 } });
    expectPosition(4, 4);
    drag(autoFill, centre, { { 18, 600 } });
    expectPosition(0, 0);
}

TEST(EditorPanel, TempoDisplayFollowsTheTempoButTakesTheMouseOnlyWhileTheTempoIsEditable)
{
    Panel p;
    auto& display = p.control<NumericDisplay>("TempoDisplay");
    auto& tempo = p.parameter("Pattern Tempo");
    const auto middle = display.getLocalBounds().getCentre().toFloat();
    const auto dragUp = [&]
    { drag(display, middle, { middle.translated(0.0f, -40.0f), middle.translated(0.0f, -80.0f) }); };

    const double before = tempo.getValue();
    dragUp();
    EXPECT_TRUE(tempo.getValue() == before && !p.control<GFXKnob>("TempoKnob").isEnabled()) << "playing, not editing: the pattern's tempo is not the user's to drag";

    tempo.setValue(133.0f, true);
    pump();
    EXPECT_DOUBLE_EQ(display.getValue(), 133.0) << "it still shows values";

    p.press("Toggle Pattern Write Mode");
    EXPECT_TRUE(p.control<GFXKnob>("TempoKnob").isEnabled() && p.control<GFXKnob>("ShuffleKnob").isEnabled());
    const double editing = tempo.getValue();
    dragUp();
    EXPECT_GT(tempo.getValue(), editing);
}

TEST(EditorPanel, CtrlClickOnPrevOpensThePatternsMenuOnlyWithTheInternalSequencer)
{
    Panel p;
    auto& prev = p.control<GFXButton>("PattPrevButton");
    auto& menu = p.editor().getLoadMenu();
    auto* sequencer = p.plugin->getQuindrelSeq();
    p.press("Toggle Pattern Write Mode");
    const int edited = sequencer->getEditedIndex();

    p.press("Toggle Internal Sequencer");
    click(prev, withCtrl);
    pump();
    EXPECT_TRUE(!menu.isShown() && sequencer->getEditedIndex() == edited) << "nor does it step to the previous pattern";

    p.press("Toggle Internal Sequencer");
    click(prev, withCtrl);
    pump();
    EXPECT_TRUE(menu.isShown() && menu.getNumItems() == 2 && sequencer->getEditedIndex() == edited);
    menu.close();

    click(p.control<GFXButton>("PattNextButton"), withCtrl);
    EXPECT_TRUE(p.editor().getSaveMenu().isShown());
}

TEST(EditorPanel, LearnPromptsStayAboveHintsAndFollowThePicks)
{
    Panel p;
    auto& learn = p.control<GFXMultiStateButton>("MidiLearnButton");
    click(learn);
    pump();
    EXPECT_TRUE(learn.getCurrentState() == 1 && p.status().getMessage() == learnPrompt);

    p.press("Toggle Pattern Write Mode");
    p.press("Toggle Length Mode");
    EXPECT_EQ(p.status().getMessage(), learnPrompt) << "a hint at priority 4 waits behind learn";

    // Touching a knob picks its parameter; a free controller then takes it.
    auto& knob = p.control<GFXKnob>("BassDrumLevelKnob");
    const auto centre = knob.getLocalBounds().getCentre().toFloat();
    drag(knob, centre, { centre.translated(0.0f, -20.0f) });
    pump();
    EXPECT_EQ(p.status().getMessage(), "'Bass Drum Level' parameter is free. Waiting for a free controller now...");
    p.controller(20, 100);
    EXPECT_EQ(p.status().getMessage(), "CC# 20 is assigned to parameter 'Bass Drum Level'.");
    p.controller(21, 100);
    EXPECT_EQ(p.status().getMessage(), "CC# 21 is free. Waiting for a parameter now...");

    click(learn);
    pump();
    EXPECT_TRUE(learn.getCurrentState() == 0 && p.status().getMessage().isEmpty());

    p.press("Toggle Length Mode");
    p.press("Toggle Length Mode");
    EXPECT_EQ(p.status().getMessage(), "Set pattern length using step buttons.") << "with learn off the hint shows";

    // A controller's move shows above the hint, below a mouse move.
    p.controller(20, 127);
    EXPECT_TRUE(p.status().getMessage().startsWith("Bass Drum Level: ") && p.status().getPriority() == 5) << p.status().getMessage();
}

TEST(EditorPanel, EveryInstrumentTriggeredBetweenTwoLooksFlashesOnce)
{
    Panel p;
    p.plugin->setInternalSequencer(false); // notes play the drums
    pump();

    // Ten milliseconds apart: one look of the timer sees both.
    p.render(1024, { PluginTestHost::noteOn(0, 36), PluginTestHost::noteOn(480, 38) }); // bass and snare drum
    p.editor().idle();

    auto& bass = p.control<GFXMultiStateButton>("BassDrumActivityLed");
    auto& snare = p.control<GFXMultiStateButton>("SnareDrumActivityLed");
    EXPECT_TRUE(bass.getCurrentState() == 1 && snare.getCurrentState() == 1);
    EXPECT_EQ(p.control<GFXMultiStateButton>("LowCongaActivityLed").getCurrentState(), 0);
    EXPECT_EQ(p.editor().getMidiActivityLed()->getFrame(), 1);

    pump(GFXMultiStateButton::flashMs + 100);
    EXPECT_TRUE(bass.getCurrentState() == 0 && snare.getCurrentState() == 0);

    p.editor().idle();
    EXPECT_EQ(bass.getCurrentState(), 0) << "a trigger is taken once";
}

TEST(EditorPanel, RunningLightFollowsANativeRunAndTheEditedPattern)
{
    Panel p;
    constexpr int samplesPerStep = 6000; // 120 BPM, four steps a beat, 48 kHz
    p.playHead.playing = true;
    const auto lightAfter = [&p](int samples)
    {
        p.render(samples);
        pump();
        return p.runningSteps();
    };
    EXPECT_EQ(lightAfter(3 * samplesPerStep + 1000), juce::Array<int>({ 3 }));
    EXPECT_EQ(lightAfter(2 * samplesPerStep), juce::Array<int>({ 5 }));

    // Editing another pattern than the one that plays: no position to show.
    p.press("Toggle Pattern Write Mode");
    p.press("Next");
    EXPECT_TRUE(lightAfter(samplesPerStep).isEmpty());
    p.press("Prev");
    EXPECT_EQ(lightAfter(samplesPerStep), juce::Array<int>({ 7 }));

    // Stopped: no light, and the name blinks, ready for the next start.
    p.press("Toggle Pattern Write Mode");
    auto& name = p.control<GFXDisplay>("PatternNameDisplay");
    EXPECT_FALSE(name.isBlinking());
    p.playHead.playing = false;
    EXPECT_TRUE(lightAfter(512).isEmpty() && name.isBlinking());
}

TEST(EditorPanel, TypedNamesNameTheEditedPatternOnlyWhileWritingAndTheCurrentPresetAlways)
{
    Panel p;
    auto& display = p.control<GFXDisplay>("PatternNameDisplay");
    auto* sequencer = p.plugin->getQuindrelSeq();
    const auto type = [&](GFXDisplay& into, const juce::String& text)
    {
        into.beginEdit();
        if (!into.isEditing())
            return;
        while (into.getText().isNotEmpty())
            into.keyPressed(juce::KeyPress(juce::KeyPress::backspaceKey));
        for (auto c : text)
            into.keyPressed(juce::KeyPress((int) c, {}, c));
        into.keyPressed(juce::KeyPress(juce::KeyPress::returnKey));
        pump();
    };

    const auto name = sequencer->getPatternName(0, DrumMachineSeq::nativeType);
    type(display, "Bossa");
    EXPECT_TRUE(sequencer->getPatternName(0, DrumMachineSeq::nativeType) == name && display.getText() == name) << "the playing pattern is not renamed";

    p.press("Toggle Pattern Write Mode");
    type(display, "Bossa");
    EXPECT_TRUE(sequencer->getEditedName() == "Bossa" && p.parameter("Pattern Name").getText() == "Bossa" && display.getText() == "Bossa");

    auto& preset = p.control<GFXDisplay>("PresetNameDisplay");
    const int current = p.plugin->getCurrentPreset();
    type(preset, "Dusty Kit");
    EXPECT_TRUE(p.plugin->getPresetName(current) == "Dusty Kit" && preset.getText() == "Dusty Kit");
}

TEST(EditorPanel, PatternFilesGetTheirExtensionAndComeBackIntoTheEditedSlot)
{
    Panel p;
    auto& editor = p.editor();
    auto* sequencer = p.plugin->getQuindrelSeq();
    const auto folder = juce::File::createTempFile("patterns");
    ASSERT_TRUE(folder.createDirectory());
    constexpr int single = DrumMachineEditor::singlePatternItem, bank = DrumMachineEditor::patternBankItem, native = DrumMachineSeq::nativeType;
    p.press("Toggle Pattern Write Mode");
    const auto bass = sequencer->getEditedPattern()->getTrackString(0);

    ASSERT_TRUE(editor.savePatternFile(folder.getChildFile("groove"), single, native));
    const auto saved = folder.getChildFile("groove" + sequencer->getPatternFileExtension(native));
    EXPECT_TRUE(saved.existsAsFile() && p.plugin->getLastDirectory() == folder);
    ASSERT_TRUE(editor.savePatternFile(folder.getChildFile("kit.xml"), bank, native));
    EXPECT_TRUE(folder.getChildFile("kit.xml").existsAsFile()) << "an extension the user typed is kept";

    p.press("Clear All Instruments");
    ASSERT_NE(sequencer->getEditedPattern()->getTrackString(0), bass);
    ASSERT_TRUE(editor.loadPatternFile(saved, single, native));
    EXPECT_EQ(sequencer->getEditedPattern()->getTrackString(0), bass);
    EXPECT_EQ(p.parameter("Step 01 State").getValue() > 0.0, sequencer->getStep(p.plugin->selectedTrack, 0) != 0)
        << "the step keys show the loaded pattern";
    EXPECT_FALSE(editor.loadPatternFile(folder.getChildFile("kit.xml"), single, native)) << "a bank is no single pattern";
    folder.deleteRecursively();
}
