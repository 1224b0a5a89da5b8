// The feel of the bitmap controls: drags, wheel, clicks, repeats, frames,
// blinking and the traffic between controls, parameters and the editor.

#include "EditorTestSupport.h"

#include "editor/GFXAnimation.h"
#include "editor/GFXButton.h"
#include "editor/GFXKnob.h"
#include "editor/GFXMultiStateButton.h"
#include "editor/GFXPanel.h"
#include "editor/GFXToggleButton.h"

using namespace editortest;

namespace
{
// A skin with one of everything, each frame readable by colour.
struct ControlsPanel : SkinnedPanel
{
    ControlsPanel()
        : SkinnedPanel([](const TestSkin& skin)
                       {
            skin.writeStrip("Knob.png", 30, 30, 11);
            skin.writeStrip("One.png", 30, 30, 1);
            skin.writeStrip("Button.png", 30, 20, 2);
            skin.writeStrip("Multi3D.png", 20, 20, 4);
            skin.writeStrip("Toggle3D.png", 20, 20, 4);
            skin.writeStrip("Switch.png", 30, 10, 3);
            skin.writeStrip("Rocker.png", 20, 40, 3);
            skin.writeStrip("Led.png", 10, 10, 3);
            skin.writeSkin(600, 300, R"(
<Knob name="Level"><links><link as="connectedTo" param="Bass Drum Level"/></links>
  <gfx resource="Knob.png" framesNum="11"/><pos left="10" top="10"/></Knob>
<Knob name="Single"><links><link as="connectedTo" param="Snare Drum Level"/></links>
  <gfx resource="One.png" framesNum="1"/><pos left="50" top="10"/></Knob>
<Switch name="Variation" style="Horizontal"><links><link as="connectedTo" param="Basic Variation Mode"/></links>
  <gfx resource="Switch.png" framesNum="3"/><pos left="90" top="10"/></Switch>
<Button name="Repeat" clickEvent="onPress" autorepeat="yes"><actions><action type="onClick" event="Toggle Bass Drum Mute"/>
  <action type="onClickWithCtrl" event="Toggle Snare Drum Mute"/></actions>
  <gfx resource="Button.png" framesNum="2"/><pos left="130" top="10"/></Button>
<Button name="Release"><actions><action type="onClick" event="Toggle Bass Drum Mute"/></actions>
  <gfx resource="Button.png" framesNum="2"/><pos left="170" top="10"/></Button>
<MultiStateButton name="Mute" states="2" style="3D"><links><link as="connectedTo" param="Bass Drum Mute"/></links>
  <actions><action type="onClick" event="Toggle Bass Drum Mute"/><action type="onClickWithCtrl" event="Inverse Bass Drum Mute"/></actions>
  <gfx resource="Multi3D.png"/><pos left="210" top="10"/></MultiStateButton>
<ToggleButton name="T1" style="3D" clickEvent="onPress" dragGroup="row"><links><link as="connectedTo" param="Low Tom Mute"/></links>
  <gfx resource="Toggle3D.png"/><pos left="10" top="100"/></ToggleButton>
<ToggleButton name="T2" style="3D" clickEvent="onPress" dragGroup="row"><links><link as="connectedTo" param="Mid Tom Mute"/></links>
  <gfx resource="Toggle3D.png"/><pos left="40" top="100"/></ToggleButton>
<Rocker name="Rocker"><actions><action type="onMoreClick" event="Toggle Claves Mute"/><action type="onLessClick" event="Toggle Rim Shot Mute"/></actions>
  <gfx resource="Rocker.png" framesNum="3"/><pos left="300" top="100"/></Rocker>
<Animation name="Led"><links><link as="connectedTo" param="Cymbal Mute"/></links>
  <gfx resource="Led.png" framesNum="3"/><pos left="340" top="100"/></Animation>
<Panel name="Box"><gfx transparent="true"/><size width="100" height="60"/><pos left="400" top="100"/>
  <controls ofsX="10" ofsY="5"><Button name="Inner"><actions><action type="onClick" event="Toggle Cow Bell Mute"/></actions>
  <gfx resource="Button.png" framesNum="2"/><pos left="5" top="5"/></Button><NoteDisplay name="Unknown"/></controls></Panel>
)"); })
    {
    }

    bool muted(const juce::String& instrument) { return parameter(instrument + " Mute").getBool(); }
};

// Counts the gestures the synchronous side of a parameter hears.
struct GestureLog : Parameter::Listener
{
    explicit GestureLog(Parameter& p)
        : parameter(p)
    {
        parameter.addListener(this);
    }
    ~GestureLog() override { parameter.removeListener(this); }
    void parameterChanged(Parameter&) override {}
    void parameterGestureBegin(Parameter&) override { ++begins; }
    void parameterGestureEnd(Parameter&) override { ++ends; }
    Parameter& parameter;
    int begins = 0, ends = 0;
};
} // namespace

TEST(EditorControls, KnobDragsFromWhereItStoodAndMovesFinerWithCtrlAndByStepsOnTheWheel)
{
    ControlsPanel p;
    auto& knob = p.control<GFXKnob>("Level");
    auto& level = p.parameter("Bass Drum Level");
    GestureLog log(level);
    level.setNormalised(0.2f, true);
    pump();
    EXPECT_EQ(shownFrame(knob), 2);

    // Neither the press nor a sideways move moves it; 50 px up is 0.2.
    down(knob, { 15, 25 });
    moveTo(knob, { 80, 25 }, { 15, 25 });
    EXPECT_NEAR(level.getNormalised(), 0.2, 1e-6);
    moveTo(knob, { 15, -25 }, { 15, 25 });
    EXPECT_NEAR(level.getNormalised(), 0.4, 1e-6);
    moveTo(knob, { 15, -500 }, { 15, 25 });
    up(knob, { 15, -500 }, { 15, 25 });
    EXPECT_EQ(level.getNormalised(), 1.0);
    EXPECT_TRUE(log.begins == 1 && log.ends == 1);
    EXPECT_TRUE(p.editor().getStatusBar()->getMessage() == "Bass Drum Level: " + p.plugin->getParameterDisplayText(0) && p.editor().getStatusBar()->getPriority() == 6);
    knob.mouseDoubleClick(mouseAt(knob, { 15, 15 }, { 15, 15 }));
    EXPECT_EQ(level.getNormalised(), 1.0) << "a double click is nothing";

    // Disabled: frame 0 and deaf to the mouse; enabled again it shows the value.
    pump();
    knob.setEnabled(false);
    EXPECT_EQ(shownFrame(knob), 0);
    drag(knob, { 15, 25 }, { { 15, 200 } });
    EXPECT_EQ(level.getNormalised(), 1.0);
    knob.setEnabled(true);
    EXPECT_EQ(shownFrame(knob), 10);

    // With Ctrl slow is fine and fast is coarse: 10 px gives 0.0019953, 50 px 0.0563747.
    level.setNormalised(0.5f, true);
    pump();
    down(knob, { 15, 100 }, withCtrl);
    moveTo(knob, { 15, 90 }, { 15, 100 }, withCtrl);
    EXPECT_NEAR(level.getNormalised(), 0.5019953, 1e-6);
    moveTo(knob, { 15, 40 }, { 15, 100 }, withCtrl);
    EXPECT_NEAR(level.getNormalised(), 0.5583700, 1e-6);
    moveTo(knob, { 15, 50 }, { 15, 100 }, withCtrl);
    EXPECT_NEAR(level.getNormalised(), 0.5563747, 1e-6);
    up(knob, { 15, 50 }, { 15, 100 });

    level.setNormalised(0.5f, true);
    pump();
    const auto wheel = [&](float x, float y, juce::ModifierKeys mods)
    { knob.mouseWheelMove(mouseAt(knob, { 15, 15 }, { 15, 15 }, mods), { x, y, false, false, false }); };
    wheel(0.0f, 1.0f, {});
    EXPECT_NEAR(level.getNormalised(), 0.65, 1e-6);
    wheel(0.5f, 1.0f, {});
    EXPECT_NEAR(level.getNormalised(), 0.575, 1e-6) << "sideways counts reversed, and wins";
    wheel(0.0f, 1.0f, leftButton);
    EXPECT_NEAR(level.getNormalised(), 0.575, 1e-6) << "not while a button is held";
    EXPECT_TRUE(log.begins == 4 && log.ends == 4) << "one gesture for each drag and each wheel step";

    // A knob of one frame shows it at every value.
    p.parameter("Snare Drum Level").setNormalised(0.7f, true);
    pump();
    EXPECT_EQ(shownFrame(p.control<GFXKnob>("Single")), 0);
}

TEST(EditorControls, AHorizontalSwitchJumpsToWhereItIsClicked)
{
    ControlsPanel p;
    auto& variation = p.control<GFXSwitch>("Variation");
    auto& mode = p.parameter("Basic Variation Mode");
    click(variation);
    EXPECT_NEAR(mode.getNormalised(), 0.5, 0.01);
    drag(variation, { 15, 5 }, { { 29, 5 } });
    EXPECT_NEAR(mode.getNormalised(), 1.0, 0.04);
    pump();
    EXPECT_EQ(shownFrame(variation), 2);
}

TEST(EditorControls, ButtonsFireOnPressOrReleaseAndRepeatWhileHeldAndListenersMayLeave)
{
    ControlsPanel p;
    auto& release = p.control<GFXButton>("Release");

    // Released off the button: nothing. Released on it: one click.
    drag(release, { 10, 10 }, { { 100, 10 } });
    EXPECT_FALSE(p.muted("Bass Drum"));
    down(release, { 10, 10 });
    EXPECT_TRUE(shownFrame(release) == 1 && !p.muted("Bass Drum"));
    up(release, { 10, 10 }, { 10, 10 });
    EXPECT_TRUE(shownFrame(release) == 0 && p.muted("Bass Drum"));

    // The tooltip names what a click would do now.
    auto& repeat = p.control<GFXButton>("Repeat");
    EXPECT_EQ(repeat.getTooltip(), "Toggle bass drum mute");
    repeat.modifierKeysChanged(juce::ModifierKeys::ctrlModifier);
    EXPECT_EQ(repeat.getTooltip(), "Toggle snare drum mute");

    // On press at once, again after 1000 ms, then every 100 ms.
    int clicks = 0;
    repeat.onClick = [&clicks]
    { ++clicks; };
    down(repeat, { 10, 10 });
    EXPECT_EQ(clicks, 1);
    pump(900);
    EXPECT_EQ(clicks, 1);
    const auto held = juce::Time::getMillisecondCounter();
    while (clicks < 4 && juce::Time::getMillisecondCounter() - held < 3000)
        pump(10);
    EXPECT_EQ(clicks, 4);
    EXPECT_GE(juce::Time::getMillisecondCounter() - held, 250u) << "the first repeat comes at 1000 ms, the next two 100 ms apart";
    up(repeat, { 10, 10 }, { 10, 10 });
    pump(250);
    EXPECT_EQ(clicks, 4) << "release stops the repeat";

    // A listener may leave, and take another with it, while it is called.
    struct Leaver : GUIController::Listener
    {
        void controllerEvent(GUIController& c, int) override
        {
            ++calls;
            c.removeListener(this);
            if (other != nullptr)
                c.removeListener(other);
        }
        GUIController::Listener* other = nullptr;
        int calls = 0;
    } first, second;
    first.other = &second;
    static_cast<GUIController&>(release).addListener(&second);
    static_cast<GUIController&>(release).addListener(&first);
    const bool muted = p.muted("Bass Drum");
    click(release);
    EXPECT_TRUE(first.calls == 1 && second.calls == 0);
    EXPECT_NE(p.muted("Bass Drum"), muted) << "the editor, added first, still heard it";
}

TEST(EditorControls, MultiStateButtonMovesOnlyWithItsParameterAndFlashes)
{
    ControlsPanel p;
    auto& mute = p.control<GFXMultiStateButton>("Mute");
    EXPECT_EQ(shownFrame(mute), 0);

    // Pressed shows the down frame of the state; dragged off, the up frame.
    down(mute, { 10, 10 });
    EXPECT_EQ(shownFrame(mute), 1);
    moveTo(mute, { 60, 10 }, { 10, 10 });
    EXPECT_EQ(shownFrame(mute), 0);
    moveTo(mute, { 12, 12 }, { 10, 10 });
    EXPECT_EQ(shownFrame(mute), 1);
    up(mute, { 12, 12 }, { 10, 10 });
    EXPECT_TRUE(p.muted("Bass Drum"));
    EXPECT_EQ(mute.getCurrentState(), 0) << "the click itself moves nothing";
    pump();
    EXPECT_TRUE(mute.getCurrentState() == 1 && shownFrame(mute) == 2);

    // Ctrl fires the other event: this one alone off, all others on.
    click(mute, withCtrl);
    EXPECT_TRUE(!p.muted("Bass Drum") && p.muted("Snare Drum"));

    // Blinking shows state 0 in the off phase; the running light inverts and wins.
    pump();
    p.parameter("Bass Drum Mute").setBool(true, true);
    pump();
    mute.setBlinking(true, 40);
    bool sawOff = false, sawOn = false;
    for (int i = 0; i < 20 && !(sawOff && sawOn); ++i, pump(15))
        (shownFrame(mute) == 0 ? sawOff : sawOn) = true;
    EXPECT_TRUE(sawOff && sawOn);
    mute.setRunningLight(true);
    for (int i = 0; i < 6; ++i, pump(15))
        EXPECT_EQ(shownFrame(mute), 0);
    mute.setBlinking(false);
    mute.setRunningLight(false);
    EXPECT_EQ(shownFrame(mute), 2);

    // A flash lights for 175 ms, and a flash while lit starts the time again.
    p.parameter("Bass Drum Mute").setBool(false, true);
    pump();
    auto& led = p.control<GFXAnimation>("Led");
    mute.flash();
    led.flash();
    EXPECT_TRUE(mute.getCurrentState() == 1 && led.getFrame() == 1);
    pump(110);
    mute.flash();
    pump(110);
    EXPECT_TRUE(mute.getCurrentState() == 1 && led.getFrame() == 0) << "the second flash restarted the time";
    pump(150);
    EXPECT_EQ(mute.getCurrentState(), 0);
}

// No shipped panel has toggles, and a script's click is all a skin of one's
// own gets: the click and the parameter, not the row swept by a drag.
TEST(EditorControls, AToggleAndItsParameterMoveEachOther)
{
    ControlsPanel p;
    auto& toggle = p.control<GFXToggleButton>("T1");
    click(toggle);
    EXPECT_TRUE(p.muted("Low Tom") && shownFrame(toggle) == 2);
    p.parameter("Mid Tom Mute").setBool(true, true);
    pump();
    EXPECT_TRUE(p.control<GFXToggleButton>("T2").getToggleState());
}

TEST(EditorControls, RockerFiresByHalfAndPanelPassesClicksToItsChildren)
{
    ControlsPanel p;
    auto& rocker = p.control<GFXRocker>("Rocker");
    down(rocker, { 10, 5 });
    EXPECT_TRUE(p.muted("Claves") && shownFrame(rocker) == GFXRocker::morePressed);
    up(rocker, { 10, 5 }, { 10, 5 });
    EXPECT_EQ(shownFrame(rocker), GFXRocker::atRest);
    down(rocker, { 10, 35 });
    EXPECT_TRUE(p.muted("Rim Shot") && shownFrame(rocker) == GFXRocker::lessPressed);
    up(rocker, { 10, 35 }, { 10, 35 });

    auto& box = p.control<GFXPanel>("Box");
    EXPECT_EQ(box.getControllers().size(), 1) << "an unknown tag is skipped";
    auto& inner = p.control<GFXButton>("Inner");
    EXPECT_EQ(inner.getPosition(), juce::Point<int>(15, 10)) << "offset by ofsX and ofsY";
    EXPECT_TRUE(box.getComponentAt(16, 11) == &inner && box.getComponentAt(80, 50) == nullptr) << "the panel itself takes no clicks";
    click(inner);
    EXPECT_TRUE(p.muted("Cow Bell")) << "the editor listens to the panel's children";
}
