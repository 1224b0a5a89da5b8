#include "parameters/MidiControl.h"
#include "parameters/OldParameterNames.h"
#include "plugin/Resources.h"
#include "support/AllocationCounter.h"

#include <gtest/gtest.h>

namespace
{
juce::MidiMessage cc(int controller, int value) { return juce::MidiMessage::controllerEvent(1, controller, value); }

void pump() { juce::MessageManager::getInstance()->runDispatchLoopUntil(20); }

// The real table, so that names, ranges and the automatable flag are the plug-in's.
struct MidiControlTest : ::testing::Test
{
    MidiControlTest()
    {
        manager.loadFromXml(Resources::loadResourceText("parameters.xml"));
        control.setApplicationName("Quindrel");
    }

    Parameter* param(const juce::String& name)
    {
        auto* p = manager.getParameter(name);
        EXPECT_NE(p, nullptr) << name;
        return p;
    }

    ParameterManager manager;
    MidiControl control{ manager };
};

struct Recorder : MidiControl::Listener, Parameter::Listener
{
    void midiMapChanged(MidiControl&) override { calls.add("map"); }
    void midiLearnChanged(MidiControl&) override { calls.add("learn"); }
    void midiControllerMoved(MidiControl&, Parameter* p) override { calls.add("moved " + p->getName()); }
    void parameterChanged(Parameter& p) override { calls.add("changed " + p.getName()); }
    juce::StringArray calls;
};

using ParametersMidiControl = MidiControlTest;
} // namespace

TEST_F(ParametersMidiControl, OneControllerPerParameterWhichItSetsAlone)
{
    auto* level = param("Bass Drum Level");
    auto* tone = param("Bass Drum Tone");

    control.assign(20, level, false);
    control.assign(7, level, false);
    EXPECT_TRUE(control.getAssignment(20) == nullptr && control.getControllerOf(level) == 7 && control.getAssignmentCount() == 1)
        << "a second controller takes the parameter from the first";

    control.assign(3, tone, false);
    control.assign(7, tone, false);
    EXPECT_TRUE(control.getAssignment(7) == tone && control.getControllerOf(level) == -1) << "a controller given another parameter drops the first";
    EXPECT_EQ(control.getAssignmentCount(), 2) << "the accepted display quirk: one too high";

    control.assign(9, level, false);
    control.assign(100, param("Main Volume"), false);
    const auto assigned = control.getAssignedControllers();
    EXPECT_EQ(std::vector<int>(assigned.begin(), assigned.end()), (std::vector<int>{ 7, 9, 100 }));

    control.removeAssignment(50);
    control.removeAssignment(9);
    control.assign(200, level, false);
    EXPECT_EQ(control.getControllerOf(level), -1) << "controller 200 does not exist";
    EXPECT_EQ(control.getControllerOf(nullptr), -1) << "an empty entry is not a parameter's controller";

    control.clear(false);
    EXPECT_EQ(control.getAssignmentCount(), 0);

    // A controller sets its parameter and nothing else.
    auto* snare = param("Snare Drum Level");
    auto* mute = param("Snare Drum Mute");
    Recorder recorder;
    snare->addListener(&recorder);
    control.assign(1, snare, false);
    control.assign(2, mute, false);

    control.handleController(cc(1, 127));
    EXPECT_TRUE(snare->getNormalised() == 1.0 && control.getMovedParameter() == snare);
    EXPECT_EQ(recorder.calls, juce::StringArray("changed Snare Drum Level")) << "the parameter's own listeners run on the caller's thread";
    control.handleController(cc(1, 0));
    EXPECT_EQ(snare->getNormalised(), 0.0);
    control.handleController(cc(1, 64));
    EXPECT_NEAR(snare->getNormalised(), 64.0 / 127.0, 1e-6) << "taken as it is, no pick-up";
    control.handleController(cc(2, 64));
    EXPECT_TRUE(mute->getBool() && control.getMovedParameter() == mute);

    const auto before = snare->getNormalised();
    control.handleController(cc(3, 10));
    control.handleController(juce::MidiMessage::noteOn(1, 1, (juce::uint8) 10));
    EXPECT_EQ(snare->getNormalised(), before) << "unassigned controllers and other messages do nothing";
    snare->removeListener(&recorder);
}

