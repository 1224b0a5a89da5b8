#include "EventMap.h"

bool EventMap::add(int uid, const juce::String& name)
{
    if (namesByUid.count(uid) != 0 || uidsByName.count(name) != 0)
        return false;

    namesByUid.emplace(uid, name);
    uidsByName.emplace(name, uid);
    return true;
}

juce::String EventMap::getName(int uid) const
{
    const auto found = namesByUid.find(uid);
    return found != namesByUid.end() ? found->second : juce::String();
}

int EventMap::getUid(const juce::String& name) const
{
    const auto found = uidsByName.find(name);
    return found != uidsByName.end() ? found->second : -1;
}

void EventMap::clear()
{
    namesByUid.clear();
    uidsByName.clear();
}

void EventMap::loadFromXml(const juce::XmlElement& xml)
{
    if (!xml.hasTagName("EventsMap"))
        return;

    for (auto* row : xml.getChildWithTagNameIterator("event"))
        add(row->getIntAttribute("uid", 0), row->getStringAttribute("name"));
}

void EventMap::loadFromText(const juce::String& text)
{
    if (auto xml = juce::parseXML(text))
        loadFromXml(*xml);
}
