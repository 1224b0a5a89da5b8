#pragma once

#include <juce_core/juce_core.h>

#include <map>

// Names and numbers of events: the commands without a value that the panel's
// buttons send (by name in the skin) and that handleEvent carries out (by uid).
// Filled at start-up on the message thread and only read afterwards.
class EventMap
{
public:
    // False, and nothing changes, if the uid or the name is already present.
    bool add(int uid, const juce::String& name);

    // An empty string for an unknown uid.
    juce::String getName(int uid) const;

    // -1 for an unknown name.
    int getUid(const juce::String& name) const;

    bool contains(int uid) const { return namesByUid.count(uid) != 0; }
    int size() const { return (int) namesByUid.size(); }
    void clear();

    // Reads the rows of an "events.xml" document (root EventsMap, children
    // event with name and uid). Another root loads nothing.
    void loadFromXml(const juce::XmlElement& xml);
    void loadFromText(const juce::String& text);

    const std::map<int, juce::String>& byUid() const { return namesByUid; }

private:
    std::map<juce::String, int> uidsByName;
    std::map<int, juce::String> namesByUid;
};
