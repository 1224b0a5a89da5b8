#include "sequencer/Pattern.h"

#include <gtest/gtest.h>

#include <limits>

TEST(SequencerPattern, DefaultsAndClamps)
{
    Variation v;
    auto &first = v.getPart(0), &second = v.getPart(1);
    EXPECT_TRUE(first.getName() == "Empty" && first.getScale() == 4 && first.getTempo() == 120.0 && v.getTempo() == 120.0);
    EXPECT_EQ(second.getLength(), 0) << "a new variation has no second part";

    const int lengths[][3] = { { -3, 1, 0 }, { 0, 1, 0 }, { 1, 1, 1 }, { 16, 16, 16 }, { 17, 16, 16 } }; // asked, first part, second part
    for (const auto& l : lengths)
    {
        first.setLength(l[0]);
        second.setLength(l[0]);
        EXPECT_TRUE(first.getLength() == l[1] && second.getLength() == l[2]) << "length " << l[0];
    }
    second.setLength(0);
    second.setCanBeEmpty(false);
    EXPECT_EQ(second.getLength(), 1) << "a part that may no longer be empty";

    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double shuffles[][2] = { { -0.1, 0.0 }, { 0.5, 0.5 }, { 0.8, 0.8 }, { 0.81, 0.8 }, { nan, 0.0 } };
    for (const auto& s : shuffles)
    {
        first.setShuffle(s[0]);
        v.setShuffle(s[0]);
        EXPECT_TRUE(first.getShuffle() == s[1] && v.getShuffle() == s[1]) << "shuffle " << s[0];
    }

    const double tempos[][2] = { { 29.9, 30.0 }, { 120.04, 120.0 }, { 120.06, 120.1 }, { 99.95, 100.0 }, { 300.04, 300.0 }, { 1000.0, 300.0 }, { nan, 30.0 } };
    for (const auto& t : tempos)
    {
        first.setTempo(t[0]);
        v.setTempo(t[0]);
        EXPECT_DOUBLE_EQ(first.getTempo(), t[1]) << "tempo " << t[0];
        EXPECT_DOUBLE_EQ(v.getTempo(), t[1]) << "tempo " << t[0];
    }
}

TEST(SequencerPattern, AccentTrackIsOffOrAccentedOnEveryWritePathButTheRawOneAndTracksWriteTheirLength)
{
    constexpr int ac = Tracks::accent;
    Pattern p, raw, copy, tracks;
    p.setTrackString(ac, "..o");
    p.setStep(ac, 0, 1);
    p.setStep(ac, 1, 2);
    p.setStep(0, 0, 1);
    EXPECT_EQ(p.getTrackString(ac), "O.O.............") << "setStep and track strings";
    EXPECT_TRUE(p.getStep(ac, 1) == 2 && p.getStep(0, 0) == 1) << "no on bit, nothing added; other tracks keep plain on";

    raw.setRawStep(ac, 5, true, false);
    raw.setRawStep(0, 5, true, false);
    EXPECT_EQ(raw.getStep(ac, 5), 1) << "the randomizer's raw write";
    copy.copyFrom(raw);
    tracks.copyTrackFrom(raw, 0, ac);
    EXPECT_TRUE(copy.getStep(ac, 5) == 3 && tracks.getStep(ac, 5) == 3) << "pattern and track copies";

    NativePattern source, target;
    source.getVariation(1).getPart(0).setRawStep(ac, 2, true, false);
    target.copyFrom(source);
    EXPECT_EQ(target.getVariation(1).getPart(0).getStep(ac, 2), 3) << "native copy";

    p.setStep(18, 0, 1);
    p.setRawStep(0, 16, true, true);
    EXPECT_TRUE(p.getStep(18, 0) == 0 && p.getStep(0, 16) == 0 && p.getStep(-1, 0) == 0) << "out of range";

    // A track is written as long as its part.
    Pattern notation;
    const int values[] = { 0, 1, 2, 3, 1, 0, 3, 3, 0, 0, 1, 1, 2, 0, 3, 1 };
    for (int s = 0; s < 16; ++s)
        notation.setStep(4, s, values[s]);
    EXPECT_EQ(notation.getTrackString(4), ".o.Oo.OO..oo..Oo") << "accent without on writes as off";
    notation.setLength(5);
    EXPECT_EQ(notation.getTrackString(4), ".o.Oo") << "exactly the length";
    EXPECT_EQ(Variation().getPart(1).getTrackString(0), "");

    EXPECT_TRUE(Tracks::indexOf("SD") == 1 && Tracks::indexOf("CH") == 16 && Tracks::indexOf("AC") == 17 && Tracks::indexOf("bd") == -1);
}

TEST(SequencerPattern, CopiesKeepTheTargetsTempoAndEmptiness)
{
    Variation sourceVariation, targetVariation;
    auto& source = sourceVariation.getPart(1); // may be empty
    source.setName("Groove");
    source.setScale(6);
    source.setShuffle(0.3);
    source.setTempo(90.0);
    source.setStep(3, 15, 3);

    Pattern host;
    host.setTempo(150.0);
    host.copyFrom(source);
    EXPECT_TRUE(host.getName() == "Groove" && host.getScale() == 6 && host.getShuffle() == 0.3 && host.getStep(3, 15) == 3) << "steps beyond the length too";
    EXPECT_TRUE(host.getLength() == 1 && host.getTempo() == 150.0) << "length 0 clamped by the target; the tempo is not copied";
    targetVariation.getPart(1).copyFrom(host);
    EXPECT_TRUE(targetVariation.getPart(1).getCanBeEmpty());

    NativePattern a, b;
    a.setName("Bossa");
    a.getVariation(1).setShuffle(0.4);
    a.getVariation(1).setTempo(80.0);
    a.getVariation(1).getPart(1).setLength(12);
    b.getVariation(1).setTempo(133.0);
    b.getVariation(0).getPart(1).setLength(5);
    b.copyFrom(a);
    EXPECT_TRUE(b.getName() == "Bossa" && b.getVariation(1).getShuffle() == 0.4 && b.getVariation(1).getPart(1).getLength() == 12);
    EXPECT_EQ(b.getVariation(1).getTempo(), 133.0) << "tempo is not copied";
    EXPECT_EQ(b.getVariation(0).getPart(1).getLength(), 0) << "an absent part is copied as absent";
}
