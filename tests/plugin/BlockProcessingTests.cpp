#include "PluginTestHost.h"

#include <gtest/gtest.h>

TEST(PluginBlockProcessing, NoteSoundsAtItsSampleWithTheInternalSequencerOff)
{
    PluginTestHost host;
    host.plugin->setInternalSequencer(false);

    const auto out = host.render(4096, { PluginTestHost::noteOn(700, 36) });
    EXPECT_EQ(PluginTestHost::firstSoundAt(out, 0), 700);
    EXPECT_EQ(PluginTestHost::firstSoundAt(out, 1), 700);
}
