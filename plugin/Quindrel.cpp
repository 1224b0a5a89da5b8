#include "plugin/Quindrel.h"

#include "editor/QuindrelEditor.h"
#include "engine/QuindrelCore.h"
#include "parameters/ParameterIds.h"
#include "sequencer/QuindrelSeq.h"

#include <cmath>

Quindrel::Quindrel(const PluginPaths& paths, std::optional<int> outputType)
    : DrumMachine(paths, outputCount, outputType.value_or(readStoredOutputType(paths.settingsFile)), "QD")
    , oldNames(std::make_unique<OldParameterNames>())
{
}

Quindrel::~Quindrel()
{
    writeUserSettingsFile();
    goingAway = true;
    oldNames.reset();
}

std::unique_ptr<DrumMachineCore> Quindrel::createCore()
{
    return std::make_unique<QuindrelCore>(this);
}

std::unique_ptr<DrumMachineSeq> Quindrel::createSequencer()
{
    return std::make_unique<QuindrelSeq>(this, getCore());
}

void Quindrel::parameterChanged(Parameter& parameter)
{
    // The three switches of the native run belong to the sequencer alone:
    // the engine and the host never hear of them.
    const int id = parameter.getId();
    if (id < ParameterIds::autoFillIn || id > ParameterIds::introFillInVariationMode)
    {
        DrumMachine::parameterChanged(parameter);
        return;
    }

    auto* seq = dynamic_cast<QuindrelSeq*>(getSequencer());
    if (seq == nullptr)
        return;

    const double value = parameter.getNormalised();
    if (id == ParameterIds::autoFillIn)
        seq->setAutoFill(QuindrelSeq::autoFillByPosition[(size_t) juce::jlimit(0, 5, (int) std::floor(value * 5 + 0.5))]);
    else if (id == ParameterIds::basicVariationMode)
        seq->setBasicVariationMode(QuindrelSeq::basicVariationByPosition[(size_t) juce::jlimit(0, 2, (int) std::floor(value * 2 + 0.5))]);
    else
        seq->setFillVariationMode(juce::jlimit(0, 1, (int) std::floor(value + 0.5)));
}

void Quindrel::loadMidiMap(const juce::XmlElement& xml)
{
    midiControl->loadOlderMap(xml, [this](const juce::String& oldName)
                              { return oldNames->getParameterName(oldName); });
}

//==============================================================================
juce::String Quindrel::translateOldName(const juce::String& shortName) const
{
    return oldNames != nullptr ? oldNames->getParameterName(shortName) : juce::String();
}

void Quindrel::loadNotPresetXml(const juce::XmlElement& xml)
{
    // Short names first; then the names as they stand, which is how "Main Volume" gets through.
    if (xml.hasTagName("NotPresetParams"))
        readNotPresetParams(xml, [this](const juce::String& name)
                            { return translateOldName(name); });

    DrumMachine::loadNotPresetXml(xml);
}

bool Quindrel::isPresetXml(const juce::XmlElement& xml) const
{
    return xml.hasTagName("QuindrelPreset") || DrumMachine::isPresetXml(xml);
}

void Quindrel::loadPreset(const juce::XmlElement& xml, Preset& preset)
{
    if (xml.hasTagName("QuindrelPreset"))
        readPresetParams(xml, preset, [this](const juce::String& name)
                         { return translateOldName(name); });
    else
        DrumMachine::loadPreset(xml, preset);
}

bool Quindrel::isPresetBankXml(const juce::XmlElement& xml) const
{
    return xml.hasTagName("QuindrelPresetBank") || DrumMachine::isPresetBankXml(xml);
}

void Quindrel::loadBankXml(const juce::XmlElement& xml)
{
    if (!xml.hasTagName("QuindrelPresetBank"))
    {
        DrumMachine::loadBankXml(xml);
        return;
    }

    // The older bank has no groups: its presets make one group "All presets".
    juce::XmlElement rewritten(xml);
    auto* group = new juce::XmlElement("PresetGroup");
    group->setAttribute("name", "All presets");
    while (auto* child = rewritten.getFirstChildElement())
    {
        rewritten.removeChildElement(child, false);
        group->addChildElement(child);
    }
    rewritten.addChildElement(group);
    DrumMachine::loadBankXml(rewritten);
}

