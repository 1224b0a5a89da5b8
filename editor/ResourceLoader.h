#pragma once

#include <juce_graphics/juce_graphics.h>

#include <memory>

// The skin's files by "name.type": the text of "skin.xml" and its images.
// They come from the plug-in's embedded resources, or, once a skin folder is
// set, from the files in that folder alone, so that a skin can be worked on
// without a rebuild. Message thread.

// The bytes of the resource, or null when there is none of that name.
std::unique_ptr<juce::MemoryBlock> loadResourceData(const juce::String& nameAndType);

// Decodes the resource as an image; false, and the image left as it was,
// when the resource is missing or is not an image.
bool loadResourceImage(const juce::String& nameAndType, juce::Image& image);

// The resource as UTF-8 text, or an empty string.
juce::String loadResourceText(const juce::String& nameAndType);

// A folder to take every skin resource from instead of the embedded ones;
// an empty file goes back to the embedded resources.
void setSkinDirectory(const juce::File& directory);
juce::File getSkinDirectory();
