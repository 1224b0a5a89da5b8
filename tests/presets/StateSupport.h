#pragma once

// Instances and states for the tests of the plug-in state.

#include "plugin/PluginTestHost.h"

#include "parameters/ParameterIds.h"
#include "sequencer/QuindrelSeq.h"

#include <gtest/gtest.h>

namespace StateSupport
{
inline juce::MemoryBlock stateOf(Quindrel& plugin)
{
    juce::MemoryBlock block;
    plugin.getStateInformation(block);
    return block;
}

// The XML of a block, one element a line, so that a failed comparison shows where.
inline std::string textOf(const juce::MemoryBlock& block)
{
    const auto xml = juce::AudioProcessor::getXmlFromBinary(block.getData(), (int) block.getSize());
    return xml != nullptr ? xml->toString().toStdString() : std::string();
}

inline juce::MemoryBlock blockOf(const juce::XmlElement& xml)
{
    juce::MemoryBlock block;
    juce::AudioProcessor::copyXmlToBinary(xml, block);
    return block;
}

inline juce::MemoryBlock blockOf(const juce::String& xmlText)
{
    auto xml = juce::parseXML(xmlText);
    EXPECT_NE(xml, nullptr) << xmlText;
    return xml != nullptr ? blockOf(*xml) : juce::MemoryBlock();
}

inline void restore(Quindrel& plugin, const juce::MemoryBlock& block)
{
    plugin.setStateInformation(block.getData(), (int) block.getSize());
}

// Everything a song might have changed: knobs, the kit and the bank, modes,
// routing, a pattern, the edited selection, the control map, the drum map and
// the native run's choices.
inline void makeBusy(Quindrel& plugin)
{
    auto& parameters = plugin.getParameterManager();
    plugin.selectAndApplyPreset(4);
    parameters.setNormalised(19, 0.8125f);                      // Bass Drum Decay, not stored
    parameters.setNormalised(ParameterIds::mainVolume, 0.375f); // outside presets
    parameters.setBool(ParameterIds::mute + 3, true);
    parameters.setNormalised(ParameterIds::randThreshold + 2, 0.625f);
    plugin.renamePreset(9, "Song Kit");
    plugin.renameGroup(0, "Band");

    plugin.setInstrumentOutput(1, 3);
    plugin.setInstrumentOutput(16, 12);
    plugin.setTriggerOut(true, 11);

    auto* seq = plugin.getQuindrelSeq();
    auto& host = seq->getHostPatternAt(7);
    host.setName("Verse \"A\" & <B>");
    host.setTrackString(0, "O.o.O.o.O.o.O.oo");
    host.setTempo(97.5);
    host.setScale(3);
    auto& part = seq->getNativePatternAt(2).getVariation(1).getPart(1);
    part.setLength(12);
    part.setTrackString(16, "oooooooooooo");

    parameters.setNormalised(ParameterIds::autoFillIn, 0.6f); // every 8 passes
    parameters.setNormalised(ParameterIds::basicVariationMode, 0.5f);
    parameters.setNormalised(ParameterIds::introFillInVariationMode, 1.0f);
    seq->setBasicPattern(5);
    seq->setFillPattern(14);
    seq->setStartType(QuindrelSeq::startWithFillIn);

    plugin.internalSync = false;
    plugin.noteOffMode = true;
    plugin.setHostMode(true);
    // Chosen after host mode, whose switch makes the edited pattern follow the
    // one that plays. (The native one follows the start pattern while stopped.)
    seq->setEditedHostPattern(7);
    plugin.getMidiControl().assign(21, parameters.getParameter("Cymbal Tone"), true);
    plugin.loadDrumMap(*juce::parseXML("<DrumMap application=\"Quindrel\" ver=\"1.1\" name=\"Mine\">"
                                       "<assign midiKey=\"40\" instrument=\"CB\"/><assign midiKey=\"41\" instrument=\"BD\"/></DrumMap>"));
}
} // namespace StateSupport
