// Quindrel's parts of the plug-in state: the native run's selection and
// modes (QDState), and the older state "QuindrelBank", which is still read.

#include "plugin/Quindrel.h"

#include "parameters/ParameterIds.h"
#include "sequencer/QuindrelSeq.h"

namespace
{
const char* const variationWords[] = { "A", "B", "AB" };

// Only a whole number in digits counts; anything else is no selection.
bool readNumber(const juce::String& text, int& number)
{
    if (text.isEmpty() || !text.containsOnly("0123456789") || text.length() > 6)
        return false;
    number = text.getIntValue();
    return true;
}
} // namespace

std::unique_ptr<juce::XmlElement> Quindrel::createStateXml()
{
    auto xml = DrumMachine::createStateXml();
    if (auto* seq = getQuindrelSeq())
    {
        auto state = std::make_unique<juce::XmlElement>("QDState");
        auto add = [&state](const char* tag, const juce::String& value)
        { state->createNewChildElement(tag)->setAttribute("value", value); };

        const int autoFill = seq->getAutoFill();
        add("AutoFillIn", autoFill == 0 ? juce::String("manual") : juce::String(autoFill));
        add("BasicVariation", variationWords[juce::jlimit(0, 2, seq->getBasicVariationMode())]);
        add("IntroFillInVariation", variationWords[juce::jlimit(0, 1, seq->getFillVariationMode())]);
        add("BasicPattern", juce::String(seq->getBasicPattern()));
        add("IntroFillInPattern", juce::String(seq->getFillPattern()));
        add("StartPatternType", seq->getStartType() == QuindrelSeq::startWithFillIn ? "fillIn" : "basic");
        xml->insertChildElement(state.release(), 0);
    }
    return xml;
}

void Quindrel::loadState(const juce::XmlElement& xml)
{
    if (xml.hasTagName("QuindrelBank"))
    {
        loadOldState(xml);
        return;
    }

    DrumMachine::loadState(xml);
    if (!canLoadState(xml))
        return;

    for (auto* child : xml.getChildIterator())
        if (child->hasTagName("QDState"))
            loadQDState(*child);

    // The panel shows what came back.
    updatePatternDisplays();
}

void Quindrel::loadQDState(const juce::XmlElement& xml)
{
    auto* seq = getQuindrelSeq();
    if (seq == nullptr)
        return;

    for (auto* child : xml.getChildIterator())
    {
        if (!child->hasAttribute("value"))
            continue;
        const auto value = child->getStringAttribute("value");
        int number = -1;

        // The three modes go through their parameters, so that the panel follows.
        if (child->hasTagName("AutoFillIn"))
        {
            // "manual", and any count that is not one of the switch's, is 0.
            const int passes = value.getIntValue();
            const auto* position = std::find(QuindrelSeq::autoFillByPosition.begin(), QuindrelSeq::autoFillByPosition.end(), passes);
            const int index = position == QuindrelSeq::autoFillByPosition.end() ? 0 : (int) (position - QuindrelSeq::autoFillByPosition.begin());
            parameterManager.setNormalised(ParameterIds::autoFillIn, (float) index / 5.0f);
        }
        else if (child->hasTagName("BasicVariation"))
        {
            if (value == "A" || value == "B" || value == "AB")
                parameterManager.setNormalised(ParameterIds::basicVariationMode, value == "A" ? 0.0f : value == "B" ? 1.0f
                                                                                                                    : 0.5f);
        }
        else if (child->hasTagName("IntroFillInVariation"))
        {
            if (value == "A" || value == "B")
                parameterManager.setNormalised(ParameterIds::introFillInVariationMode, value == "A" ? 0.0f : 1.0f);
        }
        else if (child->hasTagName("BasicPattern"))
        {
            if (readNumber(value, number))
                seq->setBasicPattern(number);
        }
        else if (child->hasTagName("IntroFillInPattern"))
        {
            if (readNumber(value, number))
                seq->setFillPattern(number);
        }
        else if (child->hasTagName("StartPatternType"))
        {
            if (value == "basic" || value == "fillIn")
                seq->setStartType(value == "basic" ? QuindrelSeq::startWithBasic : QuindrelSeq::startWithFillIn);
        }
    }
}

void Quindrel::loadOldState(const juce::XmlElement& xml)
{
    // The first test that holds decides what a child is.
    for (auto* child : xml.getChildIterator())
    {
        if (isPresetBankXml(*child))
            loadBankXml(*child);
        else if (midiControl->isMapXml(*child))
            loadMidiMap(*child);
        else if (isNotPresetXml(*child))
            loadNotPresetXml(*child);
        else if (sequencer->isBankElement(*child, DrumMachineSeq::hostType))
            sequencer->readBank(*child, DrumMachineSeq::hostType);
        else if (sequencer->isBankElement(*child, DrumMachineSeq::nativeType))
            sequencer->readBank(*child, DrumMachineSeq::nativeType);
    }

    // Unlike the newer state, the older one applies its preset.
    if (getCurrentPreset() < numPresets)
        applyCurrentPreset();
    updatePatternDisplays();
}
