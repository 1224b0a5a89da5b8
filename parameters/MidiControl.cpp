#include "parameters/MidiControl.h"

#include "presets/XmlFiles.h"

#include <utility>
#include <vector>

namespace
{
constexpr const char* mapTag = "MidiControlMap";
constexpr const char* olderMapTag = "MidiCCMap";
} // namespace

MidiControl::MidiControl(ParameterManager& manager)
    : parameterManager(manager)
{
}

MidiControl::~MidiControl()
{
    cancelPendingUpdate();
}

Parameter* MidiControl::entry(int controller) const noexcept
{
    return juce::isPositiveAndBelow(controller, controllerCount) ? assignments[(size_t) controller] : nullptr;
}

void MidiControl::handleController(const juce::MidiMessage& message)
{
    if (!message.isController())
        return;

    const int number = message.getControllerNumber();
    const juce::ScopedLock sl(lock);

    if (learnMode)
        setLearnController(number);

    if (auto* parameter = entry(number))
    {
        parameter->setNormalised((float) message.getControllerValue() * 0.007874016f, true);
        movedParameter = parameter;
        controllerMoved = true;
        triggerAsyncUpdateFromAnyThread();
    }
}

void MidiControl::assign(int controller, Parameter* parameter, bool notify)
{
    if (!juce::isPositiveAndBelow(controller, controllerCount))
        return;

    const juce::ScopedLock sl(lock);
    auto& slot = assignments[(size_t) controller];

    if (slot == parameter)
        return;

    if (parameter == nullptr)
    {
        slot = nullptr;
        --assignmentCount;
    }
    else
    {
        if (const int previous = getControllerOf(parameter); previous >= 0)
        {
            assignments[(size_t) previous] = nullptr;
            --assignmentCount;
        }

        // A parameter pushed out of this slot is not counted off: the count
        // only serves display.
        slot = parameter;
        ++assignmentCount;
    }

    if (notify)
    {
        mapChanged = true;
        triggerAsyncUpdateFromAnyThread();
    }
}

void MidiControl::removeAssignment(int controller)
{
    const juce::ScopedLock sl(lock);

    if (entry(controller) == nullptr)
        return;

    assignments[(size_t) controller] = nullptr;
    --assignmentCount;
    mapChanged = true;
    triggerAsyncUpdateFromAnyThread();

    if (learnMode)
    {
        learnParameter = nullptr;
        learnController = -1;
        checkLearn();
    }
}

void MidiControl::clear(bool notify)
{
    const juce::ScopedLock sl(lock);
    assignments.fill(nullptr);
    assignmentCount = 0;

    if (notify)
    {
        mapChanged = true;
        triggerAsyncUpdateFromAnyThread();
    }
}

int MidiControl::getControllerOf(const Parameter* parameter) const
{
    if (parameter == nullptr)
        return -1;

    const juce::ScopedLock sl(lock);

    for (int c = 0; c < controllerCount; ++c)
        if (assignments[(size_t) c] == parameter)
            return c;

    return -1;
}

Parameter* MidiControl::getAssignment(int controller) const
{
    const juce::ScopedLock sl(lock);
    return entry(controller);
}

int MidiControl::getAssignmentCount() const
{
    const juce::ScopedLock sl(lock);
    return assignmentCount;
}

void MidiControl::setLearnMode(bool shouldLearn)
{
    {
        const juce::ScopedLock sl(lock);

        if (learnMode == shouldLearn)
            return;

        learnMode = shouldLearn;
        learnParameter = nullptr;
        learnController = -1;
    }

    learnChangedNow();
}

void MidiControl::setLearnParameter(Parameter* parameter)
{
    const juce::ScopedLock sl(lock);

    if (learnParameter == parameter)
        return;

    // A controller picked first waits for this parameter; otherwise the
    // parameter brings its own controller, if it has one.
    if (learnController == -1 || learnParameter != nullptr)
        learnController = getControllerOf(parameter);

    learnParameter = parameter;
    checkLearn();
}

