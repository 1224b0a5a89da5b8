#pragma once

#include "parameters/Parameter.h"

#include <juce_core/juce_core.h>

// Owns every parameter of the plug-in and finds them by id or name. Parameters
// are added only at start-up (under the write side of the lock); afterwards
// every thread, the audio thread included, looks them up under the read side,
// which never waits once start-up is over. A missing id reads as zero or empty
// and a set of one does nothing.
class ParameterManager
{
public:
    ParameterManager() = default;
    ~ParameterManager();

    // Takes ownership. False, and the object deleted, if its id or name is
    // already taken; false without deleting if this very object is already
    // held.
    bool addParameter(Parameter* parameter);
    void clear();

    // Adds the rows of a "PluginParameters" table; a row that fails is
    // skipped. Returns how many were added.
    int loadFromXml(const juce::String& xmlText);
    int loadFromXml(const juce::XmlElement& root);

    int getNumParameters() const;
    Parameter* getParameterByIndex(int index) const; // in order of adding
    Parameter* getParameter(int id) const;
    Parameter* getParameter(const juce::String& name) const;
    juce::String getName(int id) const;

    // By id, on any thread, the audio thread included: the read lock never
    // waits once start-up is over.
    double getValue(int id) const;
    double getNormalised(int id) const;
    int getInt(int id) const;
    bool getBool(int id) const;
    juce::String getText(int id) const;

    // These always notify.
    void setValue(int id, float value);
    void setNormalised(int id, float value);
    void setInt(int id, int value);
    void setBool(int id, bool value);
    void setText(int id, const juce::String& text);

    // For rows that show a state kept elsewhere (a pattern's name, tempo or
    // shuffle): the value is stored and the asynchronous listeners, the panel,
    // hear of it, but not the synchronous ones, which act on a change made from
    // outside and would write it back where it came from.
    void showValue(int id, float value);
    void showText(int id, const juce::String& text);

    void addListenerToAll(Parameter::Listener* listener);
    void removeListenerFromAll(Parameter::Listener* listener);
    void addAsyncListenerToAll(Parameter::Listener* listener);
    void removeAsyncListenerFromAll(Parameter::Listener* listener);
    void addListener(int id, Parameter::Listener* listener);
    void removeListener(int id, Parameter::Listener* listener);
    void addAsyncListener(int id, Parameter::Listener* listener);
    void removeAsyncListener(int id, Parameter::Listener* listener);

    // Notifies every listener of every parameter, whatever the values, so that
    // all sides start out agreeing with the parameters.
    void sendAllChanges();

private:
    // The slot of an id is its absolute value modulo the slot count.
    struct IdHash
    {
        int generateHash(int key, int upperLimit) const noexcept;
    };

    Parameter* find(int id) const; // caller holds the lock

    template <typename Function>
    void forEach(Function&& function) const;

    template <typename Function>
    void withParameter(int id, Function&& function) const;

    juce::OwnedArray<Parameter> parameters;
    juce::HashMap<int, Parameter*, IdHash> byId;
    juce::HashMap<juce::String, Parameter*> byName;
    juce::ReadWriteLock lock;

    JUCE_DECLARE_NON_COPYABLE(ParameterManager)
};
