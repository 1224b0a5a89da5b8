#pragma once

#include "PanelLayout.h"

namespace PanelArt
{
// The text of skin.xml for the layout: one element per control, in table order.
juce::String writeSkin(const Layout& layout);
} // namespace PanelArt