void MidiControl::setLearnController(int controller)
{
    const juce::ScopedLock sl(lock);

    if (learnController == controller)
        return;

    // A parameter picked first waits for this controller; otherwise the
    // controller brings the parameter it drives, if any.
    if (learnParameter == nullptr || learnController != -1)
        learnParameter = entry(controller);

    learnController = controller;
    checkLearn();
}

void MidiControl::selectAssignment(int controller)
{
    const juce::ScopedLock sl(lock);

    if (auto* parameter = entry(controller))
    {
        learnController = controller;
        learnParameter = parameter;
        checkLearn();
    }
}

void MidiControl::checkLearn()
{
    if (learnParameter != nullptr && learnController != -1 && entry(learnController) == nullptr)
        assign(learnController, learnParameter, true);

    learnChanged = true;
    triggerAsyncUpdateFromAnyThread();
}

bool MidiControl::isLearnMode() const
{
    const juce::ScopedLock sl(lock);
    return learnMode;
}

Parameter* MidiControl::getLearnParameter() const
{
    const juce::ScopedLock sl(lock);
    return learnParameter;
}

int MidiControl::getLearnController() const
{
    const juce::ScopedLock sl(lock);
    return learnController;
}

Parameter* MidiControl::getMovedParameter() const
{
    const juce::ScopedLock sl(lock);
    return movedParameter;
}

MidiControl::ControllerIterator::ControllerIterator(const MidiControl& o, int c)
    : owner(&o)
    , controller(c)
{
    if (controller < 0)
        ++*this;
}

MidiControl::ControllerIterator& MidiControl::ControllerIterator::operator++()
{
    const juce::ScopedLock sl(owner->lock);

    while (++controller < controllerCount && owner->assignments[(size_t) controller] == nullptr)
    {
    }

    return *this;
}

bool MidiControl::isMapXml(const juce::XmlElement& xml) const
{
    return xml.hasTagName(mapTag) || xml.hasTagName(olderMapTag);
}

bool MidiControl::canLoadMap(const juce::XmlElement& xml) const
{
    if (!isMapXml(xml))
        return false;

    const auto name = getApplicationName();
    return name.isEmpty() || xml.getStringAttribute("name") == name || xml.getStringAttribute("application") == name;
}

void MidiControl::loadMap(const juce::XmlElement& xml)
{
    readRows(xml, canLoadMap(xml), {});
}

bool MidiControl::isOlderMapXml(const juce::XmlElement& xml)
{
    return xml.hasTagName(olderMapTag) && !xml.hasAttribute("application");
}

void MidiControl::loadOlderMap(const juce::XmlElement& xml, const NameTranslator& translateName)
{
    readRows(xml, isOlderMapXml(xml), translateName);
}

void MidiControl::readRows(const juce::XmlElement& xml, bool accepted, const NameTranslator& translateName)
{
    setLearnMode(false);

    // Names are looked up before the lock is taken, so that the audio thread
    // never waits on a search.
    std::vector<std::pair<int, Parameter*>> rows;

    if (accepted)
    {
        for (auto* row : xml.getChildWithTagNameIterator("assign"))
        {
            auto name = row->getStringAttribute("param");

            if (translateName)
                name = translateName(name);

            // Only the host's parameters can be driven by a controller.
            auto* parameter = parameterManager.getParameter(name);

            if (parameter == nullptr || !parameter->isAutomatable())
                continue;

            if (const int controller = row->getIntAttribute("CC", 0); juce::isPositiveAndBelow(controller, controllerCount))
                rows.emplace_back(controller, parameter);
        }
    }

    const juce::ScopedLock sl(lock);
    assignments.fill(nullptr);
    assignmentCount = 0;

    for (const auto& [controller, parameter] : rows)
        assign(controller, parameter, false);

    mapChanged = true;
    triggerAsyncUpdateFromAnyThread();
}

