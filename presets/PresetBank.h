#pragma once

#include "presets/Preset.h"

#include <juce_core/juce_core.h>

// One bank of exactly 128 presets, cut into named groups. The flat array is
// the only storage: group g is the run that starts at the sum of the counts of
// the groups before it, and the counts always add up to 128 once a bank has
// been cleared or read.
//
// The audio thread fetches presets (a program change) while the message thread
// edits the bank. presetsLock guards the array and groupsLock the groups; each
// is held only for the fetch or the reordering of elements, never across a
// load, and never both at once. The Preset objects live as long as the bank:
// moves only reorder them, so a pointer fetched once stays valid.
class PresetBank
{
public:
    static constexpr int numPresets = 128;

    // 128 presets named "Preset" with all values 0, and no group at all.
    PresetBank();

    // Presets, by number (position in the flat array). Any thread.
    Preset* getPreset(int number) const;          // null out of range
    int indexOf(const Preset* preset) const;      // -1 if not in the bank
    juce::String getPresetName(int number) const; // empty out of range

    // Group queries. Any thread.
    int getNumGroups() const;
    juce::String getGroupName(int group) const;             // empty for an invalid group
    int getGroupOfPreset(int number) const;                 // -1 beyond all groups
    int getGroupStart(int group) const;                     // -1 for an invalid group
    int getGroupCount(int group) const;                     // 0 for an invalid group
    int getGroupLast(int group) const;                      // start + count - 1
    int getPresetNumber(int group, int indexInGroup) const; // -1 if invalid

    // Group edits (message thread). Those that can refuse say whether they acted.
    void renameGroup(int group, const juce::String& name);
    void removeAllGroups();
    void appendGroup(const juce::String& name, int count);
    void setGroupCount(int group, int count);
    // A new empty group "New Group" before an existing one; never behind the last.
    bool addGroup(int position);
    // Only a valid group that holds no preset.
    bool removeGroup(int group);

    // Moves (message thread); see the operations of BasePluginOldStyle for
    // their rules. Each returns whether anything moved.
    bool movePreset(int fromGroup, int toGroup, int from, int to);
    bool movePresets(int toGroup, int fromGroup, const juce::SparseSet<int>& selection);
    bool moveGroup(int from, int to);

    // "Preset 0" to "Preset 127" with the values of `values`, and one group
    // "Not used" of 128.
    void clear(const Preset& values);

    juce::String getName() const;
    void setName(const juce::String& newName);

private:
    bool isValidGroup(int group) const; // caller holds groupsLock
    int startOf(int group) const;       // caller holds groupsLock

    juce::OwnedArray<Preset> presets;
    mutable juce::SpinLock presetsLock;
    juce::OwnedArray<PresetGroup> groups;
    mutable juce::SpinLock groupsLock;
    juce::String name{ "Preset Bank" };
    mutable juce::SpinLock nameLock;

    JUCE_DECLARE_NON_COPYABLE(PresetBank)
};
