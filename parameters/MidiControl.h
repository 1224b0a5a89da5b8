#pragma once

#include "parameters/ParameterManager.h"
#include "parameters/RealtimeAsyncUpdater.h"

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_events/juce_events.h>

#include <array>
#include <functional>
#include <iterator>
#include <memory>

// Maps the 128 MIDI controllers to parameters, one parameter per controller
// and one controller per parameter, and makes the mapping by learning: the
// user moves a control and a controller, in either order. Maps are saved to
// and loaded from XML files.
//
// handleController runs on the audio thread; everything else on the message
// thread (the state may also be restored from a host thread). The table, the
// learn fields and the pending flags are guarded by one critical section,
// held only for short table work. Listeners are told on the message thread,
// several changes in between giving one call; only a change of learn mode is
// told at once, on the caller's thread.
class MidiControl : public RealtimeAsyncUpdater
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void midiMapChanged(MidiControl&) {}
        virtual void midiLearnChanged(MidiControl&) {}
        // With the parameter that a controller set last.
        virtual void midiControllerMoved(MidiControl&, Parameter*) {}
    };

    static constexpr int controllerCount = 128;

    // Turns a parameter name of an older file into today's name; empty drops
    // the row.
    using NameTranslator = std::function<juce::String(const juce::String&)>;

    explicit MidiControl(ParameterManager& parameterManager);
    ~MidiControl() override;

    // Audio thread. A controller message feeds learn mode and then sets its
    // assigned parameter to value / 127, with notification, so that the
    // parameter's synchronous listeners run here. Any other message is
    // ignored. Takes the lock; allocates nothing.
    void handleController(const juce::MidiMessage& message);

    // Puts parameter on controller, taking it off any other controller; a
    // null parameter empties the entry. With notify the listeners hear of it.
    void assign(int controller, Parameter* parameter, bool notify);
    void removeAssignment(int controller);
    void clear(bool notify);

    // The controller that drives parameter, or -1 if none does.
    int getControllerOf(const Parameter* parameter) const;
    // The parameter on controller, or null.
    Parameter* getAssignment(int controller) const;
    // The number of entries, for display. A controller that is given another
    // parameter counts twice, so this may run one too high per such change.
    int getAssignmentCount() const;

    // Learn: a change of mode forgets both picks and tells the listeners at
    // once. Picking a parameter and a controller, in either order, assigns
    // them when the controller is free; a taken controller selects its
    // parameter instead.
    void setLearnMode(bool shouldLearn);
    void setLearnParameter(Parameter* parameter);
    void setLearnController(int controller);
    // Picks an existing assignment (a row of the map) as both learn fields.
    void selectAssignment(int controller);

    bool isLearnMode() const;
    Parameter* getLearnParameter() const;
    int getLearnController() const; // -1 if none
    Parameter* getMovedParameter() const;

    // Held by every operation here; recursive, so a listener may take it to
    // read several fields together.
    const juce::CriticalSection& getLock() const noexcept { return lock; }

    // The assigned controllers in ascending order. Each step takes the lock;
    // hold getLock() around the loop for a consistent view.
    class ControllerIterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = int;
        using difference_type = int;
        using pointer = const int*;
        using reference = int;

        ControllerIterator(const MidiControl& owner, int controller);
        int operator*() const noexcept { return controller; }
        ControllerIterator& operator++();
        bool operator==(const ControllerIterator& other) const noexcept { return controller == other.controller; }
        bool operator!=(const ControllerIterator& other) const noexcept { return controller != other.controller; }

    private:
        const MidiControl* owner;
        int controller;
    };

    struct AssignedControllers
    {
        const MidiControl& owner;
        ControllerIterator begin() const { return { owner, -1 }; }
        ControllerIterator end() const { return { owner, controllerCount }; }
    };

    AssignedControllers getAssignedControllers() const { return { *this }; }

    // Files. The root is "MidiControlMap" (or "MidiCCMap"); a map carries the
    // plug-in's name, and once applicationName is set, only maps naming it
    // (by name or application) are read.
    virtual bool isMapXml(const juce::XmlElement& xml) const;
    virtual bool canLoadMap(const juce::XmlElement& xml) const;

    // Leaves learn mode and empties the map, then, if canLoadMap, takes every
    // row whose parameter exists and is automatable. Always tells the
    // listeners, even when nothing was read.
    virtual void loadMap(const juce::XmlElement& xml);

    // The older map kept in old states: root "MidiCCMap" without an
    // application attribute, parameters named by short names.
    static bool isOlderMapXml(const juce::XmlElement& xml);
    // As loadMap, with isOlderMapXml as the test and each name translated
    // before it is looked up.
    void loadOlderMap(const juce::XmlElement& xml, const NameTranslator& translateName);

    // Root "MidiControlMap" with name = applicationName, one "assign" (CC,
    // param) per assigned controller in ascending order.
    std::unique_ptr<juce::XmlElement> createMapXml() const;

    // A file that does not parse or holds no map we can read changes nothing.
    bool loadFromFile(const juce::File& file);
    bool saveToFile(const juce::File& file) const; // "UTF-8"

    // At start-up: loads defaultMapFile if loadDefaultMap is set.
    bool loadDefaultMapIfAsked();

    // "." + the short name in lower case + "ccmap": ".qdccmap" for "QD".
    static juce::String getMapExtension(const juce::String& pluginShortName);
    // "*.qdccmap", then each older extension behind "; ": "*.qdccmap; *.qcc".
    static juce::String getLoadWildcard(const juce::String& pluginShortName, const juce::StringArray& olderExtensions);

    void setApplicationName(const juce::String& name);
    juce::String getApplicationName() const;
    void setLoadDefaultMap(bool shouldLoad);
    bool getLoadDefaultMap() const;
    void setDefaultMapFile(const juce::String& path);
    juce::String getDefaultMapFile() const;

    // Listeners are added and removed on the message thread.
    void addListener(Listener* listener);
    void removeListener(Listener* listener);

    // Message thread: map, learn, then moved, each if pending.
    void handleAsyncUpdate() override;

private:
    void readRows(const juce::XmlElement& xml, bool accepted, const NameTranslator& translateName);
    void checkLearn(); // caller holds the lock
    void learnChangedNow();
    Parameter* entry(int controller) const noexcept; // null out of range

    template <typename Call>
    void callListeners(Call&& call);

    ParameterManager& parameterManager;
    juce::Array<Listener*> listeners;
    std::array<Parameter*, controllerCount> assignments{};
    bool learnMode = false;
    Parameter* learnParameter = nullptr;
    int learnController = -1;
    juce::String applicationName;
    int assignmentCount = 0;
    bool loadDefaultMap = false;
    juce::String defaultMapFile;
    bool mapChanged = false;
    bool learnChanged = false;
    bool controllerMoved = false;
    Parameter* movedParameter = nullptr;
    juce::CriticalSection lock;

    JUCE_DECLARE_NON_COPYABLE(MidiControl)
};
