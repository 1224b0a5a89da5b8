#include "parameters/ParameterManager.h"

#include "parameters/ParameterTypes.h"

namespace
{
// One row of the table as a parameter, or null for a row to skip.
std::unique_ptr<Parameter> createParameter(const juce::XmlElement& row)
{
    const int id = row.getIntAttribute("index", -1);
    const auto name = row.getStringAttribute("name");

    if (id == -1 || name.isEmpty())
        return nullptr;

    const auto type = row.getStringAttribute("type", "float");
    const auto value = row.getStringAttribute("value");
    std::unique_ptr<Parameter> parameter;

    if (type.equalsIgnoreCase("float"))
        parameter = std::make_unique<FloatParameter>(id, name, (float) row.getDoubleAttribute("min", 0.0), (float) row.getDoubleAttribute("max", 1.0), value.getFloatValue());
    else if (type.equalsIgnoreCase("int"))
        parameter = std::make_unique<IntParameter>(id, name, row.getIntAttribute("min", 0), row.getIntAttribute("max", 1), value.getIntValue());
    else if (type.equalsIgnoreCase("string"))
        parameter = std::make_unique<StringParameter>(id, name, value);
    else if (type.equalsIgnoreCase("bool") || type == "state")
    {
        parameter = std::make_unique<BoolParameter>(id, name, false, type == "state" ? BoolParameter::onOff : BoolParameter::trueFalse);
        parameter->setText(value, false);
    }
    else if (type == "enum")
        parameter = std::make_unique<EnumParameter>(id, name, row.getStringAttribute("enum"), value);
    else if (type == "note")
        parameter = std::make_unique<NoteParameter>(id, name, value);
    else
        return nullptr; // a fault of the table

    parameter->setAutomatable(row.getStringAttribute("auto") == "true");
    return parameter;
}
} // namespace

int ParameterManager::IdHash::generateHash(int key, int upperLimit) const noexcept
{
    const auto magnitude = key < 0 ? 0u - (unsigned int) key : (unsigned int) key;
    return (int) (magnitude % (unsigned int) upperLimit);
}

ParameterManager::~ParameterManager()
{
    clear();
}

bool ParameterManager::addParameter(Parameter* parameter)
{
    if (parameter == nullptr)
        return false;

    const juce::ScopedWriteLock sl(lock);

    if (parameters.contains(parameter))
        return false;

    if (byId.contains(parameter->getId()) || byName.contains(parameter->getName()))
    {
        delete parameter;
        return false;
    }

    parameters.add(parameter);
    byId.set(parameter->getId(), parameter);
    byName.set(parameter->getName(), parameter);
    return true;
}

void ParameterManager::clear()
{
    const juce::ScopedWriteLock sl(lock);
    byId.clear();
    byName.clear();
    parameters.clear();
}

int ParameterManager::loadFromXml(const juce::String& xmlText)
{
    if (const auto root = juce::parseXML(xmlText))
        return loadFromXml(*root);

    return 0;
}

int ParameterManager::loadFromXml(const juce::XmlElement& root)
{
    if (!root.hasTagName("PluginParameters"))
        return 0;

    int added = 0;

    for (const auto* row : root.getChildWithTagNameIterator("param"))
        if (auto parameter = createParameter(*row))
            if (addParameter(parameter.release()))
                ++added;

    return added;
}

int ParameterManager::getNumParameters() const
{
    const juce::ScopedReadLock sl(lock);
    return parameters.size();
}

Parameter* ParameterManager::getParameterByIndex(int index) const
{
    const juce::ScopedReadLock sl(lock);
    return parameters[index];
}

Parameter* ParameterManager::find(int id) const
{
    return byId[id]; // null if absent
}

Parameter* ParameterManager::getParameter(int id) const
{
    const juce::ScopedReadLock sl(lock);
    return find(id);
}

Parameter* ParameterManager::getParameter(const juce::String& name) const
{
    const juce::ScopedReadLock sl(lock);
    return byName[name];
}

juce::String ParameterManager::getName(int id) const
{
    const juce::ScopedReadLock sl(lock);
    const auto* p = find(id);
    return p != nullptr ? p->getName() : juce::String();
}