std::unique_ptr<juce::XmlElement> MidiControl::createMapXml() const
{
    auto xml = std::make_unique<juce::XmlElement>(mapTag);
    const juce::ScopedLock sl(lock);
    xml->setAttribute("name", applicationName);

    for (const int controller : getAssignedControllers())
    {
        auto* row = xml->createNewChildElement("assign");
        row->setAttribute("CC", controller);
        row->setAttribute("param", assignments[(size_t) controller]->getName());
    }

    return xml;
}

bool MidiControl::loadFromFile(const juce::File& file)
{
    const auto xml = XmlFiles::parse(file);

    if (xml == nullptr || !canLoadMap(*xml))
        return false;

    loadMap(*xml);
    return true;
}

bool MidiControl::saveToFile(const juce::File& file) const
{
    juce::XmlElement::TextFormat format;
    format.customEncoding = "UTF-8";
    return createMapXml()->writeTo(file, format);
}

bool MidiControl::loadDefaultMapIfAsked()
{
    juce::String path;

    {
        const juce::ScopedLock sl(lock);

        if (!loadDefaultMap)
            return false;

        path = defaultMapFile;
    }

    return juce::File::isAbsolutePath(path) && loadFromFile(juce::File(path));
}

juce::String MidiControl::getMapExtension(const juce::String& pluginShortName)
{
    return "." + pluginShortName.toLowerCase() + "ccmap";
}

juce::String MidiControl::getLoadWildcard(const juce::String& pluginShortName, const juce::StringArray& olderExtensions)
{
    auto wildcard = "*" + getMapExtension(pluginShortName);

    for (const auto& extension : olderExtensions)
        wildcard << "; *" << extension;

    return wildcard;
}

void MidiControl::setApplicationName(const juce::String& name)
{
    const juce::ScopedLock sl(lock);
    applicationName = name;
}

juce::String MidiControl::getApplicationName() const
{
    const juce::ScopedLock sl(lock);
    return applicationName;
}

void MidiControl::setLoadDefaultMap(bool shouldLoad)
{
    const juce::ScopedLock sl(lock);
    loadDefaultMap = shouldLoad;
}

bool MidiControl::getLoadDefaultMap() const
{
    const juce::ScopedLock sl(lock);
    return loadDefaultMap;
}

void MidiControl::setDefaultMapFile(const juce::String& path)
{
    const juce::ScopedLock sl(lock);
    defaultMapFile = path;
}

juce::String MidiControl::getDefaultMapFile() const
{
    const juce::ScopedLock sl(lock);
    return defaultMapFile;
}

void MidiControl::addListener(Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere(listener);
}

void MidiControl::removeListener(Listener* listener)
{
    listeners.removeFirstMatchingValue(listener);
}

// Last added first, with the index clamped after each call, so that a listener
// may remove itself (or others) while it is being called.
template <typename Call>
void MidiControl::callListeners(Call&& call)
{
    for (int i = listeners.size(); --i >= 0;)
    {
        call(*listeners.getUnchecked(i));
        i = juce::jmin(i, listeners.size());
    }
}

void MidiControl::learnChangedNow()
{
    callListeners([this](Listener& l)
                  { l.midiLearnChanged(*this); });
}

void MidiControl::handleAsyncUpdate()
{
    // Taken and cleared together, so that a change arriving during the calls
    // waits for the next update instead of being lost.
    bool map, learn, moved;
    Parameter* parameter;

    {
        const juce::ScopedLock sl(lock);
        map = std::exchange(mapChanged, false);
        learn = std::exchange(learnChanged, false);
        moved = std::exchange(controllerMoved, false);
        parameter = movedParameter;
    }

    if (map)
        callListeners([this](Listener& l)
                      { l.midiMapChanged(*this); });

    if (learn)
        learnChangedNow();

    if (moved)
        callListeners([this, parameter](Listener& l)
                      { l.midiControllerMoved(*this, parameter); });
}
