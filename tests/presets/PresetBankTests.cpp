// The bank as a flat array cut into groups: queries, group edits and moves.

#include "presets/PresetBank.h"

#include <gtest/gtest.h>

namespace
{
// A cleared bank cut into groups of the given sizes (the rest stays in "Not used", last).
void cut(PresetBank& bank, std::initializer_list<int> sizes)
{
    Preset values;
    bank.clear(values);
    bank.removeAllGroups();
    int used = 0, n = 0;
    for (const int size : sizes)
    {
        bank.appendGroup("G" + juce::String(n++), size);
        used += size;
    }
    bank.appendGroup("Not used", PresetBank::numPresets - used);
}

// Names of a group's presets, "Preset 3" written as "3".
juce::String groupNames(const PresetBank& bank, int group)
{
    juce::StringArray names;
    for (int i = 0; i < bank.getGroupCount(group); ++i)
        names.add(bank.getPresetName(bank.getPresetNumber(group, i)).fromLastOccurrenceOf(" ", false, false));
    return names.joinIntoString(",");
}

int totalCount(const PresetBank& bank)
{
    int total = 0;
    for (int g = 0; g < bank.getNumGroups(); ++g)
        total += bank.getGroupCount(g);
    return total;
}
} // namespace

TEST(PresetsBank, EmptyGroupsTakeNoRoomAndAreTheOnlyOnesRemoved)
{
    PresetBank bank;
    EXPECT_EQ(bank.getGroupOfPreset(0), -1) << "a bank with no group has no preset in one";
    cut(bank, { 3, 0, 5 });
    EXPECT_TRUE(bank.getGroupStart(2) == 3 && bank.getGroupOfPreset(3) == 2 && bank.getPresetNumber(1, 0) == -1 && bank.getPresetNumber(2, 5) == -1);

    cut(bank, { 4, 0 });
    EXPECT_FALSE(bank.removeGroup(0)) << "a group with presets stays";
    EXPECT_FALSE(bank.addGroup(bank.getNumGroups())) << "no group behind the last";
    EXPECT_TRUE(bank.addGroup(0) && bank.getGroupName(0) == "New Group" && bank.getGroupStart(1) == 0);
    EXPECT_TRUE(bank.removeGroup(2)) << "the empty one";
    EXPECT_TRUE(bank.getNumGroups() == 3 && groupNames(bank, 1) == "0,1,2,3" && totalCount(bank) == 128);
}

TEST(PresetsBank, MovingPresetsAndGroupsKeepsTheirOrderAndTheCounts)
{
    PresetBank bank;

    // Forward: from the first group to the end of the second.
    cut(bank, { 5, 3 });
    juce::SparseSet<int> selection;
    selection.addRange({ 0, 2 });
    selection.addRange({ 3, 4 });
    ASSERT_TRUE(bank.movePresets(1, 0, selection));
    EXPECT_TRUE(groupNames(bank, 0) + "|" + groupNames(bank, 1) == "2,4|5,6,7,0,1,3" && totalCount(bank) == 128) << groupNames(bank, 1);

    // Backward: from the third group to the end of the first, past the second.
    cut(bank, { 2, 2, 4 });
    selection.clear();
    selection.addRange({ 1, 3 });
    ASSERT_TRUE(bank.movePresets(0, 2, selection));
    EXPECT_EQ(groupNames(bank, 0) + "|" + groupNames(bank, 1) + "|" + groupNames(bank, 2), "0,1,5,6|2,3|4,7");

    // Indices beyond the group, the same group, an empty selection: nothing.
    selection.clear();
    selection.addRange({ 2, 9 });
    EXPECT_FALSE(bank.movePresets(1, 2, selection) || bank.movePresets(2, 2, selection) || bank.movePresets(1, 2, {}) || groupNames(bank, 2) != "4,7");

    // One preset into another group, to a chosen place.
    cut(bank, { 3, 3 });
    ASSERT_TRUE(bank.movePreset(0, 1, 0, 4));
    EXPECT_EQ(groupNames(bank, 0) + "|" + groupNames(bank, 1), "1,2|3,4,0,5");
    EXPECT_FALSE(bank.movePreset(0, 1, 4, 4) || bank.movePreset(0, 5, 0, 4) || totalCount(bank) != 128);

    // A group moves with its presets.
    cut(bank, { 2, 3, 1 });
    ASSERT_TRUE(bank.moveGroup(0, 2));
    EXPECT_EQ(groupNames(bank, 0) + "|" + groupNames(bank, 1) + "|" + groupNames(bank, 2) + " " + bank.getGroupName(2), "2,3,4|5|0,1 G0");

    ASSERT_TRUE(bank.moveGroup(3, 0)) << "the big group \"Not used\" to the front";
    EXPECT_TRUE(bank.getGroupName(0) == "Not used" && bank.getGroupStart(1) == 122 && groupNames(bank, 3) == "0,1" && bank.getPresetName(0) == "Preset 6");
    EXPECT_FALSE(bank.moveGroup(1, 1) || totalCount(bank) != 128);
}
