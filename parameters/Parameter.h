#pragma once

#include "parameters/RealtimeAsyncUpdater.h"

#include <juce_events/juce_events.h>

#include <memory>

// One value of the system - a knob, a lamp, a display - with its id, name and
// listeners. Values are held atomically (strings under their own lock), so any
// thread may read or set them. Synchronous listeners run on the setter's
// thread; asynchronous ones run later on the message thread, one call for any
// number of changes in between.
class Parameter : public RealtimeAsyncUpdater
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void parameterChanged(Parameter& parameter) = 0;
        virtual void parameterGestureBegin(Parameter&) {}
        virtual void parameterGestureEnd(Parameter&) {}
    };

    Parameter(int id, const juce::String& name);
    ~Parameter() override;

    // Calls the asynchronous listeners; message thread.
    void handleAsyncUpdate() override;

    // A new object of the same class, id, name, automatable flag and value,
    // with no listeners.
    virtual std::unique_ptr<Parameter> clone() const = 0;

    virtual double getValue() const = 0;
    virtual double getNormalised() const = 0;
    virtual int getInt() const = 0;
    virtual bool getBool() const = 0;
    virtual juce::String getText() const = 0;

    // Getters and setters run on any thread, the audio thread included (those
    // of StringParameter excepted). Every setter cuts the value to the range,
    // does nothing at all if the stored value is already that, and otherwise
    // stores it and, if notify is set, calls the synchronous listeners and
    // triggers the asynchronous ones.
    virtual void setValue(float value, bool notify) = 0;
    virtual void setNormalised(float value, bool notify) = 0;
    virtual void setInt(int value, bool notify) = 0;
    virtual void setBool(bool value, bool notify) = 0;
    virtual void setText(const juce::String& text, bool notify) = 0;
    virtual void copyFrom(const Parameter& other, bool notify) = 0;

    int getId() const noexcept { return id; }
    const juce::String& getName() const noexcept { return name; }
    bool isAutomatable() const noexcept { return automatable; }
    void setAutomatable(bool shouldBeAutomatable) noexcept { automatable = shouldBeAutomatable; }

    // The lists change only while the plug-in and its editor are built, so
    // they carry no lock. Adding a listener twice has no effect.
    void addListener(Listener* listener);
    void removeListener(Listener* listener);
    void addAsyncListener(Listener* listener);
    void removeAsyncListener(Listener* listener);

    // Tells all listeners of a change whatever the value: synchronous ones
    // now, asynchronous ones later.
    void notifyChange();

    // Passed to the synchronous listeners on the caller's thread.
    void beginGesture();
    void endGesture();

protected:
    // For the setters, after a new value has been stored.
    void valueChanged(bool notify);

private:
    template <typename Call>
    static void callListeners(juce::Array<Listener*>& listeners, Call&& call);

    const int id;
    const juce::String name;
    bool automatable = false;
    juce::Array<Listener*> syncListeners;
    juce::Array<Listener*> asyncListeners;

    JUCE_DECLARE_NON_COPYABLE(Parameter)
};