template <typename Function>
void ParameterManager::withParameter(int id, Function&& function) const
{
    const juce::ScopedReadLock sl(lock);

    if (auto* p = find(id))
        function(*p);
}

template <typename Function>
void ParameterManager::forEach(Function&& function) const
{
    const juce::ScopedReadLock sl(lock);

    for (auto* p : parameters)
        function(*p);
}

double ParameterManager::getValue(int id) const
{
    double result = 0.0;
    withParameter(id, [&](Parameter& p)
                  { result = p.getValue(); });
    return result;
}

double ParameterManager::getNormalised(int id) const
{
    double result = 0.0;
    withParameter(id, [&](Parameter& p)
                  { result = p.getNormalised(); });
    return result;
}

int ParameterManager::getInt(int id) const
{
    int result = 0;
    withParameter(id, [&](Parameter& p)
                  { result = p.getInt(); });
    return result;
}

bool ParameterManager::getBool(int id) const
{
    bool result = false;
    withParameter(id, [&](Parameter& p)
                  { result = p.getBool(); });
    return result;
}

juce::String ParameterManager::getText(int id) const
{
    juce::String result;
    withParameter(id, [&](Parameter& p)
                  { result = p.getText(); });
    return result;
}

void ParameterManager::setValue(int id, float value)
{
    withParameter(id, [=](Parameter& p)
                  { p.setValue(value, true); });
}

void ParameterManager::setNormalised(int id, float value)
{
    withParameter(id, [=](Parameter& p)
                  { p.setNormalised(value, true); });
}

void ParameterManager::setInt(int id, int value)
{
    withParameter(id, [=](Parameter& p)
                  { p.setInt(value, true); });
}

void ParameterManager::setBool(int id, bool value)
{
    withParameter(id, [=](Parameter& p)
                  { p.setBool(value, true); });
}

void ParameterManager::setText(int id, const juce::String& text)
{
    withParameter(id, [&](Parameter& p)
                  { p.setText(text, true); });
}

void ParameterManager::showValue(int id, float value)
{
    withParameter(id, [=](Parameter& p)
                  {
        const double before = p.getValue();
        p.setValue(value, false);
        if (p.getValue() != before)
            p.triggerAsyncUpdateFromAnyThread(); });
}

void ParameterManager::showText(int id, const juce::String& text)
{
    withParameter(id, [&](Parameter& p)
                  {
        if (p.getText() == text)
            return;
        p.setText(text, false);
        p.triggerAsyncUpdateFromAnyThread(); });
}

void ParameterManager::addListenerToAll(Parameter::Listener* listener)
{
    forEach([=](Parameter& p)
            { p.addListener(listener); });
}

void ParameterManager::removeListenerFromAll(Parameter::Listener* listener)
{
    forEach([=](Parameter& p)
            { p.removeListener(listener); });
}

void ParameterManager::addAsyncListenerToAll(Parameter::Listener* listener)
{
    forEach([=](Parameter& p)
            { p.addAsyncListener(listener); });
}

void ParameterManager::removeAsyncListenerFromAll(Parameter::Listener* listener)
{
    forEach([=](Parameter& p)
            { p.removeAsyncListener(listener); });
}

void ParameterManager::addListener(int id, Parameter::Listener* listener)
{
    withParameter(id, [=](Parameter& p)
                  { p.addListener(listener); });
}

void ParameterManager::removeListener(int id, Parameter::Listener* listener)
{
    withParameter(id, [=](Parameter& p)
                  { p.removeListener(listener); });
}

void ParameterManager::addAsyncListener(int id, Parameter::Listener* listener)
{
    withParameter(id, [=](Parameter& p)
                  { p.addAsyncListener(listener); });
}

void ParameterManager::removeAsyncListener(int id, Parameter::Listener* listener)
{
    withParameter(id, [=](Parameter& p)
                  { p.removeAsyncListener(listener); });
}

void ParameterManager::sendAllChanges()
{
    forEach([](Parameter& p)
            { p.notifyChange(); });
}
