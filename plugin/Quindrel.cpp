#include "plugin/Quindrel.h"

#include "engine/QuindrelCore.h"

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
    return {};
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
