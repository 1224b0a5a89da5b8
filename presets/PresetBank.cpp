#include "presets/PresetBank.h"

using PresetsLock = juce::SpinLock::ScopedLockType;

PresetBank::PresetBank()
{
    presets.ensureStorageAllocated(numPresets);
    for (int i = 0; i < numPresets; ++i)
        presets.add(new Preset());
}

//==============================================================================
Preset* PresetBank::getPreset(int number) const
{
    const PresetsLock sl(presetsLock);
    return presets[number];
}

int PresetBank::indexOf(const Preset* preset) const
{
    const PresetsLock sl(presetsLock);
    return presets.indexOf(preset);
}

juce::String PresetBank::getPresetName(int number) const
{
    if (auto* preset = getPreset(number))
        return preset->getName();
    return {};
}

//==============================================================================
bool PresetBank::isValidGroup(int group) const
{
    return juce::isPositiveAndBelow(group, groups.size());
}

int PresetBank::startOf(int group) const
{
    int start = 0;
    for (int g = 0; g < group; ++g)
        start += groups.getUnchecked(g)->count;
    return start;
}

int PresetBank::getNumGroups() const
{
    const PresetsLock sl(groupsLock);
    return groups.size();
}

juce::String PresetBank::getGroupName(int group) const
{
    const PresetsLock sl(groupsLock);
    return isValidGroup(group) ? groups.getUnchecked(group)->name : juce::String();
}

int PresetBank::getGroupOfPreset(int number) const
{
    const PresetsLock sl(groupsLock);
    if (number < 0)
        return -1;

    int end = 0;
    for (int g = 0; g < groups.size(); ++g)
    {
        end += groups.getUnchecked(g)->count;
        if (number < end)
            return g;
    }
    return -1;
}

int PresetBank::getGroupStart(int group) const
{
    const PresetsLock sl(groupsLock);
    return isValidGroup(group) ? startOf(group) : -1;
}

int PresetBank::getGroupCount(int group) const
{
    const PresetsLock sl(groupsLock);
    return isValidGroup(group) ? groups.getUnchecked(group)->count : 0;
}

int PresetBank::getGroupLast(int group) const
{
    const PresetsLock sl(groupsLock);
    return isValidGroup(group) ? startOf(group) + groups.getUnchecked(group)->count - 1 : -2;
}

int PresetBank::getPresetNumber(int group, int indexInGroup) const
{
    const PresetsLock sl(groupsLock);
    if (!isValidGroup(group) || indexInGroup < 0 || indexInGroup >= groups.getUnchecked(group)->count)
        return -1;
    return startOf(group) + indexInGroup;
}

//==============================================================================
void PresetBank::renameGroup(int group, const juce::String& newName)
{
    const PresetsLock sl(groupsLock);
    if (isValidGroup(group))
        groups.getUnchecked(group)->name = newName;
}

void PresetBank::removeAllGroups()
{
    juce::OwnedArray<PresetGroup> removed;
    {
        const PresetsLock sl(groupsLock);
        removed.swapWith(groups);
    }
}

void PresetBank::appendGroup(const juce::String& groupName, int count)
{
    auto* group = new PresetGroup{ groupName, count };
    const PresetsLock sl(groupsLock);
    groups.add(group);
}

void PresetBank::setGroupCount(int group, int count)
{
    const PresetsLock sl(groupsLock);
    if (isValidGroup(group))
        groups.getUnchecked(group)->count = count;
}

bool PresetBank::addGroup(int position)
{
    auto group = std::make_unique<PresetGroup>(PresetGroup{ "New Group", 0 });
    const PresetsLock sl(groupsLock);
    if (!isValidGroup(position))
        return false;
    groups.insert(position, group.release());
    return true;
}

bool PresetBank::removeGroup(int group)
{
    std::unique_ptr<PresetGroup> removed;
    const PresetsLock sl(groupsLock);
    if (!isValidGroup(group) || groups.getUnchecked(group)->count != 0)
        return false;
    removed.reset(groups.removeAndReturn(group));
    return true;
}

