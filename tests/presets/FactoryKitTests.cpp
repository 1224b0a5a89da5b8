// The sixteen factory kits never clip in a busy groove at the default Main
// Volume. (That they are distinct sounds is checked on their data by
// tools/factory-presets/check.py; that every knob reaches its voice, by the
// engine's tests.)

#include "plugin/PluginTestHost.h"

#include "sequencer/QuindrelSeq.h"

#include <gtest/gtest.h>

TEST(PresetsFactoryKits, NoKitClipsInABusyGrooveAtTheDefaultMainVolume)
{
    // Every instrument busy and every beat accented, all on the first output.
    const char* const tracks[] = {
        "O..oO.o.O..oO.o.", "..o.O..o..o.O.oo", "o.....o..o..o...", "..o.o...o..o..o.", ".o.o.o.o.o.o.o.o",
        "..o...o.....oo..", ".o...o....o...o.", "o...o....o.....o", "o..o..o.o..o..o.", "...o...o...o...o",
        "oooooooooooooooo", "....O.......O...", ".o.o.o.o.o.o.o.o", "o...............", "O.......O.......",
        "..o...o...o...o.", "oo.ooo.ooo.ooo.o", "O...O...O...O..."
    };

    for (int kit = 0; kit < 16; ++kit)
    {
        PluginTestHost host(48000.0, 512);
        auto& plugin = *host.plugin;
        auto& pattern = plugin.getQuindrelSeq()->getHostPatternAt(0);
        for (int track = 0; track < trackCount; ++track)
            pattern.setTrackString(track, tracks[track]);
        pattern.setTempo(128.0);
        plugin.setHostMode(true);
        plugin.selectAndApplyPreset(kit);

        const auto audio = host.render(48000 * 4, { PluginTestHost::noteOn(0, 12) });
        EXPECT_LT(audio.getMagnitude(0, 0, audio.getNumSamples()), 1.0f) << "kit " << kit << ", " << plugin.getPresetName(kit);
    }
}
