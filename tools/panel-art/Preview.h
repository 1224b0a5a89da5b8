#pragma once

#include "PanelLayout.h"

#include <map>

namespace PanelArt
{
// The whole panel composed from the generated images as the editor would
// show it, for looking at the art without the editor: every control at
// rest, or a panel in the middle of playing.
class Preview
{
public:
    explicit Preview(const Layout& layout)
        : layout(layout)
    {
    }

    void setBackground(const juce::Image& image) { background = image; }
    void setFont(const juce::Image& image) { font = image; }
    void addStrip(const juce::String& resource, const juce::Image& image) { strips[resource] = image; }

    juce::Image compose(bool lively) const;

private:
    int frameOf(const Control& c, bool lively) const;
    std::vector<int> digitFrames(const Control& c, bool lively) const;
    juce::String textOf(const Control& c, bool lively) const;
    void drawText(juce::Graphics& g, const Control& c, const juce::String& text) const;
    void drawFrame(juce::Graphics& g, const juce::Image& strip, int frames, juce::Rectangle<int> at, int frame) const;

    const Layout& layout;
    juce::Image background, font;
    std::map<juce::String, juce::Image> strips;
};
} // namespace PanelArt
