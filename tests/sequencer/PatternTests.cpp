#include "sequencer/Pattern.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(SequencerPattern, DefaultsOfTheThreeTypes)
{
    const Pattern p;
    EXPECT_EQ(p.getName(), "Empty");
    EXPECT_EQ(p.getLength(), 16);
    EXPECT_EQ(p.getScale(), 4);
    EXPECT_EQ(p.getShuffle(), 0.0);
    EXPECT_EQ(p.getTempo(), 120.0);
    EXPECT_FALSE(p.getCanBeEmpty());
    for (int t = 0; t < Tracks::count; ++t)
        EXPECT_EQ(p.getTrackString(t), "................") << Tracks::codes[(size_t)t];

    const NativePattern n;
    EXPECT_TRUE(n.getName().isEmpty());
    for (int v = 0; v < 2; ++v)
    {
        const auto& variation = n.getVariation(v);
        EXPECT_EQ(variation.getTempo(), 120.0);
        EXPECT_EQ(variation.getShuffle(), 0.0);
        EXPECT_EQ(variation.getPart(0).getLength(), 16);
        EXPECT_FALSE(variation.getPart(0).getCanBeEmpty());
        EXPECT_EQ(variation.getPart(1).getLength(), 0) << "the second part starts absent";
        EXPECT_TRUE(variation.getPart(1).getCanBeEmpty());
    }
}

TEST(SequencerPattern, SettersClamp)
{
    Variation v;
    auto& first = v.getPart(0);
    auto& second = v.getPart(1);
    const int lengths[][3] = {// asked, first part, second part
                              {-3, 1, 0},
                              {0, 1, 0},
                              {1, 1, 1},
                              {16, 16, 16},
                              {17, 16, 16}};
    for (const auto& l : lengths)
    {
        first.setLength(l[0]);
        second.setLength(l[0]);
        EXPECT_EQ(first.getLength(), l[1]) << "length " << l[0];
        EXPECT_EQ(second.getLength(), l[2]) << "length " << l[0];
    }
    second.setLength(0);
    second.setCanBeEmpty(false);
    EXPECT_EQ(second.getLength(), 1) << "a part that may no longer be empty";

    for (int scale = 0; scale <= 9; ++scale)
    {
        first.setScale(scale);
        const bool kept = scale == 3 || scale == 4 || scale == 6 || scale == 8;
        EXPECT_EQ(first.getScale(), kept ? scale : 4) << "scale " << scale;
    }

    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double shuffles[][2] = {{-0.1, 0.0}, {0.0, 0.0}, {0.5, 0.5}, {0.8, 0.8}, {0.81, 0.8}, {nan, 0.0}};
    for (const auto& s : shuffles)
    {
        first.setShuffle(s[0]);
        v.setShuffle(s[0]);
        EXPECT_EQ(first.getShuffle(), s[1]) << "shuffle " << s[0];
        EXPECT_EQ(v.getShuffle(), s[1]) << "shuffle " << s[0];
    }

    const double tempos[][2] = {{29.9, 30.0}, {-5.0, 30.0}, {120.04, 120.0}, {120.06, 120.1}, {99.95, 100.0}, {300.04, 300.0}, {1000.0, 300.0}, {nan, 30.0}};
    for (const auto& t : tempos)
    {
        first.setTempo(t[0]);
        v.setTempo(t[0]);
        EXPECT_DOUBLE_EQ(first.getTempo(), t[1]) << "tempo " << t[0];
        EXPECT_DOUBLE_EQ(v.getTempo(), t[1]) << "tempo " << t[0];
    }
}

TEST(SequencerPattern, AccentTrackIsOffOrAccentedOnEveryWritePath)
{
    constexpr int ac = Tracks::accent;
    Pattern p;
    p.setStep(ac, 0, 1);
    p.setStep(ac, 1, 3);
    p.setStep(ac, 2, 2);
    p.setStep(0, 0, 1);
    EXPECT_EQ(p.getStep(ac, 0), 3) << "setStep";
    EXPECT_EQ(p.getStep(ac, 1), 3);
    EXPECT_EQ(p.getStep(ac, 2), 2) << "no on bit, nothing added";
    EXPECT_EQ(p.getStep(0, 0), 1) << "other tracks keep plain on";

    p.setTrackString(ac, ".o.O");
    EXPECT_EQ(p.getStep(ac, 1), 3) << "track string";
    EXPECT_EQ(p.getStep(ac, 3), 3) << "track string";

    // The randomizer's raw writes are the exception: plain on stays.
    Pattern raw;
    raw.setRawStep(ac, 5, true, false);
    raw.setRawStep(0, 5, true, false);
    EXPECT_EQ(raw.getStep(ac, 5), 1) << "raw write";
    EXPECT_EQ(raw.getTrackString(ac).substring(5, 6), "o");

    Pattern copy;
    copy.copyFrom(raw);
    EXPECT_EQ(copy.getStep(ac, 5), 3) << "pattern copy";

    Pattern track;
    track.copyTrackFrom(raw, ac, ac);
    track.copyTrackFrom(raw, 0, ac);
    EXPECT_EQ(track.getStep(ac, 5), 3) << "track copy";

    NativePattern source, target;
    source.getVariation(1).getPart(1).setLength(4);
    source.getVariation(1).getPart(1).setRawStep(ac, 2, true, false);
    target.copyFrom(source);
    EXPECT_EQ(target.getVariation(1).getPart(1).getStep(ac, 2), 3) << "native copy";

    // Out-of-range writes are ignored and reads give 0.
    p.setStep(18, 0, 1);
    p.setStep(0, 16, 1);
    p.setRawStep(-1, 0, true, true);
    EXPECT_EQ(p.getStep(18, 0), 0);
    EXPECT_EQ(p.getStep(0, 16), 0);
    EXPECT_EQ(p.getStep(-1, 0), 0);
}

