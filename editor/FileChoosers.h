#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

// The file choosers of the panel and its windows. Every one is asynchronous,
// so a host's own loop goes on while the user chooses, and its answer comes
// back on the message thread only while the component that asked still
// exists; a cancel calls nothing. Message thread.
namespace FileChoosers
{
enum class Mode
{
    load,
    save
};

// Makes the chooser in `holder` (which keeps it alive while it shows) and opens it.
void launch(std::unique_ptr<juce::FileChooser>& holder, juce::Component& owner, Mode mode, const juce::String& title,
            const juce::File& start, const juce::String& wildcard, std::function<void(const juce::File&)> chosen);
} // namespace FileChoosers

// A saved name typed without an extension gets the file type's own.
juce::File withDefaultExtension(const juce::File& file, const juce::String& extension);
