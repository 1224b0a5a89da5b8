#include "plugin/BasePluginOldStyle.h"

#include "parameters/ParameterIds.h"
#include "parameters/StateParameters.h"
#include "presets/ValueText.h"
#include "presets/XmlFiles.h"

namespace
{
constexpr int selectNextPresetEvent = 1002, selectPreviousPresetEvent = 1003;
constexpr int copyCurrentPresetEvent = 1007, pastePresetEvent = 1008, storeCurrentPresetEvent = 1009;

const char* const presetsResourceWords[] = { "factoryPresets", "clearPresets", "userDefinedPresets" };

juce::String sameName(const juce::String& name)
{
    return name;
}
} // namespace

BasePluginOldStyle::BasePluginOldStyle(const BusesProperties& buses, const PluginPaths& paths)
    : BasePlugin(buses, paths)
    , lastDirectory(juce::File::getSpecialLocation(juce::File::userHomeDirectory))
{
    addPresetParameters(parameterManager);

    // Looked up once: a program change applies a preset on the audio thread.
    for (int id = 0; id < numPresetParameters; ++id)
        presetParameters[(size_t) id] = parameterManager.getParameter(id);
    presetNumberParameter = parameterManager.getParameter(ParameterIds::currentPresetNumber);
    presetNameParameter = parameterManager.getParameter(ParameterIds::currentPresetName);
}

void BasePluginOldStyle::initialise()
{
    createHostParameters();

    midiControl->setApplicationName(getPluginName());
    parameterManager.addListenerToAll(this);
    readUserSettingsFile();
    midiControl->loadDefaultMapIfAsked();
    afterInitialise();
    loadPresetsAtStart();
}

void BasePluginOldStyle::loadPresetsAtStart()
{
    // "default.QDPRS" and "default.QDPRSB".
    const auto type = getPluginShortName().toUpperCase();
    if (auto xml = juce::parseXML(loadResourceText("default." + type + "PRS")))
        loadPreset(*xml, defaultPreset);

    const juce::File userBank(juce::File::isAbsolutePath(presetsResourceFile) ? juce::File(presetsResourceFile) : juce::File());

    if (presetsResourceKind == clearPresets)
        clearBank();
    else if (presetsResourceKind == userDefinedPresets && userBank.existsAsFile())
        loadBankFile(userBank);
    else if (auto xml = juce::parseXML(loadResourceText("default." + type + "PRSB")))
        loadBankXml(*xml);

    if (currentPreset < (juce::uint32) numPresets)
        applyCurrentPreset();

    // What is not in a preset reaches the engine too.
    for (int id = numPresetParameters; id < numPresetParameters + numNotPresetParameters; ++id)
        if (auto* parameter = parameterManager.getParameter(id))
            parameter->notifyChange();
}

