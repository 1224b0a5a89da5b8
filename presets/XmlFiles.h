#pragma once

#include <juce_core/juce_core.h>

// Reading and writing the XML documents of presets, banks, state and settings.
//
// juce::XmlDocument recurses once per level of nesting, so a crafted or
// damaged document nested tens of thousands deep would exhaust the stack of
// whatever thread reads it (a host's, for a state). No document of ours nests
// deeper than a handful of levels: these readers refuse anything past
// maxNesting before parsing, as they refuse text that is no XML.
namespace XmlFiles
{
constexpr int maxNesting = 100;

// Whether the elements of an XML text nest deeper than `limit`.
bool nestsDeeperThan(const juce::String& text, int limit);

// Null for no XML, or XML nested too deep.
std::unique_ptr<juce::XmlElement> parse(const juce::String& text);
std::unique_ptr<juce::XmlElement> parse(const juce::File& file);
// A block as juce::AudioProcessor::copyXmlToBinary writes it.
std::unique_ptr<juce::XmlElement> parseBinary(const void* data, int sizeInBytes);

// UTF-8 with this platform's line ends, so that a file kept under version
// control or compared with diff reads cleanly. Through a temporary file: a
// failed write leaves the old file as it was.
bool write(const juce::XmlElement& xml, const juce::File& file);
} // namespace XmlFiles