//==============================================================================
bool PresetBank::movePreset(int fromGroup, int toGroup, int from, int to)
{
    if (!juce::isPositiveAndBelow(from, numPresets) || !juce::isPositiveAndBelow(to, numPresets) || from == to)
        return false;

    {
        const PresetsLock sl(groupsLock);
        if (!isValidGroup(fromGroup) || !isValidGroup(toGroup))
            return false;
        if (fromGroup != toGroup)
        {
            // A group with nothing in it has nothing to give.
            if (groups.getUnchecked(fromGroup)->count <= 0)
                return false;
            --groups.getUnchecked(fromGroup)->count;
            ++groups.getUnchecked(toGroup)->count;
        }
    }

    const PresetsLock sl(presetsLock);
    presets.move(from, to);
    return true;
}

bool PresetBank::movePresets(int toGroup, int fromGroup, const juce::SparseSet<int>& selection)
{
    int fromStart = 0, fromCount = 0, destination = 0;
    {
        const PresetsLock sl(groupsLock);
        if (!isValidGroup(fromGroup) || !isValidGroup(toGroup) || fromGroup == toGroup || selection.getNumRanges() == 0)
            return false;
        fromStart = startOf(fromGroup);
        fromCount = groups.getUnchecked(fromGroup)->count;
        destination = startOf(toGroup) + groups.getUnchecked(toGroup)->count;
    }

    // Only indices that lie within the group can leave it.
    juce::Array<int> indices;
    for (int r = 0; r < selection.getNumRanges(); ++r)
    {
        const auto range = selection.getRange(r);
        for (int i = juce::jmax(0, range.getStart()); i < juce::jmin(fromCount, range.getEnd()); ++i)
            indices.addIfNotAlreadyThere(i);
    }
    indices.sort();
    if (indices.isEmpty())
        return false;

    {
        const PresetsLock sl(presetsLock);
        if (fromGroup > toGroup)
        {
            // Each move from behind shifts only what lies between: the later
            // members of fromGroup keep their places, the destination rises.
            for (const int index : indices)
                presets.move(fromStart + index, destination++);
        }
        else
        {
            for (int k = indices.size(); --k >= 0;)
                presets.move(fromStart + indices.getUnchecked(k), --destination);
        }
    }

    const PresetsLock sl(groupsLock);
    groups.getUnchecked(fromGroup)->count -= indices.size();
    groups.getUnchecked(toGroup)->count += indices.size();
    return true;
}

bool PresetBank::moveGroup(int from, int to)
{
    int start = 0, count = 0, position = 0;
    {
        const PresetsLock sl(groupsLock);
        if (!isValidGroup(from) || !isValidGroup(to) || from == to)
            return false;
        start = startOf(from);
        count = groups.getUnchecked(from)->count;
        position = startOf(to);
        if (from < to)
            position += groups.getUnchecked(to)->count - count;
    }

    {
        // One element at a time, so that the array never changes size.
        const PresetsLock sl(presetsLock);
        for (int i = 0; i < count; ++i)
        {
            if (from < to)
                presets.move(start, position + count - 1);
            else
                presets.move(start + i, position + i);
        }
    }

    const PresetsLock sl(groupsLock);
    groups.move(from, to);
    return true;
}

//==============================================================================
void PresetBank::clear(const Preset& values)
{
    for (int i = 0; i < numPresets; ++i)
    {
        auto* preset = getPreset(i);
        preset->setName("Preset " + juce::String(i));
        preset->copyValuesFrom(values);
    }

    removeAllGroups();
    appendGroup("Not used", numPresets);
}

juce::String PresetBank::getName() const
{
    const PresetsLock sl(nameLock);
    return name;
}

void PresetBank::setName(const juce::String& newName)
{
    juce::String old(newName);
    const PresetsLock sl(nameLock);
    name.swapWith(old);
}
