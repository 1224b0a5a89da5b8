#pragma once

#include <juce_core/juce_core.h>
#include <juce_graphics/juce_graphics.h>

#include <optional>

// The data the plug-in carries inside itself (tables, skin, factory banks),
// looked up by "name.type", split at the last point, ignoring case.
namespace Resources
{
// The bytes of a resource, or nothing if there is none of that name.
std::optional<juce::MemoryBlock> loadResourceData(const juce::String& nameAndType);

// The resource as UTF-8 text, or an empty string.
juce::String loadResourceText(const juce::String& nameAndType);

// The resource decoded as an image; false if absent or not an image.
bool loadResourceImage(const juce::String& nameAndType, juce::Image& image);
} // namespace Resources