//==============================================================================
void BasePluginOldStyle::loadUserSettings(const juce::XmlElement& xml)
{
    if (!canLoadUserSettings(xml))
        return;

    for (auto* child : xml.getChildIterator())
    {
        if (child->hasTagName("PluginDirectories"))
        {
            if (auto* recent = child->getChildByName("RecentlyUsed"))
            {
                const auto path = recent->getStringAttribute("dir");
                if (juce::File::isAbsolutePath(path))
                    setLastDirectory(juce::File(path));
            }
        }
        else if (child->hasTagName("ResourcesSettings"))
        {
            loadResourcesSettings(*child);
        }
        else if (child->hasTagName("PresetSettings"))
        {
            const auto storing = child->getStringAttribute("storing");
            if (hasPresetStoringOption() && (storing == "automatic" || storing == "onDemand"))
                setPresetStoring(storing == "automatic" ? automatic : onDemand);

            const auto changing = child->getStringAttribute("changing");
            if (hasPresetChangingOption() && (changing == "normal" || changing == "silent"))
                setPresetChanging(changing == "silent" ? silent : normal);
        }
    }
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createUserSettings()
{
    auto xml = std::make_unique<juce::XmlElement>("UserSettings");
    xml->setAttribute("application", getPluginName());

    auto* directories = xml->createNewChildElement("PluginDirectories");
    directories->createNewChildElement("RecentlyUsed")->setAttribute("dir", lastDirectory.getFullPathName());

    if (auto resources = createResourcesSettings())
        xml->addChildElement(resources.release());

    auto* presetSettings = xml->createNewChildElement("PresetSettings");
    if (hasPresetStoringOption())
        presetSettings->setAttribute("storing", presetStoring == automatic ? "automatic" : "onDemand");
    if (hasPresetChangingOption())
        presetSettings->setAttribute("changing", presetChanging == silent ? "silent" : "normal");

    return xml;
}

void BasePluginOldStyle::loadResourcesSettings(const juce::XmlElement& xml)
{
    if (!xml.hasTagName("ResourcesSettings"))
        return;

    if (auto* presets = xml.getChildByName("Presets"))
    {
        const auto word = presets->getStringAttribute("default");
        for (int kind = factoryPresets; kind <= userDefinedPresets; ++kind)
            if (word == presetsResourceWords[kind])
                setPresetsResource(kind, presets->getStringAttribute("file"));
    }

    if (auto* map = xml.getChildByName("MidiCCMap"))
    {
        const auto word = map->getStringAttribute("default");
        if (word == "noMapping")
        {
            midiControl->setLoadDefaultMap(false);
        }
        else if (word == "userDefinedMidiCCMap")
        {
            midiControl->setLoadDefaultMap(true);
            midiControl->setDefaultMapFile(juce::File(map->getStringAttribute("file")).getFullPathName());
        }
    }
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createResourcesSettings()
{
    auto xml = std::make_unique<juce::XmlElement>("ResourcesSettings");

    auto* presets = xml->createNewChildElement("Presets");
    presets->setAttribute("default", presetsResourceWords[juce::jlimit(0, 2, presetsResourceKind)]);
    if (presetsResourceKind == userDefinedPresets)
        presets->setAttribute("file", presetsResourceFile);

    auto* map = xml->createNewChildElement("MidiCCMap");
    map->setAttribute("default", midiControl->getLoadDefaultMap() ? "userDefinedMidiCCMap" : "noMapping");
    if (midiControl->getLoadDefaultMap())
        map->setAttribute("file", midiControl->getDefaultMapFile());

    return xml;
}

void BasePluginOldStyle::setPresetsResource(int kind, const juce::String& file)
{
    if (kind < factoryPresets || kind > userDefinedPresets)
        return;

    presetsResourceKind = kind;
    if (kind == userDefinedPresets)
        presetsResourceFile = file.isEmpty() ? juce::String() : juce::File(file).getFullPathName();
}

void BasePluginOldStyle::setLastDirectory(const juce::File& directory)
{
    if (directory.isDirectory())
        lastDirectory = directory;
}

//==============================================================================
void BasePluginOldStyle::handleEvent(int uid)
{
    switch (uid)
    {
        case selectNextPresetEvent:
            selectNextPreset();
            break;
        case selectPreviousPresetEvent:
            selectPreviousPreset();
            break;
        case copyCurrentPresetEvent:
            copyCurrentPreset();
            break;
        case pastePresetEvent:
            pasteCopiedPreset();
            break;
        case storeCurrentPresetEvent:
            storeCurrentPreset();
            break;
        default:
            BasePlugin::handleEvent(uid);
            break;
    }
}

void BasePluginOldStyle::parameterChanged(Parameter& parameter)
{
    const int id = parameter.getId();

    if (id == ParameterIds::currentPresetName)
    {
        renamePreset(getCurrentPreset(), parameter.getText());
    }
    else if (presetStoring == automatic && id >= 0 && id < numPresetParameters)
    {
        if (auto* preset = bank.getPreset(getCurrentPreset()))
            preset->setValue(id, (float) parameter.getNormalised());
    }

    BasePlugin::parameterChanged(parameter);
}

//==============================================================================
float BasePluginOldStyle::getPresetValue(int number, int index) const
{
    auto* preset = bank.getPreset(number);
    return preset != nullptr ? preset->getValue(index) : 0.0f;
}

void BasePluginOldStyle::applyCurrentPreset()
{
    const int number = getCurrentPreset();
    auto* preset = bank.getPreset(number);
    if (preset == nullptr)
        return;

    for (int id = 0; id < numPresetParameters; ++id)
        if (auto* parameter = presetParameters[(size_t) id])
            parameter->setNormalised(preset->getValue(id), true);

    presetNumberParameter->setInt(number, true);
    presetNameParameter->setText(preset->getName(), true);

    for (int i = presetListeners.size(); --i >= 0;)
        if (auto* listener = presetListeners[juce::jmin(i, presetListeners.size() - 1)])
            listener->presetLoaded();
}

void BasePluginOldStyle::selectPreset(int number, bool notify)
{
    if (!juce::isPositiveAndBelow(number, numPresets))
        return;

    currentPreset = (juce::uint32) number;
    presetNumberParameter->setInt(number, notify);
    presetNameParameter->setText(bank.getPresetName(number), notify);
}

void BasePluginOldStyle::selectNextPreset()
{
    // Unsigned, so that neither end wraps: past 127 or below 0 is no preset.
    const juce::uint32 next = currentPreset + 1;
    if (next < (juce::uint32) numPresets)
        selectAndApplyPreset((int) next);
}

void BasePluginOldStyle::selectPreviousPreset()
{
    const juce::uint32 previous = currentPreset - 1;
    if (previous < (juce::uint32) numPresets)
        selectAndApplyPreset((int) previous);
}

void BasePluginOldStyle::selectAndApplyPreset(int number)
{
    if (!juce::isPositiveAndBelow(number, numPresets))
        return;

    currentPreset = (juce::uint32) number;
    changeToCurrentPreset();
}

void BasePluginOldStyle::changeToCurrentPreset()
{
    if (presetChanging == silent && silentChangeListener != nullptr)
        silentChangeListener->presetLoaded();
    else
        applyCurrentPreset();
}

void BasePluginOldStyle::renamePreset(int number, const juce::String& name)
{
    auto* preset = bank.getPreset(number);
    if (preset == nullptr)
        return;

    preset->setName(name);
    if (number == getCurrentPreset())
        presetNameParameter->setText(name, true);
}

void BasePluginOldStyle::storeCurrentPreset()
{
    if (auto* preset = bank.getPreset(getCurrentPreset()))
        for (int id = 0; id < numPresetParameters; ++id)
            preset->setValue(id, (float) parameterManager.getNormalised(id));
}

void BasePluginOldStyle::setPresetStoring(int kind)
{
    presetStoring = kind == automatic ? automatic : onDemand;
    if (presetStoring == automatic)
        storeCurrentPreset();
}

void BasePluginOldStyle::copyCurrentPreset()
{
    // The live sound, not what the preset stored.
    clipboardPreset.setName(getPresetName(getCurrentPreset()) + "_copy");
    for (int id = 0; id < numPresetParameters; ++id)
        clipboardPreset.setValue(id, (float) parameterManager.getNormalised(id));
    clipboardFull = true;
}

void BasePluginOldStyle::pasteCopiedPreset()
{
    if (!clipboardFull)
        return;

    for (int id = 0; id < numPresetParameters; ++id)
        parameterManager.setNormalised(id, clipboardPreset.getValue(id));

    if (auto* preset = bank.getPreset(getCurrentPreset()))
        preset->setName(clipboardPreset.getName());
    storeCurrentPreset();
    applyCurrentPreset();
}

//==============================================================================
int BasePluginOldStyle::currentPresetNumberAfterMove(const Preset* remembered)
{
    return bank.indexOf(remembered);
}

void BasePluginOldStyle::movePreset(int fromGroup, int toGroup, int from, int to)
{
    const auto* remembered = bank.getPreset(getCurrentPreset());
    if (bank.movePreset(fromGroup, toGroup, from, to))
        selectPreset(currentPresetNumberAfterMove(remembered), false);
}

void BasePluginOldStyle::movePresets(int toGroup, int fromGroup, const juce::SparseSet<int>& selection)
{
    const auto* remembered = bank.getPreset(getCurrentPreset());
    if (bank.movePresets(toGroup, fromGroup, selection))
        selectPreset(currentPresetNumberAfterMove(remembered), false);
}

void BasePluginOldStyle::moveGroup(int from, int to)
{
    const auto* remembered = bank.getPreset(getCurrentPreset());
    if (bank.moveGroup(from, to))
        selectPreset(currentPresetNumberAfterMove(remembered), false);
}

void BasePluginOldStyle::clearBank()
{
    bank.clear(defaultPreset);
}

//==============================================================================
bool BasePluginOldStyle::isNotPresetXml(const juce::XmlElement& xml) const
{
    return xml.hasTagName("NotPresetableParams") || xml.hasTagName("NotPresetParams");
}

void BasePluginOldStyle::readNotPresetParams(const juce::XmlElement& xml, const std::function<juce::String(const juce::String&)>& translateName)
{
    for (auto* param : xml.getChildWithTagNameIterator("param"))
        if (auto* parameter = parameterManager.getParameter(translateName(param->getStringAttribute("name"))))
            parameter->setNormalised((float) param->getDoubleAttribute("value", 0.0), true);
}

void BasePluginOldStyle::loadNotPresetXml(const juce::XmlElement& xml)
{
    if (isNotPresetXml(xml))
        readNotPresetParams(xml, sameName);
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createNotPresetXml()
{
    auto xml = std::make_unique<juce::XmlElement>("NotPresetableParams");
    for (int id = numPresetParameters; id < numPresetParameters + numNotPresetParameters; ++id)
    {
        auto* param = xml->createNewChildElement("param");
        param->setAttribute("name", parameterManager.getName(id));
        param->setAttribute("value", parameterManager.getValue(id));
    }
    return xml;
}

bool BasePluginOldStyle::isPresetXml(const juce::XmlElement& xml) const
{
    return xml.hasTagName("Preset") && xml.getStringAttribute("application") == getPluginName();
}

void BasePluginOldStyle::loadPresetAt(const juce::XmlElement& xml, int number)
{
    if (auto* preset = bank.getPreset(number))
        loadPreset(xml, *preset);
}

void BasePluginOldStyle::readPresetParams(const juce::XmlElement& xml, Preset& preset, const std::function<juce::String(const juce::String&)>& translateName)
{
    preset.setName(xml.getStringAttribute("name", "unnamed"));

    // A parameter the file does not name keeps its value: presets can be read piecemeal.
    for (auto* param : xml.getChildWithTagNameIterator("param"))
    {
        const auto* parameter = parameterManager.getParameter(translateName(param->getStringAttribute("name")));
        if (parameter != nullptr && parameter->getId() >= 0 && parameter->getId() < numPresetParameters)
            preset.setValue(parameter->getId(), (float) param->getDoubleAttribute("value", 0.0));
    }
}

void BasePluginOldStyle::loadPreset(const juce::XmlElement& xml, Preset& preset)
{
    if (isPresetXml(xml))
        readPresetParams(xml, preset, sameName);
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createPresetXmlAt(int number)
{
    if (auto* preset = bank.getPreset(number))
        return createPresetXml(*preset);
    return {};
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createPresetXml(const Preset& preset)
{
    auto xml = std::make_unique<juce::XmlElement>("Preset");
    xml->setAttribute("application", getPluginName());
    xml->setAttribute("name", preset.getName());

    for (int id = 0; id < numPresetParameters; ++id)
    {
        auto* param = xml->createNewChildElement("param");
        param->setAttribute("name", parameterManager.getName(id));
        param->setAttribute("value", ValueText::sixDecimals(preset.getValue(id)));
    }
    return xml;
}

bool BasePluginOldStyle::isPresetGroupXml(const juce::XmlElement& xml) const
{
    return xml.hasTagName("PresetGroup");
}

bool BasePluginOldStyle::isPresetBankXml(const juce::XmlElement& xml) const
{
    return xml.hasTagName("PresetBank");
}

void BasePluginOldStyle::loadBankXml(const juce::XmlElement& xml)
{
    if (!isPresetBankXml(xml))
        return;

    clearBank();
    bank.removeAllGroups();
    bank.setName(xml.getStringAttribute("name", "Preset Bank"));

    int n = 0;
    for (auto* groupXml : xml.getChildIterator())
    {
        if (!isPresetGroupXml(*groupXml))
            continue;

        const int group = bank.getNumGroups();
        bank.appendGroup(groupXml->getStringAttribute("name", "group " + juce::String(group + 1)), 0);

        int count = 0;
        for (auto* presetXml : groupXml->getChildIterator())
        {
            if (n >= numPresets)
                break;
            if (!isPresetXml(*presetXml))
                continue;
            loadPreset(*presetXml, *bank.getPreset(n));
            ++n;
            ++count;
        }
        bank.setGroupCount(group, count);
    }

    // The rest keep the names and values that clearing gave them.
    if (n < numPresets)
        bank.appendGroup("Not used", numPresets - n);
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createBankXml()
{
    auto xml = std::make_unique<juce::XmlElement>("PresetBank");
    xml->setAttribute("name", bank.getName());

    for (int group = 0; group < bank.getNumGroups(); ++group)
    {
        auto* groupXml = xml->createNewChildElement("PresetGroup");
        groupXml->setAttribute("name", bank.getGroupName(group));

        const int start = bank.getGroupStart(group);
        for (int i = 0; i < bank.getGroupCount(group); ++i)
            if (auto presetXml = createPresetXmlAt(start + i))
                groupXml->addChildElement(presetXml.release());
    }
    return xml;
}

//==============================================================================
std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createStateXml()
{
    auto xml = std::make_unique<juce::XmlElement>("PluginState");
    xml->setAttribute("application", getPluginName());

    auto* parameters = xml->createNewChildElement("ParametersState");
    for (int id = 0; id < numPresetParameters + numNotPresetParameters; ++id)
    {
        auto* param = parameters->createNewChildElement("param");
        param->setAttribute("name", parameterManager.getName(id));
        param->setAttribute("value", ValueText::shortest((float) parameterManager.getValue(id)));
    }

    auto* presets = xml->createNewChildElement("PresetsState");
    presets->setAttribute("currentPreset", getCurrentPreset());
    presets->addChildElement(createBankXml().release());

    // The map under the name the state gives it.
    auto map = midiControl->createMapXml();
    map->setTagName("MidiCCMap");
    xml->addChildElement(map.release());
    return xml;
}

void BasePluginOldStyle::loadState(const juce::XmlElement& xml)
{
    if (!canLoadState(xml))
        return;

    for (auto* child : xml.getChildIterator())
    {
        if (child->hasTagName("ParametersState"))
        {
            // Only the host's parameters: a state names no others.
            for (auto* param : child->getChildWithTagNameIterator("param"))
            {
                auto* parameter = parameterManager.getParameter(param->getStringAttribute("name"));
                if (parameter != nullptr && juce::isPositiveAndBelow(parameter->getId(), numPresetParameters + numNotPresetParameters))
                    parameter->setNormalised((float) param->getDoubleAttribute("value", 0.0), true);
            }
        }
        else if (child->hasTagName("PresetsState"))
        {
            for (auto* bankXml : child->getChildIterator())
                if (isPresetBankXml(*bankXml))
                    loadBankXml(*bankXml);

            // The bank comes back selected, not applied: the sound is that of the parameters.
            selectPreset(child->getIntAttribute("currentPreset", 0), true);
        }
        else if (midiControl->isMapXml(*child))
        {
            midiControl->loadMap(*child);
        }
    }
}

//==============================================================================
void BasePluginOldStyle::loadCurrentProgramXml(const juce::XmlElement& xml)
{
    loadPresetAt(xml, getCurrentPreset());
    applyCurrentPreset();
}

std::unique_ptr<juce::XmlElement> BasePluginOldStyle::createCurrentProgramXml()
{
    return createPresetXmlAt(getCurrentPreset());
}

//==============================================================================
void BasePluginOldStyle::remember(const juce::File& file)
{
    setLastDirectory(file.getParentDirectory());
}

bool BasePluginOldStyle::loadPresetFile(const juce::File& file, int number)
{
    remember(file);

    const auto xml = XmlFiles::parse(file);
    if (xml == nullptr || !isPresetXml(*xml) || !juce::isPositiveAndBelow(number, numPresets))
        return false;

    loadPresetAt(*xml, number);
    if (number == getCurrentPreset())
        applyCurrentPreset();
    return true;
}

bool BasePluginOldStyle::savePresetFile(const juce::File& file)
{
    remember(file);
    const auto xml = createPresetXmlAt(getCurrentPreset());
    return xml != nullptr && XmlFiles::write(*xml, file);
}

bool BasePluginOldStyle::loadBankFile(const juce::File& file)
{
    remember(file);

    const auto xml = XmlFiles::parse(file);
    if (xml == nullptr || !isPresetBankXml(*xml))
        return false;

    loadBankXml(*xml);
    // The number stays, which may now be another sound.
    applyCurrentPreset();
    return true;
}

bool BasePluginOldStyle::saveBankFile(const juce::File& file)
{
    remember(file);
    return XmlFiles::write(*createBankXml(), file);
}

juce::String BasePluginOldStyle::getPresetExtension() const
{
    return "." + getPluginShortName().toLowerCase() + "prs";
}

juce::String BasePluginOldStyle::getBankExtension() const
{
    return "." + getPluginShortName().toLowerCase() + "prsb";
}

namespace
{
juce::String joinWildcard(const juce::String& extension, int olderCount, const std::function<juce::String(int)>& older)
{
    auto wildcard = "*" + extension;
    for (int i = 0; i < olderCount; ++i)
        wildcard << "; *" << older(i);
    return wildcard;
}
} // namespace

juce::String BasePluginOldStyle::getPresetLoadWildcard() const
{
    return joinWildcard(getPresetExtension(), getNumOldPresetExtensions(), [this](int i)
                        { return getOldPresetExtension(i); });
}

juce::String BasePluginOldStyle::getBankLoadWildcard() const
{
    return joinWildcard(getBankExtension(), getNumOldBankExtensions(), [this](int i)
                        { return getOldBankExtension(i); });
}

juce::String BasePluginOldStyle::getMidiControlLoadWildcard() const
{
    juce::StringArray older;
    for (int i = 0; i < getNumOldMidiControlExtensions(); ++i)
        older.add(getOldMidiControlExtension(i));
    return MidiControl::getLoadWildcard(getPluginShortName(), older);
}