TEST_F(ParametersMidiControl, AllocatesNothing)
{
    control.assign(5, param("Hi Tom Decay"), false);
    // Counts operator new only: JUCE's message queue, which the async updates
    // post to, grows by realloc and is not in view here.
    control.handleController(cc(5, 1));
    auto* tone = param("Cymbal Tone");

    ScopedAllocationCounter counter;
    for (int v = 0; v < 128; ++v)
        control.handleController(cc(5, v));
    control.setLearnMode(true);
    control.setLearnParameter(tone);
    control.handleController(cc(6, 3)); // learns, assigns and drives
    EXPECT_EQ(counter.count(), 0);
    EXPECT_EQ(control.getControllerOf(tone), 6);
    pump();
}

TEST_F(ParametersMidiControl, EitherOrderAndTakenControllers)
{
    auto* tone = param("Maracas Tone");
    auto* decay = param("Cymbal Decay");
    auto* level = param("Cow Bell Level");
    control.assign(30, level, false);

    // Parameter first, then a free controller.
    control.setLearnMode(true);
    control.setLearnParameter(tone);
    EXPECT_EQ(control.getLearnController(), -1);
    control.handleController(cc(40, 127));
    EXPECT_TRUE(control.getAssignment(40) == tone && tone->getNormalised() == 1.0) << "the new controller drives it at once";

    // Controller first, then a parameter; the parameter leaves its old controller.
    control.handleController(cc(41, 0));
    EXPECT_EQ(control.getLearnParameter(), nullptr) << "controller 41 is free";
    control.setLearnParameter(tone);
    EXPECT_TRUE(control.getAssignment(41) == tone && control.getAssignment(40) == nullptr);

    // A taken controller selects its parameter and keeps it.
    control.handleController(cc(30, 5));
    EXPECT_EQ(control.getLearnParameter(), level);
    control.setLearnParameter(decay);
    EXPECT_EQ(control.getLearnController(), -1) << "a free parameter waits for a free controller";
    control.handleController(cc(30, 6));
    EXPECT_EQ(control.getAssignment(30), level) << "a parameter picked first does not take a taken controller";

    // An assigned parameter brings its controller; a row of the map selects both.
    control.setLearnParameter(tone);
    EXPECT_EQ(control.getLearnController(), 41);
    control.selectAssignment(30);
    EXPECT_TRUE(control.getLearnParameter() == level && control.getLearnController() == 30);
    control.removeAssignment(30);
    EXPECT_TRUE(control.getLearnParameter() == nullptr && control.getLearnController() == -1) << "removing in learn mode forgets both picks";

    control.setLearnController(12);
    control.setLearnMode(false);
    EXPECT_EQ(control.getLearnController(), -1) << "leaving learn mode forgets the picks";
    control.handleController(cc(13, 0));
    EXPECT_EQ(control.getLearnController(), -1) << "no learning outside learn mode";
    pump();
}