std::unique_ptr<BasePluginEditor> Quindrel::createPluginEditor()
{
    return std::make_unique<QuindrelEditor>(this);
}

QuindrelSeq* Quindrel::getQuindrelSeq() const
{
    return dynamic_cast<QuindrelSeq*>(getSequencer());
}

void Quindrel::handleEvent(int uid)
{
    constexpr int selectVariationA = 104, selectPart2 = 107, tapIntroFillAccept = 108;
    constexpr int tap = 3013, accept = 3021, clear = 3026, pressStep = 3030;

    auto* seq = getQuindrelSeq();
    if (seq == nullptr)
    {
        DrumMachine::handleEvent(uid);
        return;
    }

    const bool intSeq = internalSequencer;
    const bool editing = isEditing();

    if (uid >= selectVariationA && uid <= selectPart2)
    {
        // Chosen by hand only while the edited pattern does not follow what plays.
        if (!editing || hostMode || (autoFollow && !lengthMode) || hasRandomResult())
            return;
        if (uid < selectVariationA + 2)
            seq->setEditedVariation(uid - selectVariationA);
        else
            seq->setEditedPart(uid - selectVariationA - 2);
        updatePatternDisplays();
    }
    else if (uid == tapIntroFillAccept)
    {
        if (hasRandomResult())
            DrumMachine::handleEvent(accept);
        else if (editing)
            DrumMachine::handleEvent(tap);
        else if (intSeq && !hostMode)
        {
            seq->introOrFillIn();
            updatePatternDisplays();
        }
    }
    else if (uid >= pressStep && uid < pressStep + 16 && intSeq && !editing)
    {
        // In native play mode the step buttons choose the patterns.
        seq->choosePattern(uid - pressStep);
    }
    else
    {
        // "Clear" in length mode removes the second part of the edited variation.
        if (uid == clear && editing && lengthMode && !hostMode && seq->getEditedPart() == 1)
        {
            seq->setEditedLength(0);
            updatePatternDisplays();
        }
        DrumMachine::handleEvent(uid);
    }
}

void Quindrel::updatePatternDisplays()
{
    if (auto* seq = getQuindrelSeq())
    {
        using namespace ParameterIds;
        const bool intSeq = internalSequencer;
        const bool editing = isEditing();
        const bool nativeWrite = intSeq && writeMode && !hostMode;
        const bool nativeRuns = intSeq && !hostMode && nativeClock.running && seq->nativePlaying;
        const bool basic = seq->getNativePattern() < QuindrelSeq::basicPatternCount;

        parameterManager.setBool(variationAEditionState, nativeWrite && seq->getEditedVariation() == 0);
        parameterManager.setBool(variationBEditionState, nativeWrite && seq->getEditedVariation() == 1);
        parameterManager.setBool(part1EditionState, nativeWrite && seq->getEditedPart() == 0);
        parameterManager.setBool(part2EditionState, nativeWrite && seq->getEditedPart() == 1);
        parameterManager.setBool(variationAPlayingState, nativeRuns && basic && seq->getNativeVariation() == 0);
        parameterManager.setBool(variationBPlayingState, nativeRuns && basic && seq->getNativeVariation() == 1);
        parameterManager.setBool(part1PlayingState, nativeRuns && seq->getNativePart() == 0);
        parameterManager.setBool(part2PlayingState, nativeRuns && seq->getNativePart() == 1);
        parameterManager.setBool(lengthModeStateWithoutClear, editing && lengthMode && (hostMode || seq->getEditedPart() == 0));
        parameterManager.setBool(lengthModeStateWithClear, editing && lengthMode && !hostMode && seq->getEditedPart() == 1);
    }

    DrumMachine::updatePatternDisplays();
}

bool Quindrel::canLoadState(const juce::XmlElement& xml) const
{
    return DrumMachine::canLoadState(xml) || xml.hasTagName("QuindrelBank");
}

//==============================================================================
// The entry point of every plug-in format and of the standalone application.
juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter()
{
    return Quindrel::createInstance(PluginPaths::forLoadedModule("Quindrel")).release();
}
