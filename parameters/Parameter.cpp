#include "parameters/Parameter.h"

Parameter::Parameter(int parameterId, const juce::String& parameterName)
    : id(parameterId)
    , name(parameterName)
{
}

Parameter::~Parameter()
{
    cancelPendingUpdate();
}

// Last added first, with the index clamped after each call, so that a listener
// may remove itself (or others) while it is being called.
template <typename Call>
void Parameter::callListeners(juce::Array<Listener*>& listeners, Call&& call)
{
    for (int i = listeners.size(); --i >= 0;)
    {
        call(*listeners.getUnchecked(i));
        i = juce::jmin(i, listeners.size());
    }
}

void Parameter::handleAsyncUpdate()
{
    callListeners(asyncListeners, [this](Listener& l)
                  { l.parameterChanged(*this); });
}

void Parameter::addListener(Listener* listener)
{
    if (listener != nullptr)
        syncListeners.addIfNotAlreadyThere(listener);
}

void Parameter::removeListener(Listener* listener)
{
    syncListeners.removeFirstMatchingValue(listener);
}

void Parameter::addAsyncListener(Listener* listener)
{
    if (listener != nullptr)
        asyncListeners.addIfNotAlreadyThere(listener);
}

void Parameter::removeAsyncListener(Listener* listener)
{
    asyncListeners.removeFirstMatchingValue(listener);
}

void Parameter::notifyChange()
{
    callListeners(syncListeners, [this](Listener& l)
                  { l.parameterChanged(*this); });
    triggerAsyncUpdateFromAnyThread();
}

void Parameter::beginGesture()
{
    callListeners(syncListeners, [this](Listener& l)
                  { l.parameterGestureBegin(*this); });
}

void Parameter::endGesture()
{
    callListeners(syncListeners, [this](Listener& l)
                  { l.parameterGestureEnd(*this); });
}

void Parameter::valueChanged(bool notify)
{
    if (notify)
        notifyChange();
}