TEST_F(ParametersMidiControl, LoadsOnlyAutomatableRowsOfItsOwnMapsAndOlderOnesByShortNames)
{
    const auto map = juce::parseXML(R"(<MidiControlMap name="Quindrel">
        <assign CC="1" param="Bass Drum Level"/>
        <assign CC="2" param="Bass Drum Output Number"/>
        <assign CC="3" param="Internal Sequencer State"/>
        <assign CC="128" param="Bass Drum Tone"/>
        <assign CC="4" param="No Such Knob"/>
        <assign param="Accent Rand Threshold"/>
        <other CC="5" param="Claves Decay"/></MidiControlMap>)");
    control.assign(60, param("Claves Tunning"), false);
    control.setLearnMode(true);
    control.loadMap(*map);
    EXPECT_FALSE(control.isLearnMode());
    EXPECT_EQ(control.getAssignmentCount(), 2);
    EXPECT_EQ(control.createMapXml()->toString(), R"(<?xml version="1.0" encoding="UTF-8"?>)"
                                                  "\r\n\r\n<MidiControlMap name=\"Quindrel\">\r\n"
                                                  "  <assign CC=\"0\" param=\"Accent Rand Threshold\"/>\r\n"
                                                  "  <assign CC=\"1\" param=\"Bass Drum Level\"/>\r\n</MidiControlMap>\r\n");

    EXPECT_TRUE(control.canLoadMap(*juce::parseXML(R"(<MidiCCMap application="Quindrel"/>)")) && !control.canLoadMap(*juce::parseXML(R"(<MidiControlMap name="Other"/>)")));
    control.loadMap(*juce::parseXML(R"(<MidiControlMap name="Other"><assign CC="9" param="Bass Drum Level"/></MidiControlMap>)"));
    EXPECT_EQ(control.getAssignmentCount(), 0) << "loadMap empties the map even when it can read nothing";

    // The older form names parameters by their short names.
    const OldParameterNames old;
    const auto translate = [&old](const juce::String& n)
    { return old.getParameterName(n); };
    const auto older = juce::parseXML(R"(<MidiCCMap>
        <assign CC="10" param="BD Level"/><assign CC="11" param="HH Filters Freq"/>
        <assign CC="12" param="Main Volume"/><assign CC="13" param="Bass Drum Tone"/></MidiCCMap>)");

    ASSERT_TRUE(MidiControl::isOlderMapXml(*older));
    control.loadOlderMap(*older, translate);
    EXPECT_TRUE(control.getAssignment(10) == param("Bass Drum Level") && control.getAssignment(11) == param("Hi Hat Filters Freq"));
    EXPECT_EQ(control.getAssignmentCount(), 2) << "an old volume and a today's name are dropped";

    control.loadOlderMap(*juce::parseXML(R"(<MidiCCMap application="Quindrel"><assign CC="1" param="BD Level"/></MidiCCMap>)"), translate);
    EXPECT_EQ(control.getAssignmentCount(), 0) << "a map with an application is not the older form";
}

TEST_F(ParametersMidiControl, SaveLoadSaveIsByteIdentical)
{
    EXPECT_TRUE(MidiControl::getMapExtension("QD") == ".qdccmap" && MidiControl::getLoadWildcard("QD", { ".qcc" }) == "*.qdccmap; *.qcc");

    control.assign(74, param("Laser Gun Sweep"), false);
    control.assign(0, param("Hand Clap Mute"), false);
    control.assign(127, param("Low Conga Solo"), false);
    juce::TemporaryFile first(".qdccmap"), second(".qdccmap");
    MidiControl other(manager);
    other.setApplicationName("Quindrel");
    ASSERT_TRUE(control.saveToFile(first.getFile()) && other.loadFromFile(first.getFile()) && other.saveToFile(second.getFile()));
    EXPECT_TRUE(first.getFile().hasIdenticalContentTo(second.getFile())) << first.getFile().loadFileAsString();
    EXPECT_TRUE(first.getFile().loadFileAsString().contains("encoding=\"UTF-8\""));

    // A file that is no map of ours changes nothing.
    second.getFile().replaceWithText("<PresetBank/>");
    EXPECT_FALSE(other.loadFromFile(second.getFile()));
    EXPECT_EQ(other.getAssignmentCount(), 3);
}

TEST_F(ParametersMidiControl, CoalescedOnTheMessageThreadInOrder)
{
    Recorder recorder;
    control.addListener(&recorder);
    auto* decay = param("Rim Shot Decay");

    control.setLearnMode(true);
    EXPECT_EQ(recorder.calls, juce::StringArray("learn")) << "a change of learn mode is told at once";
    recorder.calls.clear();

    control.setLearnParameter(decay);
    control.handleController(cc(21, 3)); // learn, map, moved
    control.handleController(cc(21, 4));
    control.assign(22, param("Rim Shot Tunning"), true);
    EXPECT_TRUE(recorder.calls.isEmpty()) << "nothing before the message loop runs";
    pump();
    EXPECT_EQ(recorder.calls, juce::StringArray("map", "learn", "moved Rim Shot Decay"));

    recorder.calls.clear();
    control.assign(23, param("Rim Shot Level"), false);
    control.removeAssignment(99);
    pump();
    EXPECT_TRUE(recorder.calls.isEmpty()) << "changes without notification stay quiet";
    control.removeListener(&recorder);
}
