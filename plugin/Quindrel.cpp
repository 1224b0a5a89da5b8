#include "plugin/Quindrel.h"

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

std::unique_ptr<Quindrel> Quindrel::createInstance(const PluginPaths& paths, std::optional<int> outputType)
{
    auto plugin = std::make_unique<Quindrel>(paths, outputType);
    plugin->initialise();
    plugin->getParameterManager().sendAllChanges();
    return plugin;
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
        seq->setAutoFill(QuindrelSeq::autoFillByPosition[(size_t)juce::jlimit(0, 5, (int)std::floor(value * 5 + 0.5))]);
    else if (id == ParameterIds::basicVariationMode)
        seq->setBasicVariationMode(QuindrelSeq::basicVariationByPosition[(size_t)juce::jlimit(0, 2, (int)std::floor(value * 2 + 0.5))]);
    else
        seq->setFillVariationMode(juce::jlimit(0, 1, (int)std::floor(value + 0.5)));
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