TEST(SequencerPattern, CopyKeepsTheTargetsTempoAndEmptiness)
{
    Variation sourceVariation;
    auto& source = sourceVariation.getPart(1); // may be empty
    source.setName("Groove");
    source.setLength(0);
    source.setScale(6);
    source.setShuffle(0.3);
    source.setTempo(90.0);
    source.setStep(3, 15, 3);

    Pattern host;
    host.setTempo(150.0);
    host.copyFrom(source);
    EXPECT_EQ(host.getName(), "Groove");
    EXPECT_EQ(host.getLength(), 1) << "clamped by the target";
    EXPECT_EQ(host.getScale(), 6);
    EXPECT_EQ(host.getShuffle(), 0.3);
    EXPECT_EQ(host.getTempo(), 150.0) << "tempo is not copied";
    EXPECT_FALSE(host.getCanBeEmpty());
    EXPECT_EQ(host.getStep(3, 15), 3) << "steps beyond the length too";

    Variation target;
    target.getPart(1).copyFrom(host);
    EXPECT_TRUE(target.getPart(1).getCanBeEmpty());

    NativePattern a, b;
    a.setName("Bossa");
    a.getVariation(1).setShuffle(0.4);
    a.getVariation(1).setTempo(80.0);
    a.getVariation(1).getPart(1).setLength(12);
    a.getVariation(1).getPart(1).setScale(3);
    a.getVariation(1).getPart(0).setStep(0, 7, 1);
    b.getVariation(1).setTempo(133.0);
    b.getVariation(0).getPart(1).setLength(5);
    b.copyFrom(a);
    EXPECT_EQ(b.getName(), "Bossa");
    EXPECT_EQ(b.getVariation(1).getShuffle(), 0.4);
    EXPECT_EQ(b.getVariation(1).getTempo(), 133.0) << "tempo is not copied";
    EXPECT_EQ(b.getVariation(1).getPart(1).getLength(), 12);
    EXPECT_EQ(b.getVariation(1).getPart(1).getScale(), 3);
    EXPECT_EQ(b.getVariation(1).getPart(0).getStep(0, 7), 1);
    EXPECT_EQ(b.getVariation(0).getPart(1).getLength(), 0) << "an absent part is copied as absent";
}

TEST(SequencerPattern, StepNotationRoundTrip)
{
    Pattern p;
    const int values[] = {0, 1, 2, 3, 1, 0, 3, 3, 0, 0, 1, 1, 2, 0, 3, 1};
    for (int s = 0; s < 16; ++s)
        p.setStep(4, s, values[s]);
    EXPECT_EQ(p.getTrackString(4), ".o.Oo.OO..oo..Oo") << "accent without on writes as off";

    p.setLength(5);
    EXPECT_EQ(p.getTrackString(4), ".o.Oo") << "exactly the length";
    Variation v;
    EXPECT_EQ(v.getPart(1).getTrackString(0), "") << "length 0";

    Pattern read;
    read.setTrackString(4, p.getTrackString(4));
    for (int s = 0; s < 5; ++s)
        EXPECT_EQ(read.getStep(4, s), values[s] == 2 ? 0 : values[s]) << "step " << s;
    EXPECT_EQ(read.getStep(4, 5), 0);

    Pattern longer;
    longer.setTrackString(1, "oooooooooooooooooooo");
    longer.setTrackString(2, "Ox-o");
    EXPECT_EQ(longer.getTrackString(1), "oooooooooooooooo") << "16 characters at most";
    EXPECT_EQ(longer.getTrackString(2), "O..o............") << "unknown characters read as off";

    for (int t = 0; t < Tracks::count; ++t)
        EXPECT_EQ(Tracks::indexOf(Tracks::codes[(size_t)t]), t);
    EXPECT_EQ(Tracks::indexOf("SD"), 1);
    EXPECT_EQ(Tracks::indexOf("CH"), 16);
    EXPECT_EQ(Tracks::indexOf("AC"), 17);
    EXPECT_EQ(Tracks::indexOf("bd"), -1);
}
